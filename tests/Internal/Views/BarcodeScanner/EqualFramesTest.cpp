#include <gtest/gtest.h>

#include "Internal/Views/BarcodeScanner/BarcodeTesting.h"
#include "Internal/Views/BarcodeScanner/CodeSearch.h"
#include "Internal/Views/BarcodeScanner/FrameBrightness.h"

namespace quorvane {
namespace {

using namespace quorvane::testing;
using capture::CodeSearch;
using capture::GrayPicture;
using capture::takeBrightness;

class EqualFrames : public ::testing::Test {
protected:
    std::vector<Barcode> show(const QImage& picture) { return reader->read(grayFrame(picture), std::nullopt); }

    const QImage one = placed(drawnCode(BarcodeType::qr, "one"), 0, {640, 480});
    const QImage two = placed(drawnCode(BarcodeType::qr, "two"), 0, {640, 480});
    const QImage oneAsAztec = placed(drawnCode(BarcodeType::aztec, "one"), 0, {640, 480});
    const QImage nothing = placed(QImage(), 0, {640, 480});
    const std::vector<Barcode> none{};
    const std::vector<Barcode> readOne{{BarcodeType::qr, "one"}};
    const std::vector<Barcode> readTwo{{BarcodeType::qr, "two"}};
    std::unique_ptr<platform::BarcodeReader> reader = barcodeReader(allBarcodeTypes());
};

TEST_F(EqualFrames, ACodeIsReportedFromTheSecondFrameThatShowsItOn) {
    EXPECT_EQ(show(one), none);
    EXPECT_EQ(show(one), readOne);
    EXPECT_EQ(show(one), readOne);
}

TEST_F(EqualFrames, AnotherCodeStartsAnew) {
    EXPECT_EQ(show(one), none);
    EXPECT_EQ(show(two), none);
    EXPECT_EQ(show(one), none);
    EXPECT_EQ(show(two), none);
    EXPECT_EQ(show(two), readTwo);
}

TEST_F(EqualFrames, AFrameWithoutTheCodeStartsAnew) {
    EXPECT_EQ(show(one), none);
    EXPECT_EQ(show(nothing), none);
    EXPECT_EQ(show(one), none);
    EXPECT_EQ(show(one), readOne);
}

TEST_F(EqualFrames, AnEmptyFrameStartsAnew) {
    EXPECT_EQ(show(one), none);
    EXPECT_EQ(reader->read({}, std::nullopt), none);
    EXPECT_EQ(show(one), none);
}

TEST_F(EqualFrames, TheSameTextInACodeOfAnotherTypeIsAnotherCode) {
    EXPECT_EQ(show(one), none);
    EXPECT_EQ(show(oneAsAztec), none);
}

TEST_F(EqualFrames, TheCodeMayMoveAndTurn) {
    const QImage code = drawnCode(BarcodeType::qr, "one");

    EXPECT_EQ(show(placed(code, 0, {640, 480})), none);
    EXPECT_EQ(show(placed(code, 50, {640, 480}, {90, -60})), readOne);
}

TEST_F(EqualFrames, OfTwoCodesTheOneThatStaysIsReported) {
    QImage both = placed(drawnCode(BarcodeType::qr, "one"), 0, {640, 480}, {-150, 0});
    const QImage right = placed(drawnCode(BarcodeType::qr, "two"), 0, {640, 480}, {150, 0});
    for (int y = 0; y < both.height(); ++y) {
        std::copy(right.constScanLine(y) + 320, right.constScanLine(y) + 640, both.scanLine(y) + 320);
    }

    EXPECT_EQ(show(both), none);
    EXPECT_EQ(show(two), readTwo);
}

TEST_F(EqualFrames, TwoReadersDoNotKnowOfEachOther) {
    const auto other = barcodeReader(allBarcodeTypes());

    EXPECT_EQ(show(one), none);
    EXPECT_EQ(other->read(grayFrame(one), std::nullopt), none);
    EXPECT_EQ(show(one), readOne);
}

/// A picture that no recogniser reads as it is.
struct Hard {
    const char* name;
    QImage picture;
};

QImage inverted(QImage code) {
    code.invertPixels();
    return code;
}

QImage resized(const QImage& code, double factor) {
    return code.scaled(code.size() * factor, Qt::IgnoreAspectRatio, Qt::SmoothTransformation);
}

/// For each way to look at a picture, a code that is seen in it.
std::vector<Hard> hardPictures() {
    constexpr QSize small{400, 300};
    const QImage ean = drawnCode(BarcodeType::ean13, "5000213002834");
    const QImage low = drawnCode(BarcodeType::ean13, "5000213002834", 3, 40);
    const QImage pdf = drawnCode(BarcodeType::pdf417, "rows", 2);
    const QImage aztec = drawnCode(BarcodeType::aztec, "rings");
    std::vector<Hard> all{
        {"inverted Aztec", placed(inverted(aztec), 0, small)},
        {"inverted QR", placed(inverted(drawnCode(BarcodeType::qr, "one")), 0, small)},
        {"inverted bars", placed(inverted(ean), 0, small)},
        {"inverted slanting bars", placed(inverted(ean), 30, small)},
        {"tiny QR", placed(resized(drawnCode(BarcodeType::qr, "tiny"), 0.45), 0, small)},
        {"tiny bars", placed(resized(ean, 0.4), 0, small)},
        {"a matrix aside", placed(drawnCode(BarcodeType::dataMatrix, "side"), 0, {640, 360}, {200, 0})},
        {"turned Aztec", placed(aztec, 20, {640, 360}, {120, 50})}};
    for (const int degrees : {15, 45, 75}) {
        all.push_back({"low bars that slant", placed(low, degrees, small)});
    }
    for (const int degrees : {15, 30, 45, 60, 75}) {
        all.push_back({"rows that slant", placed(pdf, degrees, small)});
    }
    return all;
}

TEST_F(EqualFrames, WhateverShowsACodeFirstIsLookedAtFirstInTheNextFrame) {
    constexpr int most = 25;
    int late = 0;
    for (const Hard& hard : hardPictures()) {
        SCOPED_TRACE(hard.name);
        // A search of its own tells in which frame the code is seen first.
        CodeSearch search(allBarcodeTypes());
        GrayPicture picture;
        takeBrightness(grayFrame(hard.picture), std::nullopt, picture);
        int seen = 1;
        while (seen < most && search.search(picture).empty()) {
            ++seen;
        }
        reader = barcodeReader(allBarcodeTypes());
        int reported = 1;
        while (reported < most && show(hard.picture).empty()) {
            ++reported;
        }

        EXPECT_LT(seen, most);
        EXPECT_EQ(reported, seen + 1);
        late += seen > 1 ? 1 : 0;
    }
    // Some of them not in the first.
    EXPECT_GE(late, 5);
}

} // namespace
} // namespace quorvane
