#include "Internal/Views/FrameImage.h"

#include <QTransform>
#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <memory>

#include "Internal/Views/FrameLayout.h"

namespace quorvane::capture {
namespace {

using platform::VideoFrame;
using Format = VideoFrame::Format;

const std::uint8_t* rowOf(const VideoFrame& frame, std::size_t plane, int row) {
    return frame.planes[plane].data + frame.planes[plane].bytesPerLine * static_cast<std::size_t>(row);
}

QRgb fromBytes(int red, int green, int blue) {
    return qRgb(std::clamp(red, 0, 255), std::clamp(green, 0, 255), std::clamp(blue, 0, 255));
}

/// Of studio range, as cameras deliver it: brightness from 16 to 235.
QRgb fromYCbCr(int y, int cb, int cr) {
    const int brightness = 298 * (y - 16) + 128;
    const int blueness = cb - 128;
    const int redness = cr - 128;
    return fromBytes((brightness + 409 * redness) >> 8, (brightness - 100 * blueness - 208 * redness) >> 8,
                     (brightness + 516 * blueness) >> 8);
}

/// The colours of the row @p y.
void convertRow(const VideoFrame& frame, int y, QRgb* pixels) {
    const std::uint8_t* const first = rowOf(frame, 0, y);
    const auto each = [&](auto colorAt) {
        for (int x = 0; x < frame.width; ++x) {
            pixels[x] = colorAt(x);
        }
    };
    switch (frame.format) {
        case Format::gray8:
            return each([&](int x) { return qRgb(first[x], first[x], first[x]); });
        case Format::rgb24:
            return each([&](int x) { return qRgb(first[3 * x], first[3 * x + 1], first[3 * x + 2]); });
        case Format::rgbx32:
            return each([&](int x) { return qRgb(first[4 * x], first[4 * x + 1], first[4 * x + 2]); });
        case Format::bgrx32:
            return each([&](int x) { return qRgb(first[4 * x + 2], first[4 * x + 1], first[4 * x]); });
        case Format::nv12: {
            const std::uint8_t* const colors = rowOf(frame, 1, y / 2);
            return each([&](int x) { return fromYCbCr(first[x], colors[x / 2 * 2], colors[x / 2 * 2 + 1]); });
        }
        case Format::yuv420p: {
            const std::uint8_t* const blues = rowOf(frame, 1, y / 2);
            const std::uint8_t* const reds = rowOf(frame, 2, y / 2);
            return each([&](int x) { return fromYCbCr(first[x], blues[x / 2], reds[x / 2]); });
        }
        case Format::yuyv:
            return each([&](int x) {
                const std::uint8_t* const pair = first + x / 2 * 4;
                return fromYCbCr(pair[x % 2 * 2], pair[1], pair[3]);
            });
        case Format::uyvy:
            return each([&](int x) {
                const std::uint8_t* const pair = first + x / 2 * 4;
                return fromYCbCr(pair[x % 2 * 2 + 1], pair[0], pair[2]);
            });
    }
}

} // namespace

QImage imageOf(const VideoFrame& frame) {
    if (!isWhole(frame)) {
        return {};
    }
    QImage image(frame.width, frame.height, QImage::Format_RGB32);
    for (int y = 0; y < image.height(); ++y) {
        convertRow(frame, y, reinterpret_cast<QRgb*>(image.scanLine(y)));
    }
    return frame.rotation % 360 == 0 ? image : image.transformed(QTransform().rotate(frame.rotation));
}

VideoFrame frameOf(const QImage& image) {
    if (image.isNull()) {
        return {};
    }
    const auto pixels = std::make_shared<const QImage>(image.convertToFormat(QImage::Format_RGB888));
    VideoFrame frame;
    frame.format = Format::rgb24;
    frame.width = pixels->width();
    frame.height = pixels->height();
    frame.planes[0] = {pixels->constBits(), static_cast<std::size_t>(pixels->bytesPerLine())};
    frame.owner = pixels;
    return frame;
}

} // namespace quorvane::capture
