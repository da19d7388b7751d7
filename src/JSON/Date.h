#pragma once

#include <chrono>

namespace quorvane::json {

/// A moment of wall time; in JSON the seconds since 2001-01-01 UTC as a number.
using Date = std::chrono::sys_time<std::chrono::nanoseconds>;

}  // namespace quorvane::json
