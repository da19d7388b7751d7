#include <memory>
#include <optional>
#include <utility>

#include "Facade/Quorvane.h"
#include "Internal/Views/CameraOverlay/CameraPicker.h"
#include "Internal/Views/Capture.h"
#include "Platform/Qt/QtAccelerometer.h"
#include "testing/SimulatedAccelerometer.h"
#include "tools/CameraFile.h"
#include "tools/Failure.h"
#include "tools/ScreenRun.h"
#include "tools/Session.h"
#include "tools/Shutter.h"
#include "tools/commands/PhotoRun.h"

namespace quorvane::tool {
namespace {

class PhotoHost final : public platform::ImagePickerDelegate {
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

} // namespace

std::shared_ptr<const platform::Image> takePhoto(const QVQuestion& question, const PhotoOptions& options,
                                                 const GlobalOptions& global, Terminal& terminal) {
    std::optional<ErrorsAside> aside;
    ScreenRun run(global, terminal, options.hasWindow);
    const auto file = options.camera.empty() ? nullptr : camerasOf(options.camera, {});
    setErrorsAside(aside, file.get(), global);
    platform::Platform& platform = run.session().platform();
    const auto held = options.level ? std::make_shared<testing::SimulatedAccelerometer>(platform) : nullptr;
    std::shared_ptr<platform::Accelerometer> accelerometer = held;
    if (held) {
        held->setReading(options.level);
    } else {
        accelerometer = std::make_shared<platform::qt::QtAccelerometer>(platform.clock(), platform.mainQueue());
    }
    run.see(file, accelerometer);
    const auto host = std::make_shared<PhotoHost>();
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
        run.runUntil([&] { return host->isDone() || shutter.isStuck() || shutter.isBlind() || shutter.press(); });
        if (!host->isDone() && shutter.isStuck()) {
            throw Failure(
                "the question asks for a device that is held level, and by --level it is not: the shutter stays "
                "disabled");
        }
        if (!host->isDone() && shutter.isBlind()) {
            throw Failure("the camera is there and shows nothing");
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
