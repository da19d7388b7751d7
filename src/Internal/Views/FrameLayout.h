#pragma once

#include <cstddef>

#include "Platform/VideoFrame.h"

namespace quorvane::capture {

/// Bytes that a row of a plane has at least; 0 for a plane that the format has not.
[[nodiscard]] std::size_t rowBytes(const platform::VideoFrame& frame, std::size_t plane);

/// Rows that a plane of the format has.
[[nodiscard]] std::size_t rowCount(const platform::VideoFrame& frame, std::size_t plane);

/// Whether the frame has pixels and each plane that they need, with rows that are long enough.
[[nodiscard]] bool isWhole(const platform::VideoFrame& frame);

} // namespace quorvane::capture
