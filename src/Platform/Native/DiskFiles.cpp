#include "Platform/Native/DiskFiles.h"

#include <algorithm>
#include <cerrno>
#include <cstdio>
#include <filesystem>
#include <memory>

#include <dirent.h>
#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include "Platform/Native/OwnerOnly.h"

namespace quorvane::platform::native {
namespace {

/// A path with a zero byte in it would name another file.
std::error_code checked(const std::string& path) {
    const bool good = !path.empty() && path.find('\0') == std::string::npos;
    return good ? std::error_code() : std::make_error_code(std::errc::invalid_argument);
}

/// A file that is open, closed at the end of the scope.
class Descriptor {
public:
    Descriptor(const std::string& path, int flags) : number(open(path.c_str(), flags | O_CLOEXEC)) {}
    Descriptor(const Descriptor&) = delete;
    Descriptor& operator=(const Descriptor&) = delete;
    ~Descriptor() {
        if (number >= 0) {
            close(number);
        }
    }
    const int number;
};

/// What a text is followed by in memory, so that a parser may read beyond its end.
constexpr std::size_t spareBytes = 64;

} // namespace

DiskFiles::DiskFiles(std::string theCaches, std::string theStaging)
    : caches(std::move(theCaches)), staging(std::move(theStaging)) {
    removeLeftovers();
}

std::error_code DiskFiles::createDirectory(const std::string& path) {
    const std::error_code error = checked(path);
    return error ? error : makeDirectories(path);
}

std::error_code DiskFiles::replace(const std::string& path, std::string_view content) {
    if (const std::error_code error = checked(path)) {
        return error;
    }
    if (const std::error_code error = makeDirectories(staging)) {
        return error;
    }
    const std::error_code error = replaceThrough(staging, path, content);
    if (error != std::errc::cross_device_link) {
        return error;
    }
    const std::string beside = std::filesystem::path(path).parent_path().string() + ".staging-" +
                               std::to_string(getpid()) + "-" + std::to_string(++lastStaged);
    if (const std::error_code failed = makeDirectories(beside)) {
        return failed;
    }
    const std::error_code outcome = replaceThrough(beside, path, content);
    rmdir(beside.c_str());
    return outcome;
}

std::error_code DiskFiles::replaceThrough(const std::string& directory, const std::string& path,
                                          std::string_view content) {
    std::string staged;
    std::error_code error;
    do {
        staged = directory + "/" + std::to_string(getpid()) + "-" + std::to_string(++lastStaged);
        error = writeNewFile(staged, content);
    } while (error == std::errc::file_exists);
    if (!error && rename(staged.c_str(), path.c_str()) != 0) {
        error = lastError();
        unlink(staged.c_str());
    }
    return error;
}

void DiskFiles::removeLeftovers() {
    // A process that was killed in a write leaves its file behind; nobody takes an hour for one.
    std::error_code error;
    const std::optional<std::vector<std::string>> names = list(staging, error);
    if (!names) {
        return;
    }
    const auto now = std::chrono::time_point_cast<std::chrono::nanoseconds>(std::chrono::system_clock::now());
    for (const std::string& name : *names) {
        const std::string path = staging + "/" + name;
        const std::optional<Date> date = modificationDate(path, error);
        if (date && *date < now - std::chrono::hours(1)) {
            unlink(path.c_str());
        }
    }
}

std::optional<std::string> DiskFiles::read(const std::string& path, std::error_code& error) const {
    if (error = checked(path); error) {
        return std::nullopt;
    }
    const Descriptor file(path, O_RDONLY);
    struct stat status {};
    if (file.number < 0 || fstat(file.number, &status) != 0) {
        error = lastError();
        return std::nullopt;
    }
    // One byte more than the file has, so that one read that answers nothing tells its end.
    const auto size = static_cast<std::size_t>(std::max<off_t>(status.st_size, 0));
    std::string content;
    content.reserve(size + spareBytes);
    content.resize(size + 1);
    std::size_t length = 0;
    for (;;) {
        const ssize_t got = ::read(file.number, content.data() + length, content.size() - length);
        if (got < 0 && errno != EINTR) {
            error = lastError();
            return std::nullopt;
        }
        if (got == 0) {
            break;
        }
        length += got > 0 ? static_cast<std::size_t>(got) : 0;
        if (length == content.size()) {
            content.resize(2 * length);
        }
    }
    content.resize(length);
    content.reserve(length + spareBytes);
    return content;
}

std::optional<std::vector<std::string>> DiskFiles::list(const std::string& path, std::error_code& error) const {
    if (error = checked(path); error) {
        return std::nullopt;
    }
    const std::unique_ptr<DIR, int (*)(DIR*)> directory(opendir(path.c_str()), &closedir);
    if (!directory) {
        error = lastError();
        return std::nullopt;
    }
    std::vector<std::string> names;
    errno = 0;
    while (const dirent* entry = readdir(directory.get())) {
        std::string name = entry->d_name;
        if (name != "." && name != "..") {
            names.push_back(std::move(name));
        }
        errno = 0;
    }
    if (errno != 0) {
        error = lastError();
        return std::nullopt;
    }
    std::sort(names.begin(), names.end());
    return names;
}

bool DiskFiles::exists(const std::string& path) const {
    struct stat status {};
    return !checked(path) && stat(path.c_str(), &status) == 0;
}

std::optional<Date> DiskFiles::modificationDate(const std::string& path, std::error_code& error) const {
    if (error = checked(path); error) {
        return std::nullopt;
    }
    struct stat status {};
    if (stat(path.c_str(), &status) != 0) {
        error = lastError();
        return std::nullopt;
    }
    return Date(std::chrono::seconds(status.st_mtim.tv_sec) + std::chrono::nanoseconds(status.st_mtim.tv_nsec));
}

std::error_code DiskFiles::setModificationDate(const std::string& path, Date date) {
    if (const std::error_code error = checked(path)) {
        return error;
    }
    const auto whole = std::chrono::floor<std::chrono::seconds>(date.time_since_epoch());
    const timespec modified{whole.count(), (date.time_since_epoch() - whole).count()};
    const timespec times[] = {{0, UTIME_OMIT}, modified};
    return utimensat(AT_FDCWD, path.c_str(), times, 0) == 0 ? std::error_code() : lastError();
}

std::error_code DiskFiles::remove(const std::string& path) {
    std::error_code error = checked(path);
    if (!error && std::filesystem::remove_all(path, error) == 0 && !error) {
        error = std::make_error_code(std::errc::no_such_file_or_directory);
    }
    return error;
}

} // namespace quorvane::platform::native
