#pragma once

#include <memory>

#include "Platform/CaptureUI.h"

class QQuickItem;
class QQuickWindow;

namespace quorvane::platform {
class Accelerometer;
class BarcodeReaders;
class Cameras;
class SystemSound;
} // namespace quorvane::platform

/// The camera screens: `Quorvane::createBarcodeScanner` and `Quorvane::createImagePicker` answer screens once `install`
/// was called. Main thread only, which is the thread of the Qt GUI application.
///
/// A screen belongs to the host that asked for it. It leaves the screen, and its camera stops, when the host lets go of
/// it.
namespace quorvane::capture {

/// What the screens work with. The device's own where null.
struct Devices {
    std::shared_ptr<platform::Cameras> cameras;
    std::shared_ptr<platform::BarcodeReaders> readers;
    std::shared_ptr<platform::Accelerometer> accelerometer;
    std::shared_ptr<platform::SystemSound> sounds;
};

/// Sets the maker of the camera screens for the platform in use; to be called after each `platform::install`. Where the
/// GUI application ends first, the platform is taken out of use with it: `platform::install(nullptr)`. Screens that are
/// still there then leave, and so they do whenever a platform is.
void install(Devices devices = {});

/// Shows a screen: all over @p window, or all over @p item, whose size it follows, or in a window of its own. A screen
/// that is shown stays where it is. Its own window closes as any does, with the screen; a scanner's is a cancel. The
/// items beside it are disabled meanwhile; one that the host enables or disables itself then is left to the host.
/// Screens that are not this library's are a fatal error.
void present(BarcodeScannerViewControllerType& screen, QQuickWindow& window, bool animated = true);
void present(BarcodeScannerViewControllerType& screen, QQuickItem& item, bool animated = true);
void present(BarcodeScannerViewControllerType& screen, bool animated = true);
void present(platform::ImagePicker& screen, QQuickWindow& window, bool animated = true);
void present(platform::ImagePicker& screen, QQuickItem& item, bool animated = true);
void present(platform::ImagePicker& screen, bool animated = true);

/// Leaves the screen; its delegate is not told. A picker has a `dismiss` of its own, which does the same.
void dismiss(BarcodeScannerViewControllerType& screen, bool animated = true);

} // namespace quorvane::capture
