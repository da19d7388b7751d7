#include <QMediaDevices>

#include "Internal/Views/Devices/DeviceTest.h"
#include "Internal/Views/Devices/QtCamera.h"
#include "Internal/Views/Devices/QtCameras.h"

namespace quorvane::capture {
namespace {

using QtCamerasTest = DeviceTest;

TEST_F(QtCamerasTest, ThereIsACameraWhereTheToolkitKnowsOne) {
    EXPECT_EQ(QtCameras().defaultCamera() != nullptr, !QMediaDevices::videoInputs().isEmpty());
}

TEST_F(QtCamerasTest, ACameraThatIsNotThereDoesNotOpenAndBreaksOnceWhenItIsStartedAllTheSame) {
    QtCamera missing{QCameraDevice()};
    EXPECT_FALSE(missing.open());
    EXPECT_FALSE(missing.hasFlash());
    int failures = 0;
    missing.start([](const auto&) { ADD_FAILURE() << "a frame of nothing"; }, [&] { ++failures; });
    EXPECT_EQ(failures, 0);
    ASSERT_TRUE(waitFor([&] { return failures > 0; }));
    world->advance(std::chrono::minutes(1));
    EXPECT_EQ(failures, 1);
}

TEST_F(QtCamerasTest, APhotoOfACameraThatIsNotThereIsNone) {
    QtCamera missing{QCameraDevice()};
    std::vector<std::shared_ptr<const platform::Image>> photos;
    const auto keep = [&](const auto& photo) { photos.push_back(photo); };
    missing.takePhoto(false, keep);
    world->runUntilIdle();
    EXPECT_EQ(photos.size(), 1U);

    missing.start([](const auto&) {}, [] {});
    missing.takePhoto(true, keep);
    missing.takePhoto(true, keep);
    world->advance(QtCamera::photoPatience);
    ASSERT_EQ(photos.size(), 3U);
    for (const auto& photo : photos) {
        EXPECT_EQ(photo, nullptr);
    }
}

} // namespace
} // namespace quorvane::capture
