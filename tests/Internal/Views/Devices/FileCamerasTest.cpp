#include "Internal/Views/Devices/DeviceTest.h"
#include "Internal/Views/Devices/FileCameras.h"
#include "Internal/Views/Devices/HeldUp.h"
#include "Internal/Views/FrameImage.h"

namespace quorvane::capture {
namespace {

using namespace std::chrono_literals;

class FileCamerasTest : public DeviceTest {
protected:
    [[nodiscard]] static std::string errorOf(const std::string& path) {
        const auto opened = FileCameras::open(path);
        const auto* const error = std::get_if<platform::ImageError>(&opened);
        return error == nullptr ? "none" : error->message;
    }

    void start(platform::Camera& camera) {
        camera.start([this](const platform::VideoFrame& frame) { frames.push_back(imageOf(frame)); },
                     [this] { ++failures; });
    }

    std::vector<QImage> frames;
    int failures = 0;
};

TEST_F(FileCamerasTest, APictureIsSeenThirtyTimesASecond) {
    const auto camera = cameraOf(makePicture("red.png", {40, 30}, Qt::red));
    ASSERT_TRUE(camera->open());
    start(*camera);
    EXPECT_TRUE(frames.empty());
    world->runUntilIdle();
    EXPECT_EQ(frames.size(), 1U);
    world->advance(1s);
    EXPECT_EQ(frames.size(), 31U);
    EXPECT_EQ(frames.back().size(), QSize(40, 30));
    EXPECT_EQ(frames.back().pixelColor(39, 29), Qt::red);
    world->advance(1min);
    EXPECT_EQ(failures, 0);
}

TEST_F(FileCamerasTest, APictureIsTakenAwayWhenItsTimeIsOver) {
    const auto camera = cameraOf(makePicture("red.png", {40, 30}, Qt::red), {false, 2s});
    start(*camera);
    world->advance(2s - 1ns);
    EXPECT_EQ(failures, 0);
    world->advance(1ns);
    EXPECT_EQ(failures, 1);
    const std::size_t before = frames.size();
    world->advance(1min);
    EXPECT_EQ(failures, 1);
    EXPECT_EQ(frames.size(), before);
}

TEST_F(FileCamerasTest, ACameraThatWasStoppedIsNotTakenAway) {
    const auto camera = cameraOf(makePicture("red.png", {40, 30}, Qt::red), {false, 2s});
    start(*camera);
    world->advance(1s);
    camera->stop();
    world->advance(1min);
    EXPECT_EQ(failures, 0);
}

TEST_F(FileCamerasTest, ACameraMayGoInTheCallThatItBroke) {
    auto camera = cameraOf(makePicture("red.png", {40, 30}, Qt::red), {false, 2s});
    camera->start([](const auto&) {}, [&] { camera.reset(); });
    world->advance(1min);
    EXPECT_EQ(camera, nullptr);
}

TEST_F(FileCamerasTest, APhotoShowsThePicture) {
    const auto camera = cameraOf(makePicture("red.png", {40, 30}, Qt::red));
    EXPECT_FALSE(camera->hasFlash());
    std::shared_ptr<const platform::Image> photo;
    camera->takePhoto(true, [&](const auto& taken) { photo = taken; });
    world->runUntilIdle();
    ASSERT_NE(photo, nullptr);
    EXPECT_EQ(photo->width(), 40);
}

TEST_F(FileCamerasTest, APictureThatIsHeldUpLiesWholeWithinThreeQuartersOfAFramesWidth) {
    for (const QSize size : {QSize(400, 100), QSize(100, 400), QSize(1, 1), QSize(3000, 2400)}) {
        const auto camera = cameraOf(makePicture("black.png", size, Qt::black), {true, {}});
        frames.clear();
        start(*camera);
        world->runUntilIdle();
        ASSERT_EQ(frames.size(), 1U);
        const QImage& frame = frames.front();
        EXPECT_NEAR(frame.height(), frame.width() * 16.0 / 9, 1);
        EXPECT_LE(frame.width(), 2400);
        QRect dark;
        for (int y = 0; y < frame.height(); ++y) {
            for (int x = 0; x < frame.width(); ++x) {
                if (qGray(frame.pixel(x, y)) < 128) {
                    dark |= QRect(x, y, 1, 1);
                }
            }
        }
        EXPECT_NEAR(dark.center().x(), frame.width() / 2, 1);
        EXPECT_NEAR(dark.center().y(), frame.height() / 2, 1);
        EXPECT_LE(std::max(dark.width(), dark.height()), frame.width() * 3 / 4);
        EXPECT_NEAR(dark.width() * size.height(), dark.height() * size.width(), size.width() * size.height() / 100);
    }
    EXPECT_TRUE(heldUp({}).isNull());
}

TEST_F(FileCamerasTest, WhatCannotBeReadIsRefusedInASentence) {
    EXPECT_EQ(errorOf(pathOf("missing.png")), pathOf("missing.png") + ": No such file or directory");
    EXPECT_EQ(errorOf(makeFile("empty.png", "")), pathOf("empty.png") + ": the picture is empty");
    EXPECT_NE(errorOf(folder.path().toStdString()), "none");
}

TEST_F(FileCamerasTest, APictureThatIsCutOffIsRefused) {
    std::ifstream whole(makePicture("whole.png", {40, 30}, Qt::red), std::ios::binary);
    std::string bytes((std::istreambuf_iterator<char>(whole)), std::istreambuf_iterator<char>());
    bytes.resize(bytes.size() / 2);
    EXPECT_EQ(errorOf(makeFile("cut.png", bytes)), pathOf("cut.png") + ": the picture is cut off before its end");
}

} // namespace
} // namespace quorvane::capture
