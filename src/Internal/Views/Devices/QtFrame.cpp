#include "Internal/Views/Devices/QtFrame.h"

#include <QImage>
#include <array>
#include <cstddef>
#include <cstdint>
#include <memory>
#include <optional>
#include <vector>

#include "Internal/Views/FrameImage.h"
#include "Internal/Views/FrameLayout.h"
#include "Platform/Qt/QtImage.h"

namespace quorvane::capture {
namespace {

using platform::VideoFrame;
using Format = VideoFrame::Format;

std::optional<Format> formatOf(QVideoFrameFormat::PixelFormat format) {
    switch (format) {
        case QVideoFrameFormat::Format_Y8:
            return Format::gray8;
        case QVideoFrameFormat::Format_RGBX8888:
        case QVideoFrameFormat::Format_RGBA8888:
            return Format::rgbx32;
        case QVideoFrameFormat::Format_BGRX8888:
        case QVideoFrameFormat::Format_BGRA8888:
            return Format::bgrx32;
        case QVideoFrameFormat::Format_NV12:
            return Format::nv12;
        case QVideoFrameFormat::Format_YUV420P:
            return Format::yuv420p;
        case QVideoFrameFormat::Format_YUYV:
            return Format::yuyv;
        case QVideoFrameFormat::Format_UYVY:
            return Format::uyvy;
        default:
            return std::nullopt;
    }
}

/// A frame's memory as long as it can be read.
class Mapping {
public:
    explicit Mapping(QVideoFrame& theFrame) : frame(theFrame), isMapped(frame.map(QVideoFrame::ReadOnly)) {}
    Mapping(const Mapping&) = delete;
    Mapping& operator=(const Mapping&) = delete;
    ~Mapping() {
        if (isMapped) {
            frame.unmap();
        }
    }

    QVideoFrame& frame;
    const bool isMapped;
};

/// Copies the planes of @p from. False when one is shorter than its format needs.
bool copyPlanes(const QVideoFrame& from, VideoFrame& to) {
    const auto bytes = std::make_shared<std::array<std::vector<std::uint8_t>, 3>>();
    for (std::size_t plane = 0; plane < to.planes.size() && rowBytes(to, plane) > 0; ++plane) {
        const int number = static_cast<int>(plane);
        const int stride = number < from.planeCount() ? from.bytesPerLine(number) : 0;
        const std::size_t rows = rowCount(to, plane);
        if (stride <= 0 || static_cast<std::size_t>(stride) < rowBytes(to, plane)) {
            return false;
        }
        const std::size_t needed = static_cast<std::size_t>(stride) * (rows - 1) + rowBytes(to, plane);
        if (from.bits(number) == nullptr || static_cast<std::size_t>(from.mappedBytes(number)) < needed) {
            return false;
        }
        bytes->at(plane).assign(from.bits(number), from.bits(number) + needed);
        to.planes.at(plane) = {bytes->at(plane).data(), static_cast<std::size_t>(stride)};
    }
    to.owner = bytes;
    return true;
}

} // namespace

VideoFrame videoFrameOf(const QVideoFrame& frame) {
    if (!frame.isValid()) {
        return {};
    }
    const std::optional<Format> format = formatOf(frame.pixelFormat());
    if (!format) {
        return frameOf(frame.toImage());
    }
    QVideoFrame readable = frame;
    const Mapping mapping(readable);
    if (!mapping.isMapped) {
        return {};
    }
    VideoFrame result;
    result.format = *format;
    result.width = readable.width();
    result.height = readable.height();
    result.rotation = readable.rotationAngle();
    return copyPlanes(readable, result) ? result : VideoFrame();
}

std::shared_ptr<const platform::Image> photoOf(const QImage& picture) {
    if (picture.isNull()) {
        return nullptr;
    }
    return std::make_shared<platform::qt::QtImage>(picture.convertToFormat(QImage::Format_RGB888));
}

} // namespace quorvane::capture
