#include "Internal/Views/CaptureScreens.h"

#include <utility>

#include "Internal/Views/BarcodeScanner/BarcodeScannerViewController.h"
#include "Internal/Views/BarcodeScanner/ZXingBarcodeReaders.h"
#include "Internal/Views/CameraOverlay/CameraOverlayView.h"
#include "Internal/Views/CameraOverlay/CameraPicker.h"
#include "Internal/Views/Devices/QtCameras.h"
#include "Internal/Views/Devices/QtSystemSound.h"
#include "Platform/Platform.h"
#include "Platform/Qt/QtAccelerometer.h"
#include "Tasks/QVQuestion.h"

namespace quorvane::capture {

using platform::ImagePicker;

namespace {

Devices completed(Devices devices) {
    if (!devices.cameras) {
        devices.cameras = std::make_shared<QtCameras>();
    }
    if (!devices.readers) {
        devices.readers = std::make_shared<ZXingBarcodeReaders>();
    }
    if (!devices.sounds) {
        devices.sounds = std::make_shared<QtSystemSound>();
    }
    if (!devices.accelerometer) {
        platform::Platform& platform = platform::current();
        devices.accelerometer = std::make_shared<platform::qt::QtAccelerometer>(platform.clock(), platform.mainQueue());
    }
    return devices;
}

} // namespace

CaptureScreens::CaptureScreens(Devices theDevices) : devices(completed(std::move(theDevices))) {}

std::shared_ptr<BarcodeScannerViewControllerType> CaptureScreens::createBarcodeScanner() {
    return BarcodeScannerViewController::make(devices);
}

std::shared_ptr<ImagePicker> CaptureScreens::createImagePicker(const QVQuestion& question) {
    if (!question.photoCaptureOptions) {
        return nullptr;
    }
    const QVPhotoCaptureOptions& options = *question.photoCaptureOptions;
    auto picker = std::make_shared<CameraPicker>(devices);
    picker->sourceType = ImagePicker::SourceType::camera;
    picker->mediaTypes = {ImagePicker::imageType};
    picker->cameraFlashMode =
        options.defaultFlashState ? ImagePicker::CameraFlashMode::on : ImagePicker::CameraFlashMode::off;
    picker->cameraCaptureMode = ImagePicker::CameraCaptureMode::photo;
    picker->showsCameraControls = false;
    if (auto overlay = loadCameraOverlayView()) {
        overlay->configure(options, picker);
        overlay->view().setSize(picker->view().size());
        picker->setCameraOverlayView(std::move(overlay));
    }
    return picker;
}

std::shared_ptr<CameraOverlayView> CaptureScreens::loadCameraOverlayView() const {
    return CameraOverlayView::load(devices.accelerometer);
}

} // namespace quorvane::capture
