#pragma once

#include <algorithm>
#include <cstddef>
#include <cstdint>

namespace quorvane::platform::qt {

/// Half a width or a height, rounded down, and at least one pixel.
[[nodiscard]] constexpr int halfOf(int length) {
    return std::max(length / 2, 1);
}

/// Rows of three bytes a pixel, `stride` bytes from one to the next.
struct PixelRows {
    const std::uint8_t* bytes;
    int width;
    int height;
    std::ptrdiff_t stride;
};

/// Writes @p source at half its width and height to @p target: each pixel is the average, rounded, of the four that it
/// stands for. Of an odd width or height the last pixel stands for one more.
void halve(const PixelRows& source, std::uint8_t* target, std::ptrdiff_t targetStride);

} // namespace quorvane::platform::qt
