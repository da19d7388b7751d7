#include "Platform/Native/SpareFile.h"

#include <cerrno>
#include <csignal>
#include <cstdio>

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include "Platform/Native/OwnerOnly.h"

#if defined(__linux__) && defined(F_SETLEASE)
#include <linux/fiemap.h>
#include <linux/fs.h>
#include <sys/ioctl.h>
#endif

namespace quorvane::platform::native {

namespace {

/// What is kept on the disk for nothing is no larger.
constexpr off_t largestSpare = 1 << 20;

[[nodiscard]] bool isFit(const struct stat& status) {
    return S_ISREG(status.st_mode) && (status.st_mode & 07777) == (S_IRUSR | S_IWUSR) && status.st_nlink == 1 &&
           status.st_uid == geteuid() && status.st_size <= largestSpare;
}

#ifdef RENAME_EXCHANGE
/// Exchanges the names of @p staged and of the file at @p path. None when there is no file there, or the file system
/// cannot do that; nothing has changed then.
[[nodiscard]] std::optional<Replaced> exchange(const std::string& staged, const std::string& path) {
    struct stat status {};
    if (lstat(path.c_str(), &status) != 0 || !S_ISREG(status.st_mode) ||
        renameat2(AT_FDCWD, staged.c_str(), AT_FDCWD, path.c_str(), RENAME_EXCHANGE) != 0) {
        return std::nullopt;
    }
    if (lstat(staged.c_str(), &status) != 0) {
        return Replaced::none;
    }
    // A directory has come there meanwhile: it gets its name back.
    if (S_ISDIR(status.st_mode) && renameat2(AT_FDCWD, staged.c_str(), AT_FDCWD, path.c_str(), RENAME_EXCHANGE) == 0) {
        return std::nullopt;
    }
    return isFit(status) ? Replaced::usable : Replaced::other;
}
#else
[[nodiscard]] std::optional<Replaced> exchange(const std::string&, const std::string&) {
    return std::nullopt;
}
#endif

#if defined(__linux__) && defined(F_SETLEASE)
/// The file for this process alone, while the object lives.
class Lease {
public:
    explicit Lease(int theFile) : file(theFile) {
        // The signal of an open that waits for the lease would end the process were it the usual one; this one is
        // ignored unless the host handles it.
        isHeld = fcntl(file, F_SETSIG, SIGURG) == 0 && fcntl(file, F_SETLEASE, F_WRLCK) == 0;
    }
    Lease(const Lease&) = delete;
    Lease& operator=(const Lease&) = delete;
    /// Closing would not do: a process that was forked meanwhile has the same file open.
    ~Lease() {
        if (isHeld) {
            fcntl(file, F_SETLEASE, F_UNLCK);
        }
    }
    bool isHeld = false;

private:
    const int file;
};

/// Whether nothing of the file's content has a place on the disk yet.
[[nodiscard]] bool isInMemoryOnly(int file) {
    alignas(fiemap) char space[sizeof(fiemap) + sizeof(fiemap_extent)] = {};
    auto* const map = reinterpret_cast<fiemap*>(space);
    map->fm_length = FIEMAP_MAX_OFFSET;
    map->fm_extent_count = 1;
    if (ioctl(file, FS_IOC_FIEMAP, map) != 0) {
        return false;
    }
    constexpr auto wanted = FIEMAP_EXTENT_DELALLOC | FIEMAP_EXTENT_LAST;
    return map->fm_mapped_extents == 0 || (map->fm_extents[0].fe_flags & wanted) == wanted;
}

[[nodiscard]] std::error_code overwrite(int file, std::string_view content, std::optional<Date> modified) {
    const Lease lease(file);
    struct stat status {};
    if (!lease.isHeld || fstat(file, &status) != 0) {
        return lastError();
    }
    if (!isFit(status)) {
        return std::make_error_code(std::errc::invalid_argument);
    }
    if (!isInMemoryOnly(file) &&
        fallocate(file, FALLOC_FL_PUNCH_HOLE | FALLOC_FL_KEEP_SIZE, 0, 2 * largestSpare) != 0) {
        return lastError();
    }
    if (const std::error_code error = writeAll(file, content)) {
        return error;
    }
    // Never to nothing first: some file systems write a file that was emptied to the disk when it is closed.
    if (status.st_size > static_cast<off_t>(content.size()) &&
        ftruncate(file, static_cast<off_t>(content.size())) != 0) {
        return lastError();
    }
    return modified ? setDate(file, *modified) : std::error_code();
}

#else
[[nodiscard]] std::error_code overwrite(int, std::string_view, std::optional<Date>) {
    return std::make_error_code(std::errc::operation_not_supported);
}
#endif

} // namespace

std::optional<Replaced> takePlace(const std::string& staged, const std::string& path) {
    if (const std::optional<Replaced> replaced = exchange(staged, path)) {
        return replaced;
    }
    return rename(staged.c_str(), path.c_str()) == 0 ? std::optional(Replaced::none) : std::nullopt;
}

std::error_code writeSpareFile(const std::string& path, std::string_view content, std::optional<Date> modified) {
    // Without waiting for somebody else's lease.
    const int file = open(path.c_str(), O_RDWR | O_NOFOLLOW | O_NONBLOCK | O_CLOEXEC);
    if (file < 0) {
        return lastError();
    }
    const std::error_code error = overwrite(file, content, modified);
    return close(file) != 0 && !error ? lastError() : error;
}

} // namespace quorvane::platform::native
