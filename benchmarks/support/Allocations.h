#pragma once

#include <cstdint>

namespace quorvane {

/// How often this thread has called operator new since it began.
std::uint64_t allocationCount();

/// How many bytes this thread has held at most, beyond those that it held at the last `startPeak`.
std::uint64_t peakBytes();
void startPeak();

} // namespace quorvane
