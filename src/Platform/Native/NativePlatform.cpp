#include "Platform/Native/NativePlatform.h"

#include <utility>

#include "Platform/Native/CurlTransport.h"
#include "Platform/Native/DiskFiles.h"
#include "Platform/Native/Home.h"
#include "Platform/Native/HostApplication.h"
#include "Platform/Native/HostDevice.h"
#include "Platform/Native/OpenSSLDigest.h"
#include "Platform/Native/OwnerOnly.h"
#include "Platform/Native/SQLitePreferences.h"
#include "Platform/Native/SystemClock.h"

namespace quorvane::platform {
namespace {

/// @p name in the home; below a directory that cannot be made when there is no home.
std::string within(const std::string& home, const char* name) {
    return (home.empty() ? "/dev/null" : home) + "/" + name;
}

std::unique_ptr<PreferencesStore> openPreferences(const std::string& home, native::SQLitePreferences::Tell tell) {
    const std::error_code error =
        home.empty() ? std::make_error_code(std::errc::no_such_file_or_directory) : native::makeDirectories(home);
    if (error) {
        tell("QuorvaneSDK: the home directory " + (home.empty() ? "(none known)" : home) + " cannot be used (" +
             error.message() + "); preferences live in memory for this run");
        return std::make_unique<native::SQLitePreferences>(std::move(tell));
    }
    return std::make_unique<native::SQLitePreferences>(home + "/preferences.db", std::move(tell));
}

} // namespace

/// In the order in which they are made; they end in the reverse order.
struct NativePlatform::Parts {
    Parts(NativeOptions options, std::unique_ptr<NativeMainQueue> theQueue)
        : home(native::homeDirectory(options.home)),
          queue(std::move(theQueue)),
          application(std::move(options.information), std::move(options.output)),
          files(within(home, "caches"), within(home, "staging")),
          preferences(openPreferences(home, [this](std::string_view line) { application.standardOutput(line); })),
          device(home.empty() ? std::string() : within(home, "device-id")),
          locationManagers(*queue),
          transport(*queue, {std::move(options.connectTo), std::move(options.certificateFile)}) {}

    const std::string home;
    const std::unique_ptr<NativeMainQueue> queue;
    native::SystemClock clock;
    native::OpenSSLDigest digest;
    native::OpenSSLRandom random;
    native::HostApplication application;
    native::DiskFiles files;
    const std::unique_ptr<PreferencesStore> preferences;
    native::HostDevice device;
    FixedLocationManagerFactory locationManagers;
    native::CurlTransport transport;
};

std::shared_ptr<NativePlatform> NativePlatform::make(NativeOptions options) {
    return std::make_shared<NativePlatform>(std::move(options));
}

NativePlatform::NativePlatform(NativeOptions options) : NativePlatform(std::move(options), NativeMainQueue::make()) {}

NativePlatform::NativePlatform(NativeOptions options, std::unique_ptr<NativeMainQueue> queue)
    : parts(std::make_unique<Parts>(std::move(options), std::move(queue))) {}

NativePlatform::~NativePlatform() {
    // What still waits is dropped while all parts are there: it may hold on to any of them.
    parts->transport.close();
    parts->queue->close();
}

Clock& NativePlatform::clock() {
    return parts->clock;
}
NativeMainQueue& NativePlatform::mainQueue() {
    return *parts->queue;
}
PreferencesStore& NativePlatform::preferences() {
    return *parts->preferences;
}
HTTPTransport& NativePlatform::transport() {
    return parts->transport;
}
Digest& NativePlatform::digest() {
    return parts->digest;
}
SecureRandom& NativePlatform::random() {
    return parts->random;
}
FileManager& NativePlatform::files() {
    return parts->files;
}
Application& NativePlatform::application() {
    return parts->application;
}
Device& NativePlatform::device() {
    return parts->device;
}
LocationManagerFactory& NativePlatform::locationManagers() {
    return fixedLocations();
}
FixedLocationManagerFactory& NativePlatform::fixedLocations() {
    return parts->locationManagers;
}
const std::string& NativePlatform::home() const {
    return parts->home;
}

} // namespace quorvane::platform
