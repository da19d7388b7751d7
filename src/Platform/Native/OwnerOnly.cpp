#include "Platform/Native/OwnerOnly.h"

#include <cerrno>
#include <chrono>
#include <cstdint>
#include <utility>

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

namespace quorvane::platform::native {

std::error_code lastError() {
    return {errno, std::generic_category()};
}

std::error_code makeDirectories(const std::string& path) {
    struct stat status {};
    if (stat(path.c_str(), &status) == 0) {
        return S_ISDIR(status.st_mode) ? std::error_code() : std::make_error_code(std::errc::not_a_directory);
    }
    if (errno != ENOENT) {
        return lastError();
    }
    const std::size_t end = path.find_last_not_of('/');
    const std::size_t slash = end == std::string::npos ? std::string::npos : path.rfind('/', end);
    if (slash != std::string::npos && slash > 0) {
        if (const std::error_code error = makeDirectories(path.substr(0, slash))) {
            return error;
        }
    }
    // Somebody else may have made it meanwhile.
    return mkdir(path.c_str(), S_IRWXU) == 0 || errno == EEXIST ? std::error_code() : lastError();
}

std::error_code makeFile(const std::string& path) {
    // The file is not opened when it is there: to close a database's file would let go of the locks on it.
    const int file = open(path.c_str(), O_RDWR | O_CREAT | O_EXCL | O_CLOEXEC, S_IRUSR | S_IWUSR);
    if (file >= 0) {
        close(file);
        return {};
    }
    if (errno != EEXIST) {
        return lastError();
    }
    struct stat status {};
    if (stat(path.c_str(), &status) != 0) {
        return lastError();
    }
    if (!S_ISREG(status.st_mode)) {
        return std::make_error_code(std::errc::invalid_argument);
    }
    const bool others = (status.st_mode & (S_IRWXG | S_IRWXO)) != 0;
    return !others || chmod(path.c_str(), S_IRUSR | S_IWUSR) == 0 ? std::error_code() : lastError();
}

timespec timeOf(Date date) {
    constexpr std::int64_t second = 1'000'000'000;
    const std::int64_t ticks = std::chrono::nanoseconds(date.time_since_epoch()).count();
    const bool isBefore = ticks % second < 0;
    return {ticks / second - (isBefore ? 1 : 0), ticks % second + (isBefore ? second : 0)};
}

std::optional<Date> dateOf(const timespec& time) {
    const auto parts = [](const timespec& moment) { return std::pair(moment.tv_sec, moment.tv_nsec); };
    if (parts(time) < parts(timeOf(Date::min())) || parts(time) > parts(timeOf(Date::max()))) {
        return std::nullopt;
    }
    // Before the epoch the whole seconds alone may lie beyond the range that their sum is in.
    const std::chrono::seconds up(time.tv_sec < 0 ? 1 : 0);
    return Date(std::chrono::seconds(time.tv_sec) + up + (std::chrono::nanoseconds(time.tv_nsec) - up));
}

std::error_code writeAll(int file, std::string_view content) {
    while (!content.empty()) {
        const ssize_t written = write(file, content.data(), content.size());
        if (written >= 0) {
            content.remove_prefix(static_cast<std::size_t>(written));
        } else if (errno != EINTR) {
            return lastError();
        }
    }
    return {};
}

std::error_code setDate(int file, Date date) {
    const timespec times[] = {{0, UTIME_OMIT}, timeOf(date)};
    return futimens(file, times) == 0 ? std::error_code() : lastError();
}

std::error_code writeNewFile(const std::string& path, std::string_view content, std::optional<Date> modified) {
    const int file = open(path.c_str(), O_WRONLY | O_CREAT | O_EXCL | O_CLOEXEC, S_IRUSR | S_IWUSR);
    if (file < 0) {
        return lastError();
    }
    std::error_code error = writeAll(file, content);
    if (modified && !error) {
        error = setDate(file, *modified);
    }
    if (close(file) != 0 && !error) {
        error = lastError();
    }
    if (error) {
        unlink(path.c_str());
    }
    return error;
}

} // namespace quorvane::platform::native
