#include <cstring>

#include <gtest/gtest.h>

#include "Internal/Views/Devices/QtFrame.h"
#include "Internal/Views/FrameImage.h"

namespace quorvane::capture {
namespace {

/// A frame of the toolkit with every byte of its memory the same.
QVideoFrame filled(QVideoFrameFormat::PixelFormat format, QSize size, int byte) {
    QVideoFrame frame(QVideoFrameFormat(size, format));
    EXPECT_TRUE(frame.map(QVideoFrame::WriteOnly));
    for (int plane = 0; plane < frame.planeCount(); ++plane) {
        std::memset(frame.bits(plane), byte, static_cast<std::size_t>(frame.mappedBytes(plane)));
    }
    frame.unmap();
    return frame;
}

TEST(QtFrameTest, FramesOfEachKnownFormatKeepTheirFormat) {
    using Ours = platform::VideoFrame::Format;
    const std::pair<QVideoFrameFormat::PixelFormat, Ours> formats[] = {
        {QVideoFrameFormat::Format_Y8, Ours::gray8},        {QVideoFrameFormat::Format_RGBX8888, Ours::rgbx32},
        {QVideoFrameFormat::Format_RGBA8888, Ours::rgbx32}, {QVideoFrameFormat::Format_BGRX8888, Ours::bgrx32},
        {QVideoFrameFormat::Format_BGRA8888, Ours::bgrx32}, {QVideoFrameFormat::Format_NV12, Ours::nv12},
        {QVideoFrameFormat::Format_YUV420P, Ours::yuv420p}, {QVideoFrameFormat::Format_YUYV, Ours::yuyv},
        {QVideoFrameFormat::Format_UYVY, Ours::uyvy},
    };
    for (const auto& [theirs, ours] : formats) {
        const platform::VideoFrame frame = videoFrameOf(filled(theirs, {64, 48}, 128));
        EXPECT_EQ(frame.format, ours);
        EXPECT_EQ(frame.width, 64);
        EXPECT_EQ(frame.height, 48);
        const QImage image = imageOf(frame);
        ASSERT_FALSE(image.isNull()) << theirs;
        EXPECT_NEAR(image.pixelColor(63, 47).red(), 128, 3) << theirs;
        EXPECT_NEAR(image.pixelColor(63, 47).blue(), 128, 3) << theirs;
    }
}

TEST(QtFrameTest, OtherFormatsAreConverted) {
    const platform::VideoFrame frame = videoFrameOf(filled(QVideoFrameFormat::Format_XRGB8888, {64, 48}, 128));
    EXPECT_EQ(frame.format, platform::VideoFrame::Format::rgb24);
    EXPECT_EQ(frame.width, 64);
    EXPECT_NEAR(imageOf(frame).pixelColor(10, 10).green(), 128, 3);
}

TEST(QtFrameTest, TheRotationIsKept) {
    QVideoFrame turned = filled(QVideoFrameFormat::Format_Y8, {64, 48}, 0);
    turned.setRotationAngle(QVideoFrame::Rotation90);
    EXPECT_EQ(videoFrameOf(turned).rotation, 90);
}

TEST(QtFrameTest, NoFrameIsAnEmptyOne) {
    EXPECT_EQ(videoFrameOf({}).width, 0);
}

} // namespace
} // namespace quorvane::capture
