#include "Internal/Views/BarcodeScanner/FrameBrightness.h"

#include <algorithm>
#include <cmath>
#include <cstring>

#include "Internal/Views/FrameLayout.h"

namespace quorvane::capture {
namespace {

using Area = platform::BarcodeReader::Area;
using Format = platform::VideoFrame::Format;

/// Pixels of the stored picture.
struct Part {
    int left = 0;
    int top = 0;
    int width = 0;
    int height = 0;
};

/// How bytes of the first plane make up pixels.
struct Layout {
    std::size_t bytesPerPixel = 1;
    /// Of the brightness, or of the first colour.
    std::size_t offset = 0;
    bool isColoured = false;
    bool isBlueFirst = false;
};

Layout layoutOf(Format format) {
    switch (format) {
        case Format::rgb24:
            return {3, 0, true, false};
        case Format::rgbx32:
            return {4, 0, true, false};
        case Format::bgrx32:
            return {4, 0, true, true};
        case Format::yuyv:
            return {2, 0, false, false};
        case Format::uyvy:
            return {2, 1, false, false};
        case Format::gray8:
        case Format::nv12:
        case Format::yuv420p:
            break;
    }
    return {};
}

/// What no camera delivers, and what would not fit into this machine's memory.
constexpr int longestSide = 32768;
constexpr std::int64_t mostPixels = std::int64_t{1} << 27;

bool isReadable(const platform::VideoFrame& frame) {
    return frame.width <= longestSide && frame.height <= longestSide &&
           std::int64_t{frame.width} * frame.height <= mostPixels && isPlaneWhole(frame, 0);
}

/// An area of the upright picture as one of the stored picture.
Area stored(const Area& upright, int rotation) {
    const double right = upright.x + upright.width;
    const double bottom = upright.y + upright.height;
    switch (rotation) {
        case 90:
            return {upright.y, 1 - right, upright.height, upright.width};
        case 180:
            return {1 - right, 1 - bottom, upright.width, upright.height};
        case 270:
            return {1 - bottom, upright.x, upright.height, upright.width};
        default:
            return upright;
    }
}

/// From a begin and a length between 0 and 1 to pixels.
std::pair<int, int> pixels(double begin, double length, int size) {
    constexpr double margin = 1.0 / 16;
    const double low = std::clamp((begin - length * margin) * size, 0.0, static_cast<double>(size));
    const double high = std::clamp((begin + length * (1 + margin)) * size, 0.0, static_cast<double>(size));
    const int first = static_cast<int>(std::floor(low));
    return {first, static_cast<int>(std::ceil(high)) - first};
}

Part aimedPart(const platform::VideoFrame& frame, const std::optional<Area>& aim) {
    if (!aim) {
        return {0, 0, frame.width, frame.height};
    }
    const Area area = stored(*aim, (frame.rotation % 360 + 360) % 360);
    const bool isArea = std::isfinite(area.x) && std::isfinite(area.y) && area.width > 0 && area.height > 0 &&
                        std::isfinite(area.width) && std::isfinite(area.height);
    if (!isArea) {
        return {};
    }
    const auto [left, width] = pixels(area.x, area.width, frame.width);
    const auto [top, height] = pixels(area.y, area.height, frame.height);
    return {left, top, width, height};
}

void copyColours(const std::uint8_t* from, const Layout& layout, int count, std::uint8_t* to) {
    const unsigned first = layout.isBlueFirst ? 29 : 77;
    const unsigned last = layout.isBlueFirst ? 77 : 29;
    for (int x = 0; x < count; ++x, from += layout.bytesPerPixel) {
        to[x] = static_cast<std::uint8_t>((first * from[0] + 150U * from[1] + last * from[2] + 128) >> 8);
    }
}

} // namespace

void takeBrightness(const platform::VideoFrame& frame, const std::optional<Area>& aim, GrayPicture& picture) {
    const Layout layout = layoutOf(frame.format);
    const Part part = isReadable(frame) ? aimedPart(frame, aim) : Part{};
    picture.resize(part.width, part.height);
    picture.placement = {};
    for (int y = 0; !picture.isEmpty() && y < part.height; ++y) {
        const std::uint8_t* from = frame.planes[0].data +
                                   static_cast<std::size_t>(part.top + y) * frame.planes[0].bytesPerLine +
                                   static_cast<std::size_t>(part.left) * layout.bytesPerPixel + layout.offset;
        std::uint8_t* const to = picture.row(y);
        if (layout.isColoured) {
            copyColours(from, layout, part.width, to);
        } else if (layout.bytesPerPixel == 1) {
            std::memcpy(to, from, static_cast<std::size_t>(part.width));
        } else {
            for (int x = 0; x < part.width; ++x, from += layout.bytesPerPixel) {
                to[x] = *from;
            }
        }
    }
}

} // namespace quorvane::capture
