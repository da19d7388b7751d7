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

#ifdef RENAME_EXCHANGE
/// Exchanges the names of @p staged and of the file at @p path and removes the older file. False when there is no file
/// there, or the file system cannot do that; nothing has changed then.
bool exchange(const std::string& staged, const std::string& path) {
    struct stat status {};
    if (lstat(path.c_str(), &status) != 0 || !S_ISREG(status.st_mode) ||
        renameat2(AT_FDCWD, staged.c_str(), AT_FDCWD, path.c_str(), RENAME_EXCHANGE) != 0) {
        return false;
    }
    if (unlink(staged.c_str()) == 0 || errno == ENOENT) {
        return true;
    }
    // A directory has come there meanwhile: it gets its name back.
    return renameat2(AT_FDCWD, staged.c_str(), AT_FDCWD, path.c_str(), RENAME_EXCHANGE) != 0;
}
#else
bool exchange(const std::string&, const std::string&) {
    return false;
}
#endif

/// Gives the file @p staged the name @p path. False with `errno` set when that fails.
bool takePlace(const std::string& staged, const std::string& path) {
    return exchange(staged, path) || rename(staged.c_str(), path.c_str()) == 0;
}

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

std::error_code DiskFiles::replace(const std::string& path, std::string_view content, std::optional<Date> modified) {
    if (const std::error_code error = checked(path)) {
        return error;
    }
    if (const std::error_code error = makeDirectories(staging)) {
        return error;
    }
    const std::error_code error = replaceThrough(staging, path, content, modified);
    if (error != std::errc::cross_device_link) {
        return error;
    }
    const std::string beside = std::filesystem::path(path).parent_path().string() + ".staging-" +
                               std::to_string(getpid()) + "-" + std::to_string(++lastStaged);
    if (const std::error_code failed = makeDirectories(beside)) {
        return failed;
    }
    const std::error_code outcome = replaceThrough(beside, path, content, modified);
    rmdir(beside.c_str());
    return outcome;
}

std::error_code DiskFiles::replaceThrough(const std::string& directory, const std::string& path,
                                          std::string_view content, std::optional<Date> modified) {
    std::string staged;
    std::error_code error;
    do {
        staged = directory + "/" + std::to_string(getpid()) + "-" + std::to_string(++lastStaged);
        error = writeNewFile(staged, content, modified);
    } while (error == std::errc::file_exists);
    if (error) {
        return error;
    }
    if (!takePlace(staged, path)) {
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
    const timespec anHourAgo = timeOf(std::chrono::system_clock::now() - std::chrono::hours(1));
    for (const std::string& name : *names) {
        const std::string path = staging + "/" + name;
        struct stat status {};
        // The modification date is the caller's and may lie ahead; the change is the file system's.
        if (stat(path.c_str(), &status) == 0 &&
            std::min(status.st_mtim.tv_sec, status.st_ctim.tv_sec) < anHourAgo.tv_sec) {
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
    const timespec times[] = {{0, UTIME_OMIT}, timeOf(date)};
    return utimensat(AT_FDCWD, path.c_str(), times, 0) == 0 ? std::error_code() : lastError();
}

std::error_code DiskFiles::protect(const std::string& path, FileProtection) {
    if (const std::error_code error = checked(path)) {
        return error;
    }
    struct stat status {};
    if (stat(path.c_str(), &status) != 0) {
        return lastError();
    }
    const mode_t mode = S_ISDIR(status.st_mode) ? S_IRWXU : S_IRUSR | S_IWUSR;
    return chmod(path.c_str(), mode) == 0 ? std::error_code() : lastError();
}

std::error_code DiskFiles::remove(const std::string& path) {
    std::error_code error = checked(path);
    if (!error && std::filesystem::remove_all(path, error) == 0 && !error) {
        error = std::make_error_code(std::errc::no_such_file_or_directory);
    }
    return error;
}

} // namespace quorvane::platform::native
