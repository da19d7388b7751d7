#pragma once

#include <optional>
#include <string>
#include <string_view>
#include <system_error>
#include <vector>

#include "Platform/Clock.h"

namespace quorvane::platform {

/// Who may read and write a file or directory.
enum class FileProtection {
    /// Its owner and nobody else.
    ownerOnly,
};

/// Files of the application. Paths are absolute UTF-8 texts. Safe from any thread. Every implementation promises:
/// - what it creates is readable and writable by its owner only;
/// - `replace` is atomic: at every moment, also after a process that ended in the middle of it, the path names the old
///   content with its date or the new one with its own, never a part, and nothing but the file itself is ever listed
///   in its directory. Each call sees one such state: a content that is read and a date that is asked for after it may
///   be of two. The end of the system's power is no end of a process: what was written shortly before may be lost;
/// - no call throws; what failed is told by the error code, be it to read a pipe or a date that `Date` cannot hold.
class FileManager {
public:
    FileManager() = default;
    FileManager(const FileManager&) = delete;
    FileManager& operator=(const FileManager&) = delete;
    virtual ~FileManager() = default;

    /// Where the application may keep what it can make again. Exists, or is created on first use of `createDirectory`.
    [[nodiscard]] virtual std::string cachesDirectory() const = 0;

    /// Creates the directory and those above it. An existing directory is a success.
    virtual std::error_code createDirectory(const std::string& path) = 0;

    /// Writes @p content to @p path, replacing what is there. The file is dated @p modified; none: now.
    virtual std::error_code replace(const std::string& path, std::string_view content,
                                    std::optional<Date> modified = std::nullopt) = 0;

    /// The whole file; none with @p error set when it cannot be read.
    [[nodiscard]] virtual std::optional<std::string> read(const std::string& path, std::error_code& error) const = 0;

    /// Names (not paths) of the entries of a directory, sorted by byte; none with @p error set when it cannot be read.
    [[nodiscard]] virtual std::optional<std::vector<std::string>> list(const std::string& path,
                                                                       std::error_code& error) const = 0;

    [[nodiscard]] virtual bool exists(const std::string& path) const = 0;

    [[nodiscard]] virtual std::optional<Date> modificationDate(const std::string& path,
                                                               std::error_code& error) const = 0;

    virtual std::error_code setModificationDate(const std::string& path, Date date) = 0;

    /// Sets who may read and write a file or directory; what a directory holds stays as it is.
    virtual std::error_code protect(const std::string& path, FileProtection protection) = 0;

    /// Removes a file, or a directory with everything in it. An absent one is an error.
    virtual std::error_code remove(const std::string& path) = 0;
};

} // namespace quorvane::platform
