#include "Internal/Views/CameraOverlay/CameraPicker.h"

#include <utility>

#include "Platform/MainQueue.h"
#include "Platform/Platform.h"

namespace quorvane::capture {

CameraPicker::CameraPicker(const Devices& devices)
    : ViewController(std::nullopt),
      cameras(devices.cameras),
      camera(cameras ? cameras->defaultCamera() : nullptr),
      backdrop(new Backdrop),
      cameraView(new CameraPreview) {}

CameraPicker::~CameraPicker() {
    stopCamera();
}

void CameraPicker::setCameraOverlayView(std::shared_ptr<CameraOverlayView> overlay) {
    overlayView = std::move(overlay);
    if (overlayView) {
        overlayView->view().setParentItem(&view());
        overlayView->view().setSize(view().size());
        overlayView->view().setFocus(true);
    }
}

void CameraPicker::viewDidLoad() {
    backdrop->setParentItem(&view());
    cameraView->setParentItem(&view());
}

void CameraPicker::viewWillAppear() {
    awaitNoPhoto();
    cameraView->clear();
    const bool started = startCamera();
    if (overlayView) {
        overlayView->setFailed(!started);
        overlayView->updateFlash();
    }
    if (!started) {
        fail();
    }
}

bool CameraPicker::startCamera() {
    stopCamera();
    if (!camera && cameras) {
        camera = cameras->defaultCamera();
    }
    if (!camera || !camera->open()) {
        return false;
    }
    session = std::make_unique<CaptureSession>();
    if (!session->canAddInput(*camera)) {
        session = nullptr;
        return false;
    }
    session->addInput(camera);
    session->setPreview(*cameraView);
    session->startRunning(lifetime.guard([this] {
        // That is what became of a photo, too.
        awaitNoPhoto();
        if (!isPresented()) {
            return;
        }
        if (overlayView) {
            overlayView->setFailed(true);
        }
        fail();
    }));
    return true;
}

void CameraPicker::stopCamera() {
    session = nullptr;
}

void CameraPicker::fail() {
    if (const auto host = delegate.lock()) {
        host->imagePickerDidFail();
    }
}

void CameraPicker::takePicture() {
    if (takingPicture) {
        return;
    }
    if (!session || !session->isRunning()) {
        fail();
        return;
    }
    takingPicture = true;
    const int asked = ++photo;
    const bool flash = cameraFlashMode == CameraFlashMode::on && camera->hasFlash();
    camera->takePhoto(flash, lifetime.guard([this, asked](const std::shared_ptr<const platform::Image>& picture) {
        if (asked != photo) {
            return;
        }
        if (picture) {
            receive(asked, picture);
        } else {
            // A camera that broke tells so itself, about now.
            platform::current().mainQueue().post(lifetime.guard([this, asked] { receive(asked, nullptr); }));
        }
    }));
}

void CameraPicker::awaitNoPhoto() {
    ++photo;
    takingPicture = false;
}

void CameraPicker::receive(int asked, std::shared_ptr<const platform::Image> picture) {
    if (asked != photo) {
        return;
    }
    // It may be inside this call of the camera that the host lets go of the picker.
    const std::shared_ptr<platform::Camera> held = camera;
    takingPicture = false;
    if (!isPresented()) {
        return;
    }
    if (!picture) {
        fail();
    } else if (const auto host = delegate.lock()) {
        host->imagePickerDidTakePicture(std::move(picture));
    }
}

void CameraPicker::dismiss(bool animated) {
    ViewController::dismiss(animated);
}

void CameraPicker::viewDidLayoutSubviews() {
    QQuickItem* const overlay = overlayView ? &overlayView->view() : nullptr;
    for (QQuickItem* const item :
         {static_cast<QQuickItem*>(backdrop.get()), static_cast<QQuickItem*>(cameraView.get()), overlay}) {
        if (item != nullptr) {
            item->setPosition({});
            item->setSize(view().size());
        }
    }
}

void CameraPicker::releaseDevices() {
    awaitNoPhoto();
    stopCamera();
    camera = nullptr;
    overlayView = nullptr;
}

void CameraPicker::viewDidDisappear() {
    awaitNoPhoto();
    stopCamera();
    camera = nullptr;
    if (const auto host = delegate.lock()) {
        host->imagePickerWasDismissed();
    }
}

} // namespace quorvane::capture
