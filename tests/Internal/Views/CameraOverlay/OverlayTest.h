#pragma once

#include <memory>
#include <string>
#include <vector>

#include "Internal/Views/CameraOverlay/CameraPicker.h"
#include "Internal/Views/InterfaceFile.h"
#include "Internal/Views/LevelingView/LevelingView.h"
#include "Internal/Views/PictureView.h"
#include "Internal/Views/ScreenTest.h"
#include "Platform/Image.h"
#include "Tasks/QVQuestion.h"
#include "testing/SimulatedAccelerometer.h"

namespace quorvane::capture {

/// A photo of no pixels.
class SomePhoto final : public platform::Image {
public:
    [[nodiscard]] int width() const override { return 4; }
    [[nodiscard]] int height() const override { return 3; }
    [[nodiscard]] std::shared_ptr<const Image> half() const override { return nullptr; }
    [[nodiscard]] std::optional<std::string> jpeg(double) const override { return std::nullopt; }
    [[nodiscard]] std::optional<std::string> png() const override { return std::nullopt; }
};

/// Keeps what a picker tells: "took", "failed", "dismissed".
class RecordingPickerDelegate final : public platform::ImagePickerDelegate {
public:
    std::vector<std::string> calls;
    std::shared_ptr<const platform::Image> picture;
    /// Called at the end of each call.
    std::function<void()> whenCalled;

    void imagePickerDidTakePicture(std::shared_ptr<const platform::Image> taken) override {
        picture = std::move(taken);
        note("took");
    }
    void imagePickerDidFail() override { note("failed"); }
    void imagePickerWasDismissed() override { note("dismissed"); }

private:
    void note(const char* call) {
        calls.emplace_back(call);
        if (whenCalled) {
            const auto then = whenCalled;
            then();
        }
    }
};

/// A test of the camera screen for photos, made as a host makes it.
class OverlayTest : public ScreenTest {
protected:
    using LevelType = QVPhotoCaptureOptions::LevelType;
    using OverlayType = QVPhotoCaptureOptions::OverlayType;
    using FlashMode = platform::ImagePicker::CameraFlashMode;

    OverlayTest() {
        cameras->camera->flash = true;
        cameras->camera->photo = std::make_shared<SomePhoto>();
        Devices all = devices();
        all.accelerometer = accelerometer;
        install(all);
    }

    /// A picker for `options`, with the delegate below.
    void create() {
        QVQuestion question;
        question.photoCaptureOptions = std::make_shared<QVPhotoCaptureOptions>(options);
        picker = std::dynamic_pointer_cast<CameraPicker>(platform::captureUI()->createImagePicker(question));
        ASSERT_NE(picker, nullptr);
        picker->delegate = delegate;
    }
    void show() {
        create();
        capture::present(*picker, *window, false);
        settle();
    }

    [[nodiscard]] QQuickItem& item(const char* name) { return connection(overlay().view(), name); }
    [[nodiscard]] QQuickItem& shutter() { return item("cameraButton"); }
    [[nodiscard]] QQuickItem& flashButton() { return item("flashButton"); }
    [[nodiscard]] QQuickItem& cancelButton() { return item("cancelButton"); }
    [[nodiscard]] QQuickItem& tiltLabel() { return item("tiltLabel"); }
    [[nodiscard]] PictureView& imageOverlay() { return connection<PictureView>(overlay().view(), "imageOverlay"); }
    [[nodiscard]] CameraOverlayView& overlay() { return *picker->cameraOverlayView(); }
    [[nodiscard]] bool flashIsSelected() { return flashButton().property("selected").toBool(); }

    /// Half a minute of samples: what the filter holds is the reading to many digits.
    void hold(double x, double y) {
        accelerometer->setReading(platform::Acceleration{x, y, 0});
        advance(std::chrono::seconds(30));
    }

    QVPhotoCaptureOptions options;
    const std::shared_ptr<testing::SimulatedAccelerometer> accelerometer =
        std::make_shared<testing::SimulatedAccelerometer>(*world);
    const std::shared_ptr<RecordingPickerDelegate> delegate = std::make_shared<RecordingPickerDelegate>();
    std::shared_ptr<CameraPicker> picker;
};

} // namespace quorvane::capture
