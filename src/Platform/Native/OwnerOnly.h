#pragma once

#include <optional>
#include <string>
#include <string_view>
#include <system_error>

#include "Platform/Clock.h"

/// Files and directories that only their owner may read and write, whatever the process's umask is.
namespace quorvane::platform::native {

/// The error of the last system call.
[[nodiscard]] std::error_code lastError();

/// Makes the directory and those above it. One that is there stays as it is.
[[nodiscard]] std::error_code makeDirectories(const std::string& path);

/// Makes the file empty when it is not there, and takes the rights of others away when it is.
[[nodiscard]] std::error_code makeFile(const std::string& path);

/// The moment as the system's calls take it.
[[nodiscard]] timespec timeOf(Date date);

/// The moment that the system's calls answer; none beyond the range of `Date`.
[[nodiscard]] std::optional<Date> dateOf(const timespec& time);

/// Writes the whole of @p content where the open file stands.
[[nodiscard]] std::error_code writeAll(int file, std::string_view content);

/// Sets the open file's modification date.
[[nodiscard]] std::error_code setDate(int file, Date date);

/// Writes a new file, dated @p modified or else now; one that is there is an error.
[[nodiscard]] std::error_code writeNewFile(const std::string& path, std::string_view content,
                                           std::optional<Date> modified = std::nullopt);

} // namespace quorvane::platform::native
