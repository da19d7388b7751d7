#include <cstdint>
#include <memory>
#include <string>
#include <vector>

#include <gtest/gtest.h>

#include "Internal/Views/FrameImage.h"

namespace quorvane::capture {
namespace {

using platform::VideoFrame;
using Format = VideoFrame::Format;
using Bytes = std::vector<std::uint8_t>;

VideoFrame frameWith(Format format, int width, int height, const Bytes& first, std::size_t firstLine,
                     const Bytes& second = {}, std::size_t secondLine = 0, const Bytes& third = {},
                     std::size_t thirdLine = 0) {
    const auto kept = std::make_shared<const std::vector<Bytes>>(std::vector<Bytes>{first, second, third});
    VideoFrame frame;
    frame.format = format;
    frame.width = width;
    frame.height = height;
    const std::size_t lines[] = {firstLine, secondLine, thirdLine};
    for (std::size_t i = 0; i < 3; ++i) {
        frame.planes[i] = {(*kept)[i].empty() ? nullptr : (*kept)[i].data(), lines[i]};
    }
    frame.owner = kept;
    return frame;
}

/// The colours row by row, such as "ff0000 00ff00 / 0000ff 000000".
std::string colorsOf(const QImage& image) {
    std::string text;
    for (int y = 0; y < image.height(); ++y) {
        for (int x = 0; x < image.width(); ++x) {
            text += image.pixelColor(x, y).name().toStdString().substr(1) + (x + 1 < image.width() ? " " : "");
        }
        text += y + 1 < image.height() ? " / " : "";
    }
    return text;
}

TEST(FrameImageTest, GraysAreReadRowByRowWithWhateverStandsBetweenRowsLeftOut) {
    const VideoFrame frame = frameWith(Format::gray8, 3, 2, {0, 128, 255, 9, 9, 1, 2, 3, 9, 9}, 5);
    EXPECT_EQ(colorsOf(imageOf(frame)), "000000 808080 ffffff / 010101 020202 030303");
}

TEST(FrameImageTest, ColorsAreReadInTheOrderThatTheFormatNames) {
    EXPECT_EQ(colorsOf(imageOf(frameWith(Format::rgb24, 2, 1, {255, 0, 0, 1, 2, 3}, 6))), "ff0000 010203");
    EXPECT_EQ(colorsOf(imageOf(frameWith(Format::rgbx32, 2, 1, {255, 0, 0, 7, 1, 2, 3, 7}, 8))), "ff0000 010203");
    EXPECT_EQ(colorsOf(imageOf(frameWith(Format::bgrx32, 2, 1, {255, 0, 0, 7, 1, 2, 3, 7}, 8))), "0000ff 030201");
}

// Brightness 235 is white and 16 black; 81, 90, 240 is red.
constexpr std::uint8_t red[] = {81, 90, 240};

TEST(FrameImageTest, BrightnessAndColorsInTwoPlanesOfAnOddSizeAreReadToTheirEdges) {
    const VideoFrame frame = frameWith(Format::nv12, 3, 3, {235, 235, 16, 235, 235, 16, red[0], 16, 16}, 3,
                                       {128, 128, 128, 128, red[1], red[2], 128, 128}, 4);
    EXPECT_EQ(colorsOf(imageOf(frame)), "ffffff ffffff 000000 / ffffff ffffff 000000 / ff0000 b30000 000000");
}

TEST(FrameImageTest, BrightnessAndColorsInThreePlanesAreReadToTheirEdges) {
    const VideoFrame frame = frameWith(Format::yuv420p, 3, 1, {235, 16, red[0]}, 3, {128, red[1]}, 2, {128, red[2]}, 2);
    EXPECT_EQ(colorsOf(imageOf(frame)), "ffffff 000000 ff0000");
}

TEST(FrameImageTest, PairsOfPixelsAreReadInBothOrders) {
    EXPECT_EQ(colorsOf(imageOf(frameWith(Format::yuyv, 3, 1, {235, 128, 16, 128, red[0], red[1], 0, red[2]}, 8))),
              "ffffff 000000 ff0000");
    EXPECT_EQ(colorsOf(imageOf(frameWith(Format::uyvy, 3, 1, {128, 235, 128, 16, red[1], red[0], red[2], 0}, 8))),
              "ffffff 000000 ff0000");
}

TEST(FrameImageTest, AFrameIsTurnedClockwiseByItsRotation) {
    VideoFrame frame = frameWith(Format::gray8, 2, 1, {0, 255}, 2);
    frame.rotation = 90;
    EXPECT_EQ(colorsOf(imageOf(frame)), "000000 / ffffff");
    frame.rotation = 180;
    EXPECT_EQ(colorsOf(imageOf(frame)), "ffffff 000000");
    frame.rotation = 270;
    EXPECT_EQ(colorsOf(imageOf(frame)), "ffffff / 000000");
}

TEST(FrameImageTest, AnEmptyFrameAndOneWithoutItsPlanesGiveNoPicture) {
    EXPECT_TRUE(imageOf({}).isNull());
    EXPECT_TRUE(imageOf(frameWith(Format::gray8, 2, 0, {0}, 2)).isNull());
    EXPECT_TRUE(imageOf(frameWith(Format::gray8, -2, 1, {0, 0}, 2)).isNull());
    EXPECT_TRUE(imageOf(frameWith(Format::gray8, 2, 1, {}, 2)).isNull());
    EXPECT_TRUE(imageOf(frameWith(Format::gray8, 3, 1, {0, 0}, 2)).isNull());
    EXPECT_TRUE(imageOf(frameWith(Format::nv12, 2, 2, {0, 0, 0, 0}, 2)).isNull());
    EXPECT_TRUE(imageOf(frameWith(Format::yuv420p, 2, 2, {0, 0, 0, 0}, 2, {0}, 1)).isNull());
    EXPECT_TRUE(imageOf(frameWith(Format::yuyv, 3, 1, {0, 0, 0, 0}, 4)).isNull());
}

TEST(FrameImageTest, APictureBecomesAFrameOfTheSamePixels) {
    QImage image(3, 2, QImage::Format_RGB32);
    image.fill(QColor(10, 20, 30));
    image.setPixelColor(2, 1, Qt::red);
    EXPECT_EQ(colorsOf(imageOf(frameOf(image))), colorsOf(image));
    EXPECT_EQ(frameOf({}).width, 0);
}

} // namespace
} // namespace quorvane::capture
