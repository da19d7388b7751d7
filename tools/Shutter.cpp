#include "tools/Shutter.h"

#include "Internal/Views/CameraOverlay/CameraPicker.h"
#include "Platform/Clock.h"
#include "testing/SimulatedAccelerometer.h"

namespace quorvane::tool {

Shutter::Shutter(capture::CameraPicker& thePicker, const platform::Clock& theClock, bool needsLevel,
                 const testing::SimulatedAccelerometer* theHeld)
    : picker(thePicker),
      clock(theClock),
      steady(needsLevel ? steadyTime : std::chrono::milliseconds(0)),
      held(needsLevel ? theHeld : nullptr),
      begin(theClock.monotonic()) {}

bool Shutter::press() {
    const std::chrono::nanoseconds now = clock.monotonic();
    if (!picker.cameraOverlayView()->isShutterEnabled() || seesNothing()) {
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

bool Shutter::isStuck() const {
    return held != nullptr && held->samplesTaken() > 2 * settlingSamples;
}

bool Shutter::isBlind() const {
    return seesNothing() && clock.monotonic() - begin >= patience;
}

bool Shutter::seesNothing() const {
    return picker.preview().pictureSize().isEmpty();
}

} // namespace quorvane::tool
