#include <gtest/gtest.h>

#include "Internal/Views/BarcodeScanner/BarcodeTesting.h"
#include "Internal/Views/BarcodeScanner/Bullseye.h"
#include "Internal/Views/BarcodeScanner/FrameBrightness.h"

namespace quorvane::capture {
namespace {

using namespace quorvane::testing;

std::vector<Bullseye> bullseyes(const QImage& picture, std::size_t most = 9) {
    GrayPicture gray;
    takeBrightness(grayFrame(picture), std::nullopt, gray);
    return findBullseyes(gray, most);
}

TEST(Bullseyes, TheMiddleOfAnAztecCodeIsFoundAtAnyAngle) {
    const QImage code = drawnCode(BarcodeType::aztec, "An Aztec code", 4);
    for (int degrees = 0; degrees < 90; degrees += 9) {
        const auto found = bullseyes(placed(code, degrees, {640, 480}, {100, -50}));

        ASSERT_GE(found.size(), 1U) << degrees;
        EXPECT_NEAR(found[0].x, 420, 2 * found[0].module) << degrees;
        EXPECT_NEAR(found[0].y, 190, 2 * found[0].module) << degrees;
        EXPECT_GT(found[0].module, 3) << degrees;
        EXPECT_LT(found[0].module, 7) << degrees;
    }
}

TEST(Bullseyes, NoMoreAreNamedThanAskedFor) {
    QImage picture = placed(drawnCode(BarcodeType::aztec, "one", 4), 0, {640, 480}, {-150, 0});
    const QImage right = placed(drawnCode(BarcodeType::aztec, "two", 4), 0, {640, 480}, {150, 0});
    for (int y = 0; y < picture.height(); ++y) {
        std::copy(right.constScanLine(y) + 320, right.constScanLine(y) + 640, picture.scanLine(y) + 320);
    }

    EXPECT_EQ(bullseyes(picture).size(), 2U);
    EXPECT_EQ(bullseyes(picture, 1).size(), 1U);
}

TEST(Bullseyes, APlainPictureAndALineOfPixelsHaveNone) {
    EXPECT_TRUE(bullseyes(placed(QImage(), 0)).empty());
    EXPECT_TRUE(bullseyes(placed(QImage(), 0, {300, 1})).empty());
    EXPECT_TRUE(bullseyes(placed(QImage(), 0, {1, 300})).empty());
}

} // namespace
} // namespace quorvane::capture
