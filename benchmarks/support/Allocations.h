#pragma once

#include <cstdint>

namespace quorvane {

/// How often this thread has called operator new since it began.
std::uint64_t allocationCount();

} // namespace quorvane
