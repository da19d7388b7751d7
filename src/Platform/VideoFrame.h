#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <memory>

namespace quorvane::platform {

/// One picture of a camera's stream. Its pixels are immutable and shared by its copies; safe from any thread.
struct VideoFrame {
    /// How the pixels lie in the planes; of the four-byte ones the last byte means nothing.
    enum class Format : std::uint8_t {
        /// One plane of brightness.
        gray8,
        /// One plane, bytes in the order of the name.
        rgb24,
        rgbx32,
        bgrx32,
        /// Brightness, then Cb and Cr in turn at half the width and height.
        nv12,
        /// Brightness, then Cb, then Cr, the latter two at half the width and height.
        yuv420p,
        /// One plane with two pixels in four bytes: Y Cb Y Cr, and Cb Y Cr Y.
        yuyv,
        uyvy,
    };
    struct Plane {
        const std::uint8_t* data = nullptr;
        /// From one row to the next; at least what a row needs.
        std::size_t bytesPerLine = 0;
    };

    Format format = Format::gray8;
    /// Pixels of the stored picture; 0 for an empty frame.
    int width = 0;
    int height = 0;
    std::array<Plane, 3> planes{};
    /// Degrees clockwise by which the stored picture is turned to stand upright: 0, 90, 180 or 270.
    int rotation = 0;
    /// Keeps the planes' memory alive.
    std::shared_ptr<const void> owner;
};

} // namespace quorvane::platform
