#include "Platform/Native/HostDevice.h"

#include <algorithm>
#include <cerrno>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <utility>

#include <fcntl.h>
#include <sys/utsname.h>
#include <unistd.h>

#include "Platform/Native/OpenSSLDigest.h"
#include "Platform/Native/OwnerOnly.h"

namespace quorvane::platform::native {
namespace {

/// Names this library's vendor. Changing it changes the identifier of every device.
constexpr std::string_view vendor = "2719B59D-0F74-4E83-B8F6-F0C21C88C8BD";

/// The first @p most bytes of a file, without blanks, breaks and zero bytes at the end; empty when it cannot be read.
std::string beginning(const std::string& path, std::size_t most) {
    std::ifstream file(path, std::ios::binary);
    std::string text(most, '\0');
    file.read(text.data(), static_cast<std::streamsize>(most));
    text.resize(static_cast<std::size_t>(std::max<std::streamsize>(file.gcount(), 0)));
    const std::size_t last = text.find_last_not_of(std::string_view(" \t\r\n\0", 5));
    text.resize(last == std::string::npos ? 0 : last + 1);
    return text;
}

int hexDigit(char character) {
    if (character >= '0' && character <= '9') {
        return character - '0';
    }
    const char lower = static_cast<char>(character | 0x20);
    return lower >= 'a' && lower <= 'f' ? lower - 'a' + 10 : -1;
}

/// The 16 bytes behind 32 hexadecimal digits; none for another text and for zeros only.
std::optional<std::string> machineBytes(const std::string& text) {
    if (text.size() != 32) {
        return std::nullopt;
    }
    std::string bytes;
    for (std::size_t i = 0; i < text.size(); i += 2) {
        const int high = hexDigit(text[i]);
        const int low = hexDigit(text[i + 1]);
        if (high < 0 || low < 0) {
            return std::nullopt;
        }
        bytes += static_cast<char>(high * 16 + low);
    }
    if (bytes == std::string(16, '\0')) {
        return std::nullopt;
    }
    return bytes;
}

bool isUUID(const std::string& text) {
    for (std::size_t i = 0; i < text.size(); ++i) {
        const bool dash = i == 8 || i == 13 || i == 18 || i == 23;
        if (dash ? text[i] != '-' : hexDigit(text[i]) < 0 || (text[i] >= 'a' && text[i] <= 'f')) {
            return false;
        }
    }
    return text.size() == 36;
}

/// Writes @p text to a new file, on the disk itself. @p path ends with six X, which are replaced.
bool writeDurably(std::string& path, std::string_view text) {
    const int file = mkostemp(path.data(), O_CLOEXEC);
    if (file < 0) {
        return false;
    }
    // Some file systems have nothing to bring to a disk.
    bool isWritten = !writeAll(file, text) && (fsync(file) == 0 || errno == EINVAL);
    isWritten = close(file) == 0 && isWritten;
    if (!isWritten) {
        unlink(path.c_str());
    }
    return isWritten;
}

/// Brings the names in a directory to the disk itself.
void synchronizeDirectory(const std::string& path) {
    if (const int directory = open(path.c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC); directory >= 0) {
        fsync(directory);
        close(directory);
    }
}

} // namespace

HostDevice::HostDevice(std::string theKeptIn, DeviceSources theSources)
    : keptIn(std::move(theKeptIn)), sources(std::move(theSources)) {}

std::optional<std::string> HostDevice::identifierForVendor() const {
    const std::lock_guard lock(mutex);
    if (identifier.empty()) {
        const std::optional<std::string> kept = keptIdentifier();
        identifier = kept ? *kept : keep(makeIdentifier());
    }
    return identifier;
}

std::string HostDevice::keep(const std::string& made) const {
    // The number of the process would not do: one in another container, or one that was killed, may have the same.
    std::string own = keptIn + ".XXXXXX";
    if (keptIn.empty() || !writeDurably(own, made + "\n")) {
        return made;
    }
    // Of two processes that start at once, the first to link its file decides for both.
    std::string result = made;
    if (link(own.c_str(), keptIn.c_str()) != 0) {
        if (const std::optional<std::string> others = keptIdentifier()) {
            result = *others;
        } else {
            // What stands there is no identifier, or this file system has no links.
            static_cast<void>(rename(own.c_str(), keptIn.c_str()));
        }
    }
    unlink(own.c_str());
    // A user id that is stored soon, and outlasts a loss of power, must not find another identifier then.
    synchronizeDirectory(std::filesystem::path(keptIn).parent_path().string());
    return result;
}

std::optional<std::string> HostDevice::keptIdentifier() const {
    std::string kept = keptIn.empty() ? std::string() : beginning(keptIn, 64);
    return isUUID(kept) ? std::optional(std::move(kept)) : std::nullopt;
}

std::string HostDevice::makeIdentifier() const {
    for (const std::string& path : sources.machineIdentifier) {
        if (const std::optional<std::string> machine = machineBytes(beginning(path, 64))) {
            std::array<std::uint8_t, 32> hash = hmacSHA256(*machine, vendor);
            hash[6] = static_cast<std::uint8_t>((hash[6] & 0x0FU) | 0x40U);
            hash[8] = static_cast<std::uint8_t>((hash[8] & 0x3FU) | 0x80U);
            return uuidText(hash.data());
        }
    }
    return OpenSSLRandom().uuid();
}

std::string HostDevice::systemVersion() const {
    const std::lock_guard lock(mutex);
    if (version.empty()) {
        utsname names{};
        const std::string release = uname(&names) == 0 ? names.release : "0";
        version = release.substr(0, release.find('-'));
    }
    return version;
}

std::string HostDevice::hardwareIdentifier() const {
    const std::lock_guard lock(mutex);
    if (hardware.empty()) {
        hardware = readHardware();
    }
    return hardware;
}

std::string HostDevice::readHardware() const {
    for (const std::string& path : sources.model) {
        if (std::string model = beginning(path, 256); !model.empty()) {
            return model;
        }
    }
    utsname names{};
    return uname(&names) == 0 ? names.machine : "unknown";
}

std::optional<std::string> HostDevice::environment(const std::string& name) const {
    const char* value = std::getenv(name.c_str());
    return value == nullptr ? std::nullopt : std::optional<std::string>(value);
}

} // namespace quorvane::platform::native
