#pragma once

#include <optional>
#include <string>
#include <string_view>
#include <system_error>

#include "Platform/Clock.h"

/// Writing a value into the file of a value that was replaced: several times faster than making and removing files.
///
/// Nobody who has the older value open may see it change. The system's file leases say so: a write lease is
/// granted when nobody else has the file open, and whoever opens it while the lease is held waits for its end. Where
/// there are no leases there is no spare file.
///
/// Nor may what a power cut leaves be another value's content. Blocks that hold the older value on the disk are given
/// back first, so that the file reads as empty or as zeros until its new content is written to the disk.
namespace quorvane::platform::native {

/// What a file's new content has replaced.
enum class Replaced {
    /// No file, or one that is gone.
    none,
    /// A file that must be removed.
    other,
    /// A file that can be written to again: a regular one of this user's only, with no other name and not large.
    usable,
};

/// Gives the file @p staged the name @p path. What was replaced, if it is not gone, has the name @p staged then. None
/// with `errno` set when that fails.
[[nodiscard]] std::optional<Replaced> takePlace(const std::string& staged, const std::string& path);

/// Replaces the content of the spare file @p path by @p content, which is not empty, dated @p modified or else now. On
/// an error, as when somebody has the file open, the file is of no further use.
[[nodiscard]] std::error_code writeSpareFile(const std::string& path, std::string_view content,
                                             std::optional<Date> modified);

} // namespace quorvane::platform::native
