#include <QProcess>
#include <mutex>

#include "Internal/Views/Devices/DeviceTest.h"
#include "Internal/Views/Devices/VideoCamera.h"
#include "Internal/Views/FrameImage.h"

namespace quorvane::capture {
namespace {

using namespace std::chrono_literals;

class VideoCameraTest : public DeviceTest {
protected:
    /// Five frames of red, of a fifth of a second.
    [[nodiscard]] std::string makeVideo(const std::string& name, const QStringList& more = {}) const {
        QProcess::execute("ffmpeg", QStringList{"-loglevel", "error", "-f", "lavfi", "-i",
                                                "color=red:size=64x48:rate=25", "-t", "0.2"} +
                                        more + QStringList{QString::fromStdString(pathOf(name))});
        return pathOf(name);
    }

    void start(platform::Camera& camera) {
        camera.start(
            [this](const platform::VideoFrame& frame) {
                const std::lock_guard lock(mutex);
                ++frames;
                seen = imageOf(frame);
            },
            [this] { ++failures; });
    }

    [[nodiscard]] int frameCount() {
        const std::lock_guard lock(mutex);
        return frames;
    }
    [[nodiscard]] QColor color() {
        const std::lock_guard lock(mutex);
        return seen.isNull() ? QColor() : seen.pixelColor(seen.width() / 2, seen.height() / 2);
    }

    std::mutex mutex;
    int frames = 0;
    QImage seen;
    int failures = 0;
};

TEST_F(VideoCameraTest, AVideoIsSeenAndAfterItsEndItsLastFrameIsAndThenItIsTakenAway) {
    const auto camera = cameraOf(makeVideo("red.avi"), {false, 2s});
    ASSERT_TRUE(camera->open());
    start(*camera);
    ASSERT_TRUE(waitFor([&] { return frameCount() >= 1; }));
    EXPECT_GT(color().red(), 200);
    EXPECT_LT(color().green(), 60);
    // After the end frames come with the virtual clock, and so does its end.
    ASSERT_TRUE(waitFor([&] {
        world->advance(34ms);
        return failures > 0;
    }));
    EXPECT_EQ(failures, 1);
    EXPECT_GE(frameCount(), 55);
    EXPECT_EQ(cameras->problem(), "");
    EXPECT_GT(color().red(), 200);
}

TEST_F(VideoCameraTest, AStopEndsItAtAnyTime) {
    const auto camera = cameraOf(makeVideo("red.avi"), {false, 2s});
    start(*camera);
    ASSERT_TRUE(waitFor([&] { return frameCount() >= 1; }));
    camera->stop();
    const int before = frameCount();
    world->advance(10s);
    QCoreApplication::processEvents();
    EXPECT_EQ(frameCount(), before);
    EXPECT_EQ(failures, 0);
}

TEST_F(VideoCameraTest, APhotoShowsTheLastFrameAndThereIsNoneBeforeTheFirst) {
    const auto camera = cameraOf(makeVideo("red.avi"));
    std::vector<std::shared_ptr<const platform::Image>> photos;
    const auto keep = [&](const auto& photo) { photos.push_back(photo); };
    camera->takePhoto(false, keep);
    start(*camera);
    ASSERT_TRUE(waitFor([&] { return frameCount() >= 1; }));
    camera->takePhoto(false, keep);
    ASSERT_TRUE(waitFor([&] { return photos.size() == 2; }));
    EXPECT_EQ(photos[0], nullptr);
    ASSERT_NE(photos[1], nullptr);
    EXPECT_EQ(photos[1]->width(), 64);
}

TEST_F(VideoCameraTest, WhatIsNoVideoBreaksAndIsTold) {
    const std::string garbage = makeFile("garbage.avi", std::string(10'000, '\x5a'));
    const auto camera = cameraOf(garbage);
    ASSERT_TRUE(camera->open());
    start(*camera);
    ASSERT_TRUE(waitFor([&] { return failures > 0; }));
    world->advance(1min);
    EXPECT_EQ(failures, 1);
    EXPECT_EQ(frameCount(), 0);
    EXPECT_EQ(cameras->problem(), garbage + ": there is neither a picture nor a video in it that is known here");
}

TEST_F(VideoCameraTest, ASoundWithoutAPictureBreaksAndIsTold) {
    QProcess::execute("ffmpeg", {"-loglevel", "error", "-f", "lavfi", "-i", "sine=duration=0.1",
                                 QString::fromStdString(pathOf("sound.wav"))});
    const auto camera = cameraOf(pathOf("sound.wav"));
    start(*camera);
    ASSERT_TRUE(waitFor([&] { return failures > 0; }));
    EXPECT_NE(cameras->problem(), "");
}

TEST_F(VideoCameraTest, AVideoThatIsCutOffEndsWhereItIsCut) {
    std::ifstream whole(makeVideo("whole.avi"), std::ios::binary);
    std::string bytes((std::istreambuf_iterator<char>(whole)), std::istreambuf_iterator<char>());
    bytes.resize(bytes.size() * 2 / 3);
    const auto camera = cameraOf(makeFile("cut.avi", bytes), {false, 2s});
    start(*camera);
    ASSERT_TRUE(waitFor([&] {
        world->advance(34ms);
        return failures > 0;
    }));
    EXPECT_EQ(failures, 1);
}

} // namespace
} // namespace quorvane::capture
