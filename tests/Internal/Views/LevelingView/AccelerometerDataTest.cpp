#include <cmath>

#include <gtest/gtest.h>

#include "Internal/Views/LevelingView/AccelerometerData.h"

namespace quorvane::capture {
namespace {

AccelerometerData reading(double x, double y, ReticleType reticle = ReticleType::middle) {
    AccelerometerData data;
    data.x = x;
    data.y = y;
    data.reticleType = reticle;
    return data;
}

constexpr BubbleSurroundings square{.width = 200, .height = 200, .bubbleWidth = 40, .bubbleHeight = 30, .scale = 1};

BubblePosition positionAt(double scale, double x, double y) {
    BubbleSurroundings surroundings = square;
    surroundings.scale = scale;
    return bubblePosition(reading(x, y), surroundings);
}

TEST(AccelerometerDataTest, BeginsAtZeroWithAFactorOfNineTenths) {
    const AccelerometerData data;

    EXPECT_EQ(data.x, 0);
    EXPECT_EQ(data.y, 0);
    EXPECT_EQ(data.k, 0.9);
}

TEST(AccelerometerDataTest, ReticlesAreNumberedFromTheTop) {
    EXPECT_EQ(static_cast<int>(ReticleType::top), 0);
    EXPECT_EQ(static_cast<int>(ReticleType::middle), 1);
}

TEST(AccelerometerDataTest, ASampleCountsByOneTenthAndTheReadingBeforeByNine) {
    AccelerometerData data = reading(1, -0.5);

    data.filter(0.5, 0.25);

    EXPECT_DOUBLE_EQ(data.x, 0.95);
    EXPECT_DOUBLE_EQ(data.y, -0.425);
}

TEST(AccelerometerDataTest, AConstantAccelerationIsApproachedByPowersOfTheFactor) {
    AccelerometerData data;

    for (int sample = 1; sample <= 20; ++sample) {
        data.filter(1, -1);

        EXPECT_NEAR(data.x, 1 - std::pow(0.9, sample), 1e-12);
        EXPECT_NEAR(data.y, std::pow(0.9, sample) - 1, 1e-12);
    }
}

TEST(AccelerometerDataTest, UprightIsLevelOnTheTopReticleFromTheNineteenthSampleOn) {
    AccelerometerData data = reading(0, 0, ReticleType::top);
    int samples = 0;

    while (!data.isWithinThreshold() && samples < 100) {
        data.filter(0, -1);
        ++samples;
    }

    // 0.9 to the 18th is 0.1501, to the 19th 0.1351.
    EXPECT_EQ(samples, 19);
}

TEST(AccelerometerDataTest, FlatIsTheTargetOfTheMiddleReticleAndUprightThatOfTheTopOne) {
    EXPECT_EQ(reading(0, 0, ReticleType::middle).distance(), 0);
    EXPECT_EQ(reading(0, -1, ReticleType::middle).distance(), 1);
    EXPECT_EQ(reading(0, 0, ReticleType::top).distance(), 1);
    EXPECT_EQ(reading(0, -1, ReticleType::top).distance(), 0);
    EXPECT_EQ(reading(0, 1, ReticleType::top).distance(), 2);
    EXPECT_DOUBLE_EQ(reading(0.3, -1.4, ReticleType::top).distance(), 0.5);
}

TEST(AccelerometerDataTest, ADistanceOfExactlyTheThresholdIsNotLevel) {
    ASSERT_EQ(reading(0.15, 0).distance(), 0.15);

    EXPECT_FALSE(reading(0.15, 0).isWithinThreshold());
    EXPECT_FALSE(reading(0, -0.15).isWithinThreshold());
    EXPECT_FALSE(reading(-0.15, -1, ReticleType::top).isWithinThreshold());
    EXPECT_TRUE(reading(std::nextafter(0.15, 0), 0).isWithinThreshold());
    EXPECT_FALSE(reading(std::nextafter(0.15, 1), 0).isWithinThreshold());
}

TEST(AccelerometerDataTest, TheThresholdIsACircleAndNoSquare) {
    EXPECT_TRUE(reading(0.1, 0.1).isWithinThreshold());
    EXPECT_FALSE(reading(0.11, 0.11).isWithinThreshold());
}

TEST(BubblePositionTest, AtRestTheBubbleIsCentred) {
    const BubblePosition position = positionAt(1, 0, 0);

    EXPECT_EQ(position.x, 80);
    EXPECT_EQ(position.y, 85);
}

TEST(BubblePositionTest, APositiveXMovesItLeftAndAPositiveYDown) {
    const BubblePosition position = positionAt(1, 0.5, 0.25);

    EXPECT_EQ(position.x, 80 - 50);
    EXPECT_EQ(position.y, 85 + 25);
}

TEST(BubblePositionTest, ANegativeXMovesItRightAndANegativeYUp) {
    const BubblePosition position = positionAt(1, -0.5, -0.25);

    EXPECT_EQ(position.x, 80 + 50);
    EXPECT_EQ(position.y, 85 - 25);
}

TEST(BubblePositionTest, UprightItsCentreIsAtTheTopEdge) {
    EXPECT_EQ(positionAt(1, 0, -1).y, -15);
}

TEST(BubblePositionTest, ItMovesByWholePixelsTruncatedTowardsTheCentreOnEitherSide) {
    // 0.0199 of 100 points: 1.99 points.
    EXPECT_EQ(positionAt(1, 0.0199, 0.0199).x, 80 - 1);
    EXPECT_EQ(positionAt(1, -0.0199, -0.0199).x, 80 + 1);
    EXPECT_EQ(positionAt(1, 0.0199, 0.0199).y, 85 + 1);
    EXPECT_EQ(positionAt(1, -0.0199, -0.0199).y, 85 - 1);
}

TEST(BubblePositionTest, APixelIsAPartOfAPointOnADenserScreen) {
    // 1.99 points are 3 whole pixels at a ratio of 2, 5 at 3 and 2 at 1.25.
    EXPECT_EQ(positionAt(2, -0.0199, 0).x, 80 + 1.5);
    EXPECT_DOUBLE_EQ(positionAt(3, -0.0199, 0).x, 80 + 5.0 / 3);
    EXPECT_DOUBLE_EQ(positionAt(1.25, -0.0199, 0).x, 80 + 2 / 1.25);
    EXPECT_EQ(positionAt(2, 0, -0.0199).y, 85 - 1.5);
    EXPECT_DOUBLE_EQ(positionAt(3, 0, -0.0199).y, 85 - 5.0 / 3);
}

TEST(BubblePositionTest, AtAnyRatioItsMoveIsAWholeNumberOfPixels) {
    for (const double scale : {1.0, 1.25, 1.5, 2.0, 2.625, 3.0, 4.0}) {
        for (double tilt = -1; tilt <= 1; tilt += 0.0137) {
            const double pixels = (80 - positionAt(scale, tilt, 0).x) * scale;

            EXPECT_NEAR(pixels, std::round(pixels), 1e-9) << scale << " " << tilt;
            EXPECT_LE(std::abs(pixels), std::abs(tilt * 100 * scale) + 1e-9) << scale << " " << tilt;
            EXPECT_GT(std::abs(pixels) + 1, std::abs(tilt * 100 * scale) - 1e-9) << scale << " " << tilt;
        }
    }
}

TEST(BubblePositionTest, EachDirectionIsScaledByItsOwnLength) {
    const BubblePosition position = bubblePosition(
        reading(0.5, 0.5), {.width = 100, .height = 300, .bubbleWidth = 10, .bubbleHeight = 20, .scale = 1});

    EXPECT_EQ(position.x, 50 - 25 - 5);
    EXPECT_EQ(position.y, 150 + 75 - 10);
}

} // namespace
} // namespace quorvane::capture
