#include <QCoreApplication>
#include <QDir>
#include <QFile>
#include <QProcess>
#include <QQuickWindow>
#include <QTemporaryDir>
#include <QTest>
#include <memory>

#include <gtest/gtest.h>

#include "Facade/Quorvane.h"
#include "Internal/Views/Capture.h"
#include "Platform/Qt/QtPlatform.h"
#include "Tasks/QVQuestion.h"
#include "testing/SimulatedAccelerometer.h"
#include "testing/SimulatedCamera.h"

namespace quorvane::capture {
namespace {

/// Set in the process of a host: the folder for what the library stores.
constexpr const char* hostVariable = "QUORVANE_LEAVING_HOST";

/// What a host has that never tidies up, until after its main function.
struct Host {
    std::unique_ptr<QQuickWindow> window;
    std::shared_ptr<BarcodeScannerViewControllerType> scanner;
    std::shared_ptr<platform::ImagePicker> picker;
    std::shared_ptr<platform::ImagePicker> unseen;
};

void presentAndLeave(const std::string& folder) {
    static Host host;
    platform::QtOptions options;
    options.native.home = folder;
    const auto platform = platform::QtPlatform::make(options);
    platform::install(platform);
    const auto cameras = std::make_shared<testing::SimulatedCameras>(platform->mainQueue());
    install({cameras, nullptr, nullptr, nullptr});
    const auto question = std::make_shared<QVQuestion>();
    question->photoCaptureOptions = std::make_shared<QVPhotoCaptureOptions>();
    question->photoCaptureOptions->photoLevelType = QVPhotoLevelType::flat;

    host.scanner = Quorvane::createBarcodeScanner();
    host.picker = Quorvane::createImagePicker(question);
    host.unseen = Quorvane::createImagePicker(question);
    present(*host.scanner, false);
    present(*host.picker, false);
    cameras->camera->show(testing::plainFrame(640, 480, 128));
    // A photo and a timer are under way.
    cameras->camera->isSilent = true;
    host.picker->takePicture();
    platform->mainQueue().postAfter(std::chrono::hours(1), [] {});
    QCoreApplication::processEvents();
}

TEST(LeavingTest, AHostMayLeaveEverythingToTheEndOfItsProcess) {
    if (qEnvironmentVariableIsSet(hostVariable)) {
        presentAndLeave(qEnvironmentVariable(hostVariable).toStdString());
        return;
    }
    const QTemporaryDir folder;
    QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
    environment.insert(hostVariable, folder.path());
    QProcess process;
    process.setProcessEnvironment(environment);
    process.setProcessChannelMode(QProcess::MergedChannels);
    process.start(QCoreApplication::applicationFilePath(),
                  {"--gtest_filter=LeavingTest.AHostMayLeaveEverythingToTheEndOfItsProcess"});
    ASSERT_TRUE(process.waitForFinished(-1));

    EXPECT_EQ(process.exitStatus(), QProcess::NormalExit);
    EXPECT_EQ(process.exitCode(), 0) << process.readAll().toStdString();
}

} // namespace
} // namespace quorvane::capture
