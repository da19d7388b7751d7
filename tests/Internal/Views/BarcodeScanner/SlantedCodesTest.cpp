#include <gtest/gtest.h>

#include "Internal/Views/BarcodeScanner/BarcodeTesting.h"

namespace quorvane {
namespace {

using namespace quorvane::testing;

/// Codes that stand at every ninth degree of a quarter turn.
class SlantedCodes : public ::testing::TestWithParam<Sample> {
protected:
    struct Outcome {
        int seen = 0;
        int atOnce = 0;
        std::vector<int> missed;
    };

    /// Expects that nothing is misread.
    static Outcome read(int module, int height, double deviation) {
        Outcome outcome;
        const std::vector<Barcode> expected{{GetParam().type, GetParam().text}};
        for (int degrees = 0; degrees <= 90; degrees += 9) {
            const QImage code = drawnCode(GetParam().type, GetParam().text, module, height);
            const QImage picture = noisy(placed(code, degrees, {600, 600}), deviation);
            std::vector<Barcode> found = readTwice(picture);
            outcome.atOnce += found.empty() ? 0 : 1;
            if (found.empty()) {
                found = readWithin(framesForAllCopies, picture);
            }
            if (found.empty()) {
                outcome.missed.push_back(degrees);
                continue;
            }
            EXPECT_EQ(found, expected) << "at " << degrees << " degrees";
            ++outcome.seen;
        }
        return outcome;
    }

    static constexpr int framesForAllCopies = 30;
};

constexpr int angles = 11;

TEST_P(SlantedCodes, AreReadAtAnyAngleOnceAllCopiesHadTheirTurn) {
    const Outcome outcome = read(3, 120, 0);

    EXPECT_GE(outcome.seen, angles - 1) << ::testing::PrintToString(outcome.missed);
}

TEST_P(SlantedCodes, OfEnoughHeightAreReadInTwoFramesAtMostAngles) {
    const bool isTurnedInTurn = GetParam().type == BarcodeType::pdf417 || GetParam().type == BarcodeType::dataMatrix;

    const Outcome outcome = read(3, 200, 0);

    EXPECT_GE(outcome.atOnce, isTurnedInTurn ? angles / 4 : angles - 2) << ::testing::PrintToString(outcome.missed);
}

TEST_P(SlantedCodes, AreNotMisreadInNoise) {
    const Outcome outcome = read(2, 60, 8);

    EXPECT_GE(outcome.seen, angles / 3) << ::testing::PrintToString(outcome.missed);
}

INSTANTIATE_TEST_SUITE_P(OfEachType, SlantedCodes, ::testing::ValuesIn(sampleCodes()),
                         [](const auto& tested) { return std::to_string(static_cast<int>(tested.param.type)); });

} // namespace
} // namespace quorvane
