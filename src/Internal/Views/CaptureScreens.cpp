#include "Internal/Views/CaptureScreens.h"

#include <utility>

#include "Internal/Views/BarcodeScanner/BarcodeScannerViewController.h"

namespace quorvane::capture {

CaptureScreens::CaptureScreens(Devices theDevices) : devices(std::move(theDevices)) {}

std::shared_ptr<BarcodeScannerViewControllerType> CaptureScreens::createBarcodeScanner() {
    return BarcodeScannerViewController::make(devices);
}

std::shared_ptr<platform::ImagePicker> CaptureScreens::createImagePicker(const QVQuestion& /*question*/) {
    return nullptr;
}

} // namespace quorvane::capture
