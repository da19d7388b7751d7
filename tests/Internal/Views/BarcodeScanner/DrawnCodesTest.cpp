#include <gtest/gtest.h>

#include "Internal/Views/BarcodeScanner/BarcodeTesting.h"

namespace quorvane {
namespace {

using namespace quorvane::testing;

class DrawnCodes : public ::testing::TestWithParam<Sample> {
protected:
    [[nodiscard]] static std::vector<Barcode> expected() { return {{GetParam().type, GetParam().text}}; }
    [[nodiscard]] static QImage code(int module = 3) { return drawnCode(GetParam().type, GetParam().text, module); }
};

TEST_P(DrawnCodes, AreReadInTwoFrames) {
    EXPECT_EQ(readTwice(placed(code(), 0)), expected());
}

TEST_P(DrawnCodes, AreReadUpsideDown) {
    EXPECT_EQ(readTwice(placed(code(), 180)), expected());
}

TEST_P(DrawnCodes, AreReadWithModulesOfTwoPixels) {
    EXPECT_EQ(readTwice(placed(code(2), 0)), expected());
}

TEST_P(DrawnCodes, AreReadInANoisyPicture) {
    EXPECT_EQ(readTwice(noisy(placed(code(), 0), 12)), expected());
}

TEST_P(DrawnCodes, AreReadWithLittleContrastBeforeAllCopiesHadTheirTurn) {
    QImage faint = placed(code(), 0);
    for (int y = 0; y < faint.height(); ++y) {
        for (int x = 0; x < faint.width(); ++x) {
            faint.scanLine(y)[x] = static_cast<uchar>(90 + faint.constScanLine(y)[x] / 6);
        }
    }

    EXPECT_EQ(readWithin(20, faint), expected());
}

TEST_P(DrawnCodes, AreReadInvertedBeforeAllCopiesHadTheirTurn) {
    QImage inverted = code();
    inverted.invertPixels();

    EXPECT_EQ(readWithin(5, placed(inverted, 0, {900, 560})), expected());
}

TEST_P(DrawnCodes, AreReadFarFromTheMiddleBeforeAllCopiesHadTheirTurn) {
    EXPECT_EQ(readWithin(40, placed(code(2), 0, {1280, 720}, {-305, 190})), expected());
}

TEST_P(DrawnCodes, AreNotReportedWhenOtherTypesAreAskedFor) {
    std::vector<BarcodeType> others;
    for (const BarcodeType type : allBarcodeTypes()) {
        const bool isSame = type == GetParam().type;
        const bool isPlainForm = (type == BarcodeType::code39 && GetParam().type == BarcodeType::code39Mod43) ||
                                 (type == BarcodeType::interleaved2of5 && GetParam().type == BarcodeType::itf14);
        if (!isSame && !isPlainForm) {
            others.push_back(type);
        }
    }

    EXPECT_EQ(readWithin(30, placed(code(), 0, {640, 480}), others), std::vector<Barcode>());
}

TEST_P(DrawnCodes, AreReadWhenNothingElseIsAskedFor) {
    EXPECT_EQ(readTwice(placed(code(), 0), {GetParam().type}), expected());
}

INSTANTIATE_TEST_SUITE_P(OfEachType, DrawnCodes, ::testing::ValuesIn(sampleCodes()),
                         [](const auto& tested) { return std::to_string(static_cast<int>(tested.param.type)); });

} // namespace
} // namespace quorvane
