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
#include "Platform/Native/SpareFile.h"

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
    struct stat status {};
};

/// What a text is followed by in memory, so that a parser may read beyond its end.
constexpr std::size_t bytesBehind = 64;

/// How often a file is looked for that is replaced each time.
constexpr int mostLooks = 100;

bool areOneFile(const struct stat& one, const struct stat& other) {
    return one.st_dev == other.st_dev && one.st_ino == other.st_ino;
}

bool isFileOrDirectory(const struct stat& status) {
    return S_ISREG(status.st_mode) || S_ISDIR(status.st_mode);
}

/// Opens a file or directory for reading. Whatever else has the name @p path, a pipe for example, is not waited for.
std::unique_ptr<Descriptor> openToRead(const std::string& path) {
    auto file = std::make_unique<Descriptor>(path, O_RDONLY | O_NONBLOCK);
    struct stat named {};
    if (file->number < 0 && errno == EWOULDBLOCK && stat(path.c_str(), &named) == 0 && isFileOrDirectory(named)) {
        // Somebody has a lease on it, which the system ends.
        file = std::make_unique<Descriptor>(path, O_RDONLY);
    }
    return file;
}

/// The file or directory that has the name @p path, opened for reading; none with @p error set.
///
/// Between the look-up of the name and the opening, a file may have lost it and have been written to for another one.
/// From the opening on it stays as it is.
std::unique_ptr<Descriptor> openNamed(const std::string& path, std::error_code& error) {
    if (error = checked(path); error) {
        return nullptr;
    }
    for (int looks = 0; looks < mostLooks; ++looks) {
        auto file = openToRead(path);
        if (file->number < 0 || fstat(file->number, &file->status) != 0) {
            error = lastError();
            return nullptr;
        }
        if (!isFileOrDirectory(file->status)) {
            error = std::make_error_code(std::errc::not_supported);
            return nullptr;
        }
        struct stat named {};
        if (stat(path.c_str(), &named) == 0 && areOneFile(file->status, named)) {
            return file;
        }
    }
    error = std::make_error_code(std::errc::resource_unavailable_try_again);
    return nullptr;
}

/// What the open @p file holds, of @p size bytes or so.
std::optional<std::string> readToEnd(int file, std::size_t size, std::error_code& error) {
    // One byte more than the file has, so that one read that answers nothing tells its end.
    std::string content;
    content.reserve(size + bytesBehind);
    content.resize(size + 1);
    std::size_t length = 0;
    for (;;) {
        const ssize_t got = ::read(file, content.data() + length, content.size() - length);
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
    content.reserve(length + bytesBehind);
    return content;
}

} // namespace

DiskFiles::DiskFiles(std::string theCaches, std::string theStaging)
    : caches(std::move(theCaches)), staging(std::move(theStaging)) {
    removeLeftovers();
}

DiskFiles::~DiskFiles() {
    dropSpare();
}

std::error_code DiskFiles::createDirectory(const std::string& path) {
    const std::error_code error = checked(path);
    return error ? error : makeDirectories(path);
}

std::error_code DiskFiles::replace(const std::string& path, std::string_view content, std::optional<Date> modified) {
    if (const std::error_code error = checked(path)) {
        return error;
    }
    if (!content.empty() && replaceThroughSpare(path, content, modified)) {
        return {};
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
    std::uint64_t number = 0;
    std::string staged;
    std::error_code error;
    do {
        number = ++lastStaged;
        staged = stagedPath(directory, number);
        error = writeNewFile(staged, content, modified);
    } while (error == std::errc::file_exists);
    if (error) {
        return error;
    }
    const std::optional<Replaced> replaced = takePlace(staged, path);
    if (!replaced) {
        error = lastError();
        unlink(staged.c_str());
    } else if (*replaced != Replaced::none && (directory != staging || !keepSpare(number, *replaced))) {
        unlink(staged.c_str());
    }
    return error;
}

bool DiskFiles::replaceThroughSpare(const std::string& path, std::string_view content, std::optional<Date> modified) {
    const std::uint64_t number = spare.exchange(0);
    if (number == 0) {
        return false;
    }
    const std::string staged = stagedPath(staging, number);
    std::optional<Replaced> replaced;
    if (!writeSpareFile(staged, content, modified)) {
        replaced = takePlace(staged, path);
    }
    if (replaced != Replaced::none && !(replaced && keepSpare(number, *replaced))) {
        unlink(staged.c_str());
    }
    return replaced.has_value();
}

bool DiskFiles::keepSpare(std::uint64_t number, Replaced replaced) {
    std::uint64_t none = 0;
    return replaced == Replaced::usable && spare.compare_exchange_strong(none, number);
}

void DiskFiles::dropSpare() {
    if (const std::uint64_t number = spare.exchange(0); number != 0) {
        unlink(stagedPath(staging, number).c_str());
    }
}

std::string DiskFiles::stagedPath(const std::string& directory, std::uint64_t number) const {
    // A forked process has a number of its own and so no part in this one's spare file. Processes of two containers
    // may have the same one.
    return directory + "/" + std::to_string(getpid()) + "-" + std::to_string(started) + "-" + std::to_string(number);
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
    const auto file = openNamed(path, error);
    return file ? readToEnd(file->number, static_cast<std::size_t>(std::max<off_t>(file->status.st_size, 0)), error)
                : std::nullopt;
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
    const auto file = openNamed(path, error);
    if (!file) {
        return std::nullopt;
    }
    const std::optional<Date> date = dateOf(file->status.st_mtim);
    if (!date) {
        error = std::make_error_code(std::errc::value_too_large);
    }
    return date;
}

std::error_code DiskFiles::setModificationDate(const std::string& path, Date date) {
    std::error_code error;
    const auto file = openNamed(path, error);
    return file ? setDate(file->number, date) : error;
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
    // What is removed may have an older value of its own there.
    dropSpare();
    std::error_code error = checked(path);
    if (!error && std::filesystem::remove_all(path, error) == 0 && !error) {
        error = std::make_error_code(std::errc::no_such_file_or_directory);
    }
    return error;
}

} // namespace quorvane::platform::native
