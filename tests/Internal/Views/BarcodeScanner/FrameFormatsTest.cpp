#include <cstring>
#include <tuple>

#include <gtest/gtest.h>

#include "Internal/Views/BarcodeScanner/BarcodeTesting.h"

namespace quorvane {
namespace {

using namespace quorvane::testing;
using Area = platform::BarcodeReader::Area;
using Format = platform::VideoFrame::Format;

/// The picture as a camera delivers it in some format, with bytes between the rows that mean nothing, and without any
/// after the last one.
platform::VideoFrame frameOf(const QImage& picture, Format format, std::size_t gap) {
    const auto width = static_cast<std::size_t>(picture.width());
    std::size_t used = width;
    if (format == Format::rgb24) {
        used = 3 * width;
    } else if (format == Format::rgbx32 || format == Format::bgrx32) {
        used = 4 * width;
    } else if (format == Format::yuyv || format == Format::uyvy) {
        used = (width + 1) / 2 * 4;
    }
    const std::size_t stride = used + gap;
    const auto height = static_cast<std::size_t>(picture.height());
    const auto bytes = std::make_shared<std::vector<std::uint8_t>>(stride * (height - 1) + used, 0x5A);
    for (std::size_t y = 0; y < height; ++y) {
        const uchar* const from = picture.constScanLine(static_cast<int>(y));
        std::uint8_t* const to = bytes->data() + y * stride;
        for (std::size_t x = 0; x < width; ++x) {
            switch (format) {
                case Format::rgb24:
                    std::memset(to + 3 * x, from[x], 3);
                    break;
                case Format::rgbx32:
                case Format::bgrx32:
                    std::memset(to + 4 * x, from[x], 3);
                    break;
                case Format::yuyv:
                    to[2 * x] = from[x];
                    break;
                case Format::uyvy:
                    to[2 * x + 1] = from[x];
                    break;
                default:
                    to[x] = from[x];
            }
        }
    }
    platform::VideoFrame frame;
    frame.format = format;
    frame.width = picture.width();
    frame.height = picture.height();
    frame.planes[0] = {bytes->data(), stride};
    frame.owner = bytes;
    return frame;
}

const std::vector<Format> formats{Format::gray8, Format::rgb24,   Format::rgbx32, Format::bgrx32,
                                  Format::nv12,  Format::yuv420p, Format::yuyv,   Format::uyvy};

const std::vector<Barcode> expected{{BarcodeType::ean13, "5000213002834"}};

QImage ean(QSize size) {
    return placed(drawnCode(BarcodeType::ean13, "5000213002834"), 0, size);
}

class FrameFormats : public ::testing::TestWithParam<Format> {};

TEST_P(FrameFormats, OfAnySizeAndStrideAreRead) {
    for (const QSize size : {QSize(640, 480), QSize(641, 479), QSize(383, 131), QSize(1281, 721)}) {
        for (const std::size_t gap : {0U, 1U, 61U}) {
            EXPECT_EQ(readTwice(frameOf(ean(size), GetParam(), gap)), expected)
                << size.width() << "x" << size.height() << ", gap " << gap;
        }
    }
}

TEST_P(FrameFormats, AreReadInAnyOrientation) {
    for (const int rotation : {0, 90, 180, 270, -90, 450, 7}) {
        platform::VideoFrame frame = frameOf(ean({640, 480}), GetParam(), 3);
        frame.rotation = rotation;
        EXPECT_EQ(readTwice(frame), expected) << rotation;
    }
}

TEST_P(FrameFormats, WithoutPixelsOrWithTooShortRowsShowNothing) {
    const platform::VideoFrame whole = frameOf(ean({640, 480}), GetParam(), 0);
    std::vector<platform::VideoFrame> frames(7, whole);
    frames[0].width = 0;
    frames[1].height = 0;
    frames[2].width = -640;
    frames[3].height = -1;
    frames[4].planes[0].data = nullptr;
    frames[5].planes[0].bytesPerLine -= 1;
    frames[6].width = 2'000'000'000;

    for (const platform::VideoFrame& frame : frames) {
        EXPECT_EQ(readTwice(frame), std::vector<Barcode>());
    }
}

TEST_P(FrameFormats, OfFewPixelsShowNothing) {
    for (int width = 1; width <= 9; ++width) {
        for (int height = 1; height <= 9; ++height) {
            const QImage picture = noisy(placed(QImage(), 0, {width, height}), 90);
            EXPECT_EQ(readTwice(frameOf(picture, GetParam(), 2)), std::vector<Barcode>());
        }
    }
}

INSTANTIATE_TEST_SUITE_P(Each, FrameFormats, ::testing::ValuesIn(formats),
                         [](const auto& tested) { return std::to_string(static_cast<int>(tested.param)); });

TEST(BrightnessOfColours, IsThatOfTheEye) {
    // Red bars on cyan are seen, for which each channel has to be where it belongs.
    const QImage code = ean({640, 480});
    const platform::VideoFrame gray = frameOf(code, Format::rgb24, 0);
    const auto coloured = std::make_shared<std::vector<std::uint8_t>>(640 * 480 * 3);
    for (std::size_t i = 0; i < coloured->size(); ++i) {
        const bool isBar = gray.planes[0].data[i] < 128;
        (*coloured)[i] = isBar == (i % 3 == 0) ? 200 : 0;
    }
    platform::VideoFrame frame = gray;
    frame.planes[0].data = coloured->data();
    frame.owner = coloured;

    EXPECT_EQ(readTwice(frame), expected);
}

/// A code in one corner of the upright picture.
class AimedFrames : public ::testing::TestWithParam<int> {
protected:
    /// The corner is the upper left one when the frame is turned upright.
    static platform::VideoFrame frame() {
        QImage upright = placed(drawnCode(BarcodeType::qr, "corner"), 0, {800, 600}, {-230, -140});
        QImage stored = upright.transformed(QTransform().rotate(-GetParam()));
        platform::VideoFrame frame = grayFrame(stored);
        frame.rotation = GetParam();
        return frame;
    }
    const std::vector<Barcode> corner{{BarcodeType::qr, "corner"}};
};

TEST_P(AimedFrames, ShowWhatIsAimedAtAndNothingElse) {
    EXPECT_EQ(readTwice(frame(), allBarcodeTypes(), Area{0, 0, 0.5, 0.5}), corner);
    EXPECT_EQ(readTwice(frame(), allBarcodeTypes(), Area{0.6, 0, 0.4, 0.5}), std::vector<Barcode>());
    EXPECT_EQ(readTwice(frame(), allBarcodeTypes(), Area{0, 0.6, 0.5, 0.4}), std::vector<Barcode>());
    EXPECT_EQ(readTwice(frame(), allBarcodeTypes(), Area{0.6, 0.6, 0.4, 0.4}), std::vector<Barcode>());
    EXPECT_EQ(readTwice(frame(), allBarcodeTypes()), corner);
}

TEST_P(AimedFrames, ShowACodeThatFillsTheAim) {
    // The code's modules begin at 89 of 800 and 79 of 600 pixels and end at 251 and 241.
    EXPECT_EQ(readTwice(frame(), allBarcodeTypes(), Area{0.135, 0.163, 0.155, 0.207}), corner);
}

TEST_P(AimedFrames, ShowNothingToAnAimBesideThemOrToNone) {
    const double infinite = std::numeric_limits<double>::infinity();
    const double none = std::numeric_limits<double>::quiet_NaN();
    for (const Area& aim : {Area{2, 2, 1, 1}, Area{-3, 0, 1, 1}, Area{0, 0, 0, 0.5}, Area{0, 0, 0.5, -1},
                            Area{none, 0, 1, 1}, Area{0, 0, infinite, 1}, Area{0, 0, 1, none}}) {
        EXPECT_EQ(readTwice(frame(), allBarcodeTypes(), aim), std::vector<Barcode>());
    }
}

TEST_P(AimedFrames, ShowAllToAnAimLargerThanThey) {
    EXPECT_EQ(readTwice(frame(), allBarcodeTypes(), Area{-1, -1, 3, 3}), corner);
}

INSTANTIATE_TEST_SUITE_P(TurnedBy, AimedFrames, ::testing::Values(0, 90, 180, 270),
                         [](const auto& tested) { return std::to_string(tested.param); });

} // namespace
} // namespace quorvane
