#pragma once

namespace quorvane::platform {

/// Prints what was required and aborts the process.
[[noreturn]] void preconditionFailed(const char* what, const char* file, int line);

} // namespace quorvane::platform

/// Stops the process with @p what on the error output when @p condition does not hold: a programming error of the
/// host or of the library, never the outcome of bad input.
#define QV_PRECONDITION(condition, what) \
    ((condition) ? static_cast<void>(0) : ::quorvane::platform::preconditionFailed((what), __FILE__, __LINE__))
