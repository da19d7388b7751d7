#include <chrono>
#include <cstddef>
#include <memory>
#include <optional>
#include <utility>

#include "Facade/Quorvane.h"
#include "Internal/Views/CameraOverlay/CameraPicker.h"
#include "Internal/Views/Capture.h"
#include "Platform/Clock.h"
#include "Platform/Qt/QtAccelerometer.h"
#include "testing/SimulatedAccelerometer.h"
#include "tools/CameraFile.h"
#include "tools/Failure.h"
#include "tools/ScreenRun.h"
#include "tools/Session.h"
#include "tools/commands/PhotoRun.h"

namespace quorvane::tool {
namespace {

/// After so many samples the level of a device that is always held the same way stays as it is.
constexpr std::size_t settlingSamples = 60;
/// For how long the shutter is enabled before it is pressed: the level may pass by.
constexpr std::chrono::milliseconds steadyTime{500};

class Host final : public platform::ImagePickerDelegate {
public:
    std::shared_ptr<const platform::Image> photo;
    bool hasFailed = false;
    bool isDismissed = false;

    [[nodiscard]] bool isDone() const { return photo || hasFailed || isDismissed; }

    void imagePickerDidTakePicture(std::shared_ptr<const platform::Image> picture) override {
        photo = std::move(picture);
    }
    void imagePickerDidFail() override { hasFailed = true; }
    void imagePickerWasDismissed() override { isDismissed = true; }
};

/// Presses the shutter as soon as it can be pressed.
class Shutter {
public:
    /// @p theHeld is null where the device's own accelerometer is read.
    Shutter(capture::CameraPicker& thePicker, const platform::Clock& theClock, bool needsLevel,
            const testing::SimulatedAccelerometer* theHeld)
        : picker(thePicker),
          clock(theClock),
          steady(needsLevel ? steadyTime : std::chrono::milliseconds(0)),
          held(needsLevel ? theHeld : nullptr) {}

    /// To be asked again and again; false as long as it cannot be pressed.
    bool press() {
        const std::chrono::nanoseconds now = clock.monotonic();
        if (!picker.cameraOverlayView()->isShutterEnabled() || picker.preview().pictureSize().isEmpty()) {
            enabledSince = std::nullopt;
        } else if (!enabledSince) {
            enabledSince = now;
        }
        const bool isSettled = held == nullptr || held->samplesTaken() >= settlingSamples;
        if (!enabledSince || now - *enabledSince < steady || !isSettled) {
            return false;
        }
        picker.cameraOverlayView()->takePhotoPressed();
        return true;
    }

    /// It cannot be pressed and never will be.
    [[nodiscard]] bool isStuck() const { return held != nullptr && held->samplesTaken() > 2 * settlingSamples; }

private:
    capture::CameraPicker& picker;
    const platform::Clock& clock;
    const std::chrono::nanoseconds steady;
    const testing::SimulatedAccelerometer* const held;
    std::optional<std::chrono::nanoseconds> enabledSince;
};

} // namespace

std::shared_ptr<const platform::Image> takePhoto(const QVQuestion& question, const PhotoOptions& options,
                                                 const GlobalOptions& global, Terminal& terminal) {
    ScreenRun run(global, terminal, options.hasWindow);
    const auto file = options.camera.empty() ? nullptr : camerasOf(options.camera, {});
    platform::Platform& platform = run.session().platform();
    const auto held = options.level ? std::make_shared<testing::SimulatedAccelerometer>(platform) : nullptr;
    std::shared_ptr<platform::Accelerometer> accelerometer = held;
    if (held) {
        held->setReading(options.level);
    } else {
        accelerometer = std::make_shared<platform::qt::QtAccelerometer>(platform.clock(), platform.mainQueue());
    }
    run.see(file, accelerometer);
    const auto host = std::make_shared<Host>();
    const auto picker = std::dynamic_pointer_cast<capture::CameraPicker>(
        Quorvane::createImagePicker(std::make_shared<QVQuestion>(question)));
    if (!picker) {
        throw Failure("the question asks for no photo");
    }
    const bool asksForLevel = question.photoCaptureOptions->photoLevelType != QVPhotoLevelType::none;
    if (asksForLevel && !accelerometer->makeManager()->isAccelerometerAvailable()) {
        throw Failure(
            "the question asks for a device that is held level, and there is no accelerometer: the shutter "
            "stays disabled; --level X,Y tells how it is held");
    }
    picker->delegate = host;
    capture::present(*picker, false);
    if (!options.hasWindow) {
        Shutter shutter(*picker, platform.clock(), asksForLevel, held.get());
        run.runUntil([&] { return host->isDone() || shutter.isStuck() || shutter.press(); });
        if (!host->isDone() && shutter.isStuck()) {
            throw Failure(
                "the question asks for a device that is held level, and by --level it is not: the shutter stays "
                "disabled");
        }
    }
    run.runUntil([&] { return host->isDone(); });
    if (host->hasFailed) {
        throw Failure(problemOf(file.get()));
    }
    if (!host->photo) {
        throw NothingFound("no photo was taken");
    }
    return host->photo;
}

} // namespace quorvane::tool
