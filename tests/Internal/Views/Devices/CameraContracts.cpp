#include <QCoreApplication>
#include <QImage>
#include <QProcess>
#include <QTemporaryDir>

#include "Internal/Views/Devices/PictureCamera.h"
#include "Internal/Views/Devices/VideoCamera.h"
#include "Platform/Qt/QtImage.h"
#include "Platform/contract/CameraContract.h"
#include "testing/SimulatedCamera.h"

namespace quorvane::platform::contract {
namespace {

CameraRig simulated(testing::SimulatedPlatform& world) {
    const auto camera = std::make_shared<testing::SimulatedCamera>(world.mainQueue());
    return {camera, [seen = std::weak_ptr(camera)] {
                if (const auto running = seen.lock()) {
                    running->show(testing::plainFrame(4, 3, 0));
                }
            }};
}

CameraRig picture(testing::SimulatedPlatform& world) {
    QImage image(4, 3, QImage::Format_RGB888);
    image.fill(Qt::gray);
    const auto camera =
        std::make_shared<capture::PictureCamera>(std::make_shared<qt::QtImage>(image), capture::FileCameras::Options{});
    return {camera, [&world] { world.advance(std::chrono::milliseconds(40)); }};
}

CameraRig video(testing::SimulatedPlatform& world) {
    const auto folder = std::make_shared<QTemporaryDir>();
    const QString file = folder->filePath("red.avi");
    EXPECT_EQ(QProcess::execute("ffmpeg", {"-loglevel", "error", "-f", "lavfi", "-i", "color=red:size=64x48:rate=25",
                                           "-t", "0.2", file}),
              0);
    const auto camera = std::make_shared<capture::VideoCamera>(file.toStdString(), capture::FileCameras::Options{},
                                                               std::make_shared<std::string>());
    return {camera, [&world, folder] {
                QCoreApplication::processEvents(QEventLoop::AllEvents, 20);
                world.advance(std::chrono::milliseconds(40));
            }};
}

INSTANTIATE_TEST_SUITE_P(Simulated, CameraContract, ::testing::Values(&simulated));
INSTANTIATE_TEST_SUITE_P(Picture, CameraContract, ::testing::Values(&picture));
INSTANTIATE_TEST_SUITE_P(Video, CameraContract, ::testing::Values(&video));

} // namespace
} // namespace quorvane::platform::contract
