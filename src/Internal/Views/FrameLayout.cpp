#include "Internal/Views/FrameLayout.h"

namespace quorvane::capture {
namespace {

using platform::VideoFrame;
using Format = VideoFrame::Format;

int half(int length) {
    return length / 2 + length % 2;
}

} // namespace

std::size_t rowBytes(const VideoFrame& frame, std::size_t plane) {
    const auto width = static_cast<std::size_t>(frame.width);
    const auto halfWidth = static_cast<std::size_t>(half(frame.width));
    switch (frame.format) {
        case Format::gray8:
            return plane == 0 ? width : 0;
        case Format::rgb24:
            return plane == 0 ? 3 * width : 0;
        case Format::rgbx32:
        case Format::bgrx32:
            return plane == 0 ? 4 * width : 0;
        case Format::nv12:
            return plane == 0 ? width : plane == 1 ? 2 * halfWidth : 0;
        case Format::yuv420p:
            return plane == 0 ? width : halfWidth;
        case Format::yuyv:
        case Format::uyvy:
            return plane == 0 ? 4 * halfWidth : 0;
    }
    return 0;
}

std::size_t rowCount(const VideoFrame& frame, std::size_t plane) {
    const bool isHalved = plane > 0 && (frame.format == Format::nv12 || frame.format == Format::yuv420p);
    return static_cast<std::size_t>(isHalved ? half(frame.height) : frame.height);
}

bool isPlaneWhole(const VideoFrame& frame, std::size_t plane) {
    if (frame.width < 1 || frame.height < 1) {
        return false;
    }
    const std::size_t needed = rowBytes(frame, plane);
    return needed == 0 || (frame.planes[plane].data != nullptr && frame.planes[plane].bytesPerLine >= needed);
}

bool isWhole(const VideoFrame& frame) {
    return isPlaneWhole(frame, 0) && isPlaneWhole(frame, 1) && isPlaneWhole(frame, 2);
}

} // namespace quorvane::capture
