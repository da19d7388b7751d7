#pragma once

#include <cstdint>
#include <functional>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

#include "JSON/AnyCodable.h"
#include "Platform/LocationManager.h"
#include "Platform/Native/NativeMainQueue.h"
#include "Platform/Platform.h"

namespace quorvane::platform {

/// Requests to port @p from of this machine's loopback interface go to port @p to of 127.0.0.1 instead.
struct LoopbackPort {
    std::uint16_t from = 0;
    std::uint16_t to = 0;
};

/// How a native platform is set up. Everything has a default.
struct NativeOptions {
    /// The directory for preferences, caches and the device identifier; made when it is not there. Empty:
    /// "quorvane" in $XDG_DATA_HOME, or in ~/.local/share.
    std::string home;

    /// Applies to requests to "localhost", 127.0.0.1 and [::1] only. How a service that stands on another port than
    /// its own is reached.
    std::vector<LoopbackPort> connectTo;

    /// Gets each line of output, without its break, one call at a time. None: standard output.
    std::function<void(std::string_view line)> output;

    /// The application's information dictionary.
    AnyCodable::Dictionary information;

    /// A PEM file of the certificate authorities to trust. Empty: the system's.
    std::string certificateFile;
};

/// A platform without a toolkit: requests by libcurl, preferences in SQLite, digests and randomness of OpenSSL, files
/// of the file system.
///
/// The thread that makes it is the main thread. Making one never fails: without a home that can be written,
/// preferences and the device identifier live in memory for this run, and one line on the output says so. Several
/// processes may share a home.
///
/// A program that wants another part derives from this class and overrides the part's function.
class NativePlatform : public Platform {
public:
    [[nodiscard]] static std::shared_ptr<NativePlatform> make(NativeOptions options = {});

    explicit NativePlatform(NativeOptions options);
    ~NativePlatform() override;

    [[nodiscard]] Clock& clock() override;
    [[nodiscard]] NativeMainQueue& mainQueue() override;
    [[nodiscard]] PreferencesStore& preferences() override;
    [[nodiscard]] HTTPTransport& transport() override;
    [[nodiscard]] Digest& digest() override;
    [[nodiscard]] SecureRandom& random() override;
    [[nodiscard]] FileManager& files() override;
    [[nodiscard]] Application& application() override;
    [[nodiscard]] Device& device() override;
    /// `fixedLocations()`.
    [[nodiscard]] LocationManagerFactory& locationManagers() override;

    /// Know no location, unless a program that is told one sets it.
    [[nodiscard]] FixedLocationManagerFactory& fixedLocations();

    /// The home in use as an absolute path; empty when no place for one is known.
    [[nodiscard]] const std::string& home() const;

protected:
    /// For an adapter whose toolkit runs the main thread: with @p queue in the place of the native one.
    NativePlatform(NativeOptions options, std::unique_ptr<NativeMainQueue> queue);

private:
    struct Parts;
    std::unique_ptr<Parts> parts;
};

} // namespace quorvane::platform
