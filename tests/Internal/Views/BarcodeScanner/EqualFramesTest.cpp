#include <gtest/gtest.h>

#include "Internal/Views/BarcodeScanner/BarcodeTesting.h"

namespace quorvane {
namespace {

using namespace quorvane::testing;

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

TEST_F(EqualFrames, ACodeThatOnlyACopyShowsIsReportedInTheFrameAfterTheOneThatShowsIt) {
    QImage inverted = drawnCode(BarcodeType::aztec, "inverted");
    inverted.invertPixels();
    const QImage picture = placed(inverted, 0, {320, 240});

    EXPECT_EQ(show(picture), none);
    EXPECT_EQ(show(picture), (std::vector<Barcode>{{BarcodeType::aztec, "inverted"}}));
}

} // namespace
} // namespace quorvane
