#include <QCoreApplication>
#include <QDir>
#include <QFile>
#include <QProcess>
#include <QQuickWindow>
#include <QTemporaryDir>
#include <QTest>
#include <iostream>
#include <memory>

#include <gtest/gtest.h>

#include "Facade/Quorvane.h"
#include "Internal/Views/Capture.h"
#include "Internal/Views/ViewController.h"
#include "Platform/Qt/QtPlatform.h"
#include "Tasks/QVQuestion.h"
#include "testing/SimulatedAccelerometer.h"
#include "testing/SimulatedCamera.h"

namespace quorvane::capture {
namespace {

/// Set in the process of a host: the folder for what the library stores.
constexpr const char* hostVariable = "QUORVANE_LEAVING_HOST";
/// What that process says before it ends.
constexpr const char* farewell = "both screens are shown, and the host leaves";

/// What a host has that never tidies up, until after its main function.
struct Host {
    std::unique_ptr<QQuickWindow> window;
    std::shared_ptr<BarcodeScannerViewControllerType> scanner;
    std::shared_ptr<platform::ImagePicker> picker;
    std::shared_ptr<platform::ImagePicker> unseen;
};

template <class Screen>
bool isShown(const Screen& screen) {
    return dynamic_cast<const ViewController&>(screen).isPresented();
}

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
    if (isShown(*host.scanner) && isShown(*host.picker)) {
        std::cout << farewell << std::endl;
    }
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
    const ::testing::TestInfo& self = *::testing::UnitTest::GetInstance()->current_test_info();
    process.start(QCoreApplication::applicationFilePath(),
                  {QString("--gtest_filter=%1.%2").arg(self.test_suite_name(), self.name())});
    ASSERT_TRUE(process.waitForFinished(-1));

    const std::string said = process.readAll().toStdString();
    EXPECT_EQ(process.exitStatus(), QProcess::NormalExit);
    EXPECT_EQ(process.exitCode(), 0) << said;
    EXPECT_NE(said.find(farewell), std::string::npos) << said;
}

} // namespace
} // namespace quorvane::capture
