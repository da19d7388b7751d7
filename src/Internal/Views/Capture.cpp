#include "Internal/Views/Capture.h"

#include <QCoreApplication>
#include <QEvent>
#include <utility>

#include "Internal/Views/CaptureScreens.h"
#include "Internal/Views/ViewController.h"
#include "Platform/Platform.h"
#include "Platform/Precondition.h"

namespace quorvane::capture {
namespace {

template <class Screen>
ViewController& controllerOf(Screen& screen) {
    auto* const controller = dynamic_cast<ViewController*>(&screen);
    QV_PRECONDITION(controller != nullptr, "a screen that is presented must come from Quorvane::Capture");
    return *controller;
}

/// What the screens are made of may not outlive the toolkit.
void leaveWithToolkit() {
    platform::install(nullptr);
    QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
}

} // namespace

void install(Devices devices) {
    qRemovePostRoutine(&leaveWithToolkit);
    qAddPostRoutine(&leaveWithToolkit);
    platform::setCaptureUI(std::make_shared<CaptureScreens>(std::move(devices)));
}

void present(BarcodeScannerViewControllerType& screen, QQuickWindow& window, bool animated) {
    controllerOf(screen).present(window, animated);
}

void present(BarcodeScannerViewControllerType& screen, QQuickItem& item, bool animated) {
    controllerOf(screen).present(item, animated);
}

void present(BarcodeScannerViewControllerType& screen, bool animated) {
    controllerOf(screen).present(animated);
}

void present(platform::ImagePicker& screen, QQuickWindow& window, bool animated) {
    controllerOf(screen).present(window, animated);
}

void present(platform::ImagePicker& screen, QQuickItem& item, bool animated) {
    controllerOf(screen).present(item, animated);
}

void present(platform::ImagePicker& screen, bool animated) {
    controllerOf(screen).present(animated);
}

void dismiss(BarcodeScannerViewControllerType& screen, bool animated) {
    controllerOf(screen).dismiss(animated);
}

} // namespace quorvane::capture
