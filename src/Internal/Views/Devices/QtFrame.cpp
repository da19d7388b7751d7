#include "Internal/Views/Devices/QtFrame.h"

#include <QImage>
#include <cstddef>
#include <memory>
#include <optional>

#include "Internal/Views/FrameImage.h"

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

/// Keeps a frame's memory readable.
struct MappedFrame {
    explicit MappedFrame(const QVideoFrame& theFrame) : frame(theFrame), isMapped(frame.map(QVideoFrame::ReadOnly)) {}
    MappedFrame(const MappedFrame&) = delete;
    MappedFrame& operator=(const MappedFrame&) = delete;
    ~MappedFrame() {
        if (isMapped) {
            frame.unmap();
        }
    }

    QVideoFrame frame;
    const bool isMapped;
};

} // namespace

VideoFrame videoFrameOf(const QVideoFrame& frame) {
    if (!frame.isValid()) {
        return {};
    }
    const std::optional<Format> format = formatOf(frame.pixelFormat());
    if (!format) {
        return frameOf(frame.toImage());
    }
    const auto mapped = std::make_shared<const MappedFrame>(frame);
    if (!mapped->isMapped) {
        return {};
    }
    VideoFrame result;
    result.format = *format;
    result.width = frame.width();
    result.height = frame.height();
    result.rotation = frame.rotationAngle();
    for (int plane = 0; plane < mapped->frame.planeCount() && plane < 3; ++plane) {
        result.planes[static_cast<std::size_t>(plane)] = {mapped->frame.bits(plane),
                                                          static_cast<std::size_t>(mapped->frame.bytesPerLine(plane))};
    }
    result.owner = mapped;
    return result;
}

} // namespace quorvane::capture
