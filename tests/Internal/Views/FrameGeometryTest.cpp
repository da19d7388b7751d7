#include <gtest/gtest.h>

#include "Internal/Views/FrameGeometry.h"
#include "testing/SimulatedCamera.h"

namespace quorvane::capture {
namespace {

using Area = platform::BarcodeReader::Area;

void expectArea(const std::optional<Area>& area, double x, double y, double width, double height) {
    ASSERT_TRUE(area.has_value());
    EXPECT_DOUBLE_EQ(area->x, x);
    EXPECT_DOUBLE_EQ(area->y, y);
    EXPECT_DOUBLE_EQ(area->width, width);
    EXPECT_DOUBLE_EQ(area->height, height);
}

TEST(FrameGeometryTest, AFrameThatLiesOnItsSideStandsUprightWithItsLengthsExchanged) {
    platform::VideoFrame frame = testing::plainFrame(40, 30, 0);
    EXPECT_EQ(uprightSize(frame), QSizeF(40, 30));
    frame.rotation = 180;
    EXPECT_EQ(uprightSize(frame), QSizeF(40, 30));
    frame.rotation = 90;
    EXPECT_EQ(uprightSize(frame), QSizeF(30, 40));
    frame.rotation = 270;
    EXPECT_EQ(uprightSize(frame), QSizeF(30, 40));
}

TEST(FrameGeometryTest, AWidePictureLosesBothSidesInATallView) {
    EXPECT_EQ(visiblePart({400, 200}, {100, 100}), QRectF(100, 0, 200, 200));
}

TEST(FrameGeometryTest, ATallPictureLosesTopAndBottomInAWideView) {
    EXPECT_EQ(visiblePart({200, 400}, {200, 100}), QRectF(0, 150, 200, 100));
}

TEST(FrameGeometryTest, APictureOfTheViewsShapeIsSeenWhole) {
    EXPECT_EQ(visiblePart({640, 360}, {1280, 720}), QRectF(0, 0, 640, 360));
}

TEST(FrameGeometryTest, NothingIsSeenOfNothingOrInNothing) {
    EXPECT_TRUE(visiblePart({0, 10}, {100, 100}).isEmpty());
    EXPECT_TRUE(visiblePart({10, 10}, {100, 0}).isEmpty());
    EXPECT_FALSE(areaSeenIn({0, 0, 10, 10}, {100, 100}, {0, 0}).has_value());
    EXPECT_FALSE(areaSeenIn({0, 0, 10, 10}, {0, 100}, {10, 10}).has_value());
}

TEST(FrameGeometryTest, WhatIsSeenInAPartOfTheViewIsToldInShareOfTheWholePicture) {
    // Of the picture, the middle half of its width is seen; the part is the middle half of the view.
    expectArea(areaSeenIn({25, 25, 50, 50}, {100, 100}, {400, 200}), 0.375, 0.25, 0.25, 0.5);
}

TEST(FrameGeometryTest, APartThatReachesBeyondTheViewIsCutToIt) {
    expectArea(areaSeenIn({-50, 50, 100, 100}, {100, 100}, {100, 100}), 0, 0.5, 0.5, 0.5);
    EXPECT_FALSE(areaSeenIn({200, 0, 100, 100}, {100, 100}, {100, 100}).has_value());
}

} // namespace
} // namespace quorvane::capture
