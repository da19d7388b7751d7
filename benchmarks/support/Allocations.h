#pragma once

#include <cstdint>

namespace quorvane {

/// How often this thread has called operator new since it began.
std::uint64_t allocationCount();

/// Counts from now on what this thread holds, which costs time with each allocation.
void startPeak();
/// How many bytes this thread has held at most since `startPeak`, beyond those that it held then. Ends the counting.
std::uint64_t endPeak();

} // namespace quorvane
