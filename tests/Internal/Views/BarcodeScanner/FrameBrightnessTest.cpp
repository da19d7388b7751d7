#include <gtest/gtest.h>

#include "Internal/Views/BarcodeScanner/FrameBrightness.h"

namespace quorvane::capture {
namespace {

using Format = platform::VideoFrame::Format;

/// One row of two pixels, or so many as the bytes make.
GrayPicture brightness(Format format, const std::vector<std::uint8_t>& bytes, int width) {
    platform::VideoFrame frame;
    frame.format = format;
    frame.width = width;
    frame.height = 1;
    frame.planes[0] = {bytes.data(), bytes.size()};
    GrayPicture picture;
    takeBrightness(frame, std::nullopt, picture);
    return picture;
}

using Pixels = std::vector<std::uint8_t>;

TEST(FrameBrightness, IsTheFirstPlaneWhereThatHoldsNothingElse) {
    for (const Format format : {Format::gray8, Format::nv12, Format::yuv420p}) {
        EXPECT_EQ(brightness(format, {1, 2, 3}, 3).pixels, (Pixels{1, 2, 3}));
    }
}

TEST(FrameBrightness, IsEveryOtherByteOfPackedPairs) {
    EXPECT_EQ(brightness(Format::yuyv, {1, 9, 2, 9, 3, 9, 4, 9}, 3).pixels, (Pixels{1, 2, 3}));
    EXPECT_EQ(brightness(Format::uyvy, {9, 1, 9, 2, 9, 3, 9, 4}, 3).pixels, (Pixels{1, 2, 3}));
}

TEST(FrameBrightness, OfAnOddWidthNeedsTheWholeLastPair) {
    EXPECT_TRUE(brightness(Format::yuyv, {1, 9, 2, 9, 3, 9}, 3).isEmpty());
}

TEST(FrameBrightness, WeighsGreenMostAndBlueLeast) {
    EXPECT_EQ(brightness(Format::rgb24, {255, 0, 0, 0, 255, 0, 0, 0, 255, 255, 255, 255}, 4).pixels,
              (Pixels{77, 149, 29, 255}));
    EXPECT_EQ(brightness(Format::rgbx32, {255, 0, 0, 7, 0, 0, 255, 7}, 2).pixels, (Pixels{77, 29}));
    EXPECT_EQ(brightness(Format::bgrx32, {255, 0, 0, 7, 0, 0, 255, 7}, 2).pixels, (Pixels{29, 77}));
}

TEST(FrameBrightness, IsOnlyThatOfTheAimWithAMarginOfASixteenth) {
    const std::vector<std::uint8_t> bytes(std::size_t{64} * 48);
    platform::VideoFrame frame;
    frame.width = 64;
    frame.height = 48;
    frame.planes[0] = {bytes.data(), 64};
    GrayPicture picture;

    takeBrightness(frame, platform::BarcodeReader::Area{0.25, 0.25, 0.5, 0.5}, picture);
    EXPECT_EQ(picture.width, 36);
    EXPECT_EQ(picture.height, 28);

    frame.rotation = 90;
    takeBrightness(frame, platform::BarcodeReader::Area{0, 0, 0.5, 0.25}, picture);
    EXPECT_EQ(picture.width, 17);
    EXPECT_EQ(picture.height, 26);
}

TEST(FrameBrightness, KeepsItsMemoryFromFrameToFrame) {
    const std::vector<std::uint8_t> bytes(10'000);
    platform::VideoFrame frame;
    frame.width = 100;
    frame.height = 100;
    frame.planes[0] = {bytes.data(), 100};
    GrayPicture picture;
    takeBrightness(frame, std::nullopt, picture);
    const std::uint8_t* const memory = picture.pixels.data();

    takeBrightness(frame, platform::BarcodeReader::Area{0, 0, 0.5, 0.5}, picture);
    takeBrightness(frame, std::nullopt, picture);

    EXPECT_EQ(picture.pixels.data(), memory);
    EXPECT_EQ(picture.pixels.size(), bytes.size());
}

} // namespace
} // namespace quorvane::capture
