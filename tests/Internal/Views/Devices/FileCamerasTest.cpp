#include <QPainter>
#include <algorithm>
#include <cstdlib>

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
    for (const QSize size : {QSize(400, 100), QSize(100, 400), QSize(3, 3), QSize(3000, 2400)}) {
        // Black, with a white edge.
        QImage picture(size, QImage::Format_RGB32);
        picture.fill(Qt::white);
        const int edge = 1 + size.width() / 500;
        QPainter(&picture).fillRect(picture.rect().adjusted(edge, edge, -edge, -edge), Qt::black);
        ASSERT_TRUE(picture.save(QString::fromStdString(pathOf("black.png"))));
        const auto camera = cameraOf(pathOf("black.png"), {true, {}});
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
        EXPECT_LE(std::abs(dark.center().x() - frame.width() / 2), 1);
        EXPECT_LE(std::abs(dark.center().y() - frame.height() / 2), 1);
        EXPECT_LE(std::max(dark.width(), dark.height()), frame.width() * 3 / 4);
        EXPECT_LE(std::abs(dark.width() * size.height() - dark.height() * size.width()),
                  size.width() * size.height() / 50);
    }
    EXPECT_TRUE(heldUp({}, Qt::white).isNull());
}

TEST_F(FileCamerasTest, APictureThatIsHeldUpGoesOnIntoItsOwnPaper) {
    EXPECT_TRUE(heldUp(QImage(1, 1, QImage::Format_RGB32), Qt::white).valid(0, 0));
    QImage picture(100, 60, QImage::Format_RGB32);
    picture.fill(QColor(90, 80, 70));
    // Dark bars reach the edge.
    QPainter painter(&picture);
    for (int x = 0; x < 100; x += 5) {
        painter.fillRect(x, 0, 2, 60, QColor(10, 10, 10));
    }
    painter.end();
    EXPECT_EQ(heldUp(picture, paperOf(picture)).pixelColor(0, 0), QColor(90, 80, 70));
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
