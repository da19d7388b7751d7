#pragma once

#include <cstddef>

#include "Platform/VideoFrame.h"

namespace quorvane::capture {

/// Bytes that a row of a plane has at least; 0 for a plane that the format has not.
[[nodiscard]] std::size_t rowBytes(const platform::VideoFrame& frame, std::size_t plane);

/// Rows that a plane of the format has.
[[nodiscard]] std::size_t rowCount(const platform::VideoFrame& frame, std::size_t plane);

/// Whether the frame has pixels, and the plane with rows that are long enough for them if the format has it.
[[nodiscard]] bool isPlaneWhole(const platform::VideoFrame& frame, std::size_t plane);

/// The same of every plane.
[[nodiscard]] bool isWhole(const platform::VideoFrame& frame);

} // namespace quorvane::capture
