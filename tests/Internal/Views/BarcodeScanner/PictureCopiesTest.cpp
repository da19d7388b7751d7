#include <gtest/gtest.h>

#include "Internal/Views/BarcodeScanner/PictureCopies.h"

namespace quorvane::capture {
namespace {

using Pixels = std::vector<std::uint8_t>;

GrayPicture picture(int width, int height, Pixels pixels) {
    GrayPicture made;
    made.resize(width, height);
    made.pixels = std::move(pixels);
    return made;
}

/// Brighter to the right by 2 a pixel and downwards by 1.
GrayPicture slope(int width, int height) {
    GrayPicture made;
    made.resize(width, height);
    for (int y = 0; y < height; ++y) {
        for (int x = 0; x < width; ++x) {
            made.row(y)[x] = static_cast<std::uint8_t>(2 * x + y);
        }
    }
    return made;
}

/// Each pixel of the copy that shows a point of the slope is as bright as that point.
void expectInPlace(const GrayPicture& copy, const GrayPicture& original, double tolerance, int edge = 1) {
    int compared = 0;
    for (int row = 0; row < copy.height; ++row) {
        for (int column = 0; column < copy.width; ++column) {
            const double x = copy.placement.x(column, row);
            const double y = copy.placement.y(column, row);
            if (x >= edge && y >= edge && x <= original.width - 1 - edge && y <= original.height - 1 - edge) {
                ASSERT_NEAR(copy.row(row)[column], 2 * x + y, tolerance) << column << ", " << row;
                ++compared;
            }
        }
    }
    EXPECT_GT(compared, static_cast<int>(copy.count() / 4));
}

TEST(PictureCopies, SayWhereTheirPixelsAre) {
    const GrayPicture original = slope(60, 50);
    GrayPicture copy;

    ASSERT_TRUE(makeReduced(original, 3, copy));
    expectInPlace(copy, original, 1);
    makeScaled(original, 1.5, copy);
    expectInPlace(copy, original, 1);
    makeWindow(original, 30, 20, 40, 2, 50, copy);
    expectInPlace(copy, original, 1);
    makeBordered(original, 5, copy);
    expectInPlace(copy, original, 0);
    makeCropped(original, 10, 5, 30, 40, copy);
    expectInPlace(copy, original, 0);
    makeSmoothRows(original, 5, copy);
    expectInPlace(copy, original, 1);
    for (const double degrees : {0.0, 30.0, 60.0, 90.0, 120.0, 150.0}) {
        makeTurned(original, degrees, 25, 1.5, copy);
        EXPECT_LE(copy.height, 25);
        expectInPlace(copy, original, 1);
    }
}

TEST(PictureCopies, OfCopiesSayWhereTheyAreInTheFirst) {
    const GrayPicture original = slope(60, 50);
    GrayPicture part;
    GrayPicture larger;
    GrayPicture turned;

    makeCropped(original, 4, 4, 52, 42, part);
    makeScaled(part, 2, larger);
    makeTurned(larger, 30, 40, 1, turned);

    expectInPlace(turned, original, 1, 6);
}

TEST(PictureCopies, ThatAreTurnedGoOnBeyondTheBorderAsTheyEndedThere) {
    GrayPicture copy;
    makeTurned(picture(3, 3, Pixels(9, 70)), 45, 5, 1, copy);

    EXPECT_EQ(copy.width, 5);
    EXPECT_EQ(copy.row(2)[0], 70);
    EXPECT_EQ(copy.row(2)[4], 70);
}

TEST(PictureCopies, ReducedToNothingAreNone) {
    GrayPicture copy;

    EXPECT_FALSE(makeReduced(slope(1, 50), 2, copy));
    EXPECT_FALSE(makeReduced(slope(50, 2), 3, copy));
}

TEST(PictureCopies, InvertedAndSharperKeepTheSize) {
    GrayPicture copy;
    makeInverted(picture(3, 1, {0, 100, 255}), copy);
    EXPECT_EQ(copy.pixels, (Pixels{255, 155, 0}));

    makeSharper(picture(4, 1, {100, 100, 130, 130}), copy);
    EXPECT_EQ(copy.pixels, (Pixels{100, 90, 140, 130}));
}

TEST(PictureCopies, ABorderIsAsBrightAsTheBrightestOfTheEdges) {
    GrayPicture copy;
    makeBordered(picture(2, 1, {10, 90}), 1, copy);

    EXPECT_EQ(copy.pixels, (Pixels{90, 90, 90, 90, 90, 10, 90, 90, 90, 90, 90, 90}));
}

} // namespace
} // namespace quorvane::capture
