#include "Internal/Views/CameraOverlay/OverlayTest.h"
#include "tools/Shutter.h"

namespace quorvane::tool {
namespace {

using namespace std::chrono_literals;

class ShutterTest : public capture::OverlayTest {
protected:
    void see() {
        cameras->camera->show(testing::plainFrame(64, 48, 128));
        settle();
    }

    [[nodiscard]] std::size_t photos() const { return cameras->camera->photosWithFlash().size(); }
};

TEST_F(ShutterTest, IsPressedOnceTheCameraShowsSomething) {
    show();
    Shutter shutter(*picker, world->clock(), false, nullptr);
    EXPECT_FALSE(shutter.press());
    EXPECT_EQ(photos(), 0U);

    see();

    EXPECT_TRUE(shutter.press());
    EXPECT_EQ(photos(), 1U);
}

TEST_F(ShutterTest, IsBlindWhereTheCameraOpensAndShowsNothingForTenSeconds) {
    show();
    const Shutter shutter(*picker, world->clock(), false, nullptr);

    advance(Shutter::patience - 1ns);
    EXPECT_FALSE(shutter.isBlind());
    advance(1ns);
    EXPECT_TRUE(shutter.isBlind());

    see();
    EXPECT_FALSE(shutter.isBlind());
}

TEST_F(ShutterTest, IsPressedAfterHalfASecondOfLevel) {
    options.photoLevelType = LevelType::flat;
    show();
    see();
    Shutter shutter(*picker, world->clock(), true, accelerometer.get());
    hold(0, 0);

    EXPECT_FALSE(shutter.press());
    advance(Shutter::steadyTime - 1ns);
    EXPECT_FALSE(shutter.press());
    advance(1ns);
    EXPECT_TRUE(shutter.press());
}

} // namespace
} // namespace quorvane::tool
