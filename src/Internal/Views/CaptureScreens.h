#pragma once

#include <memory>

#include "Internal/Views/Capture.h"
#include "Platform/CaptureUI.h"

namespace quorvane::capture {

class CameraOverlayView;

/// Makes the camera screens.
class CaptureScreens final : public platform::CaptureUI {
public:
    explicit CaptureScreens(Devices theDevices);

    [[nodiscard]] std::shared_ptr<BarcodeScannerViewControllerType> createBarcodeScanner() override;
    [[nodiscard]] std::shared_ptr<platform::ImagePicker> createImagePicker(const QVQuestion& question) override;

private:
    /// Null when the bundle has no interface file.
    [[nodiscard]] std::shared_ptr<CameraOverlayView> loadCameraOverlayView() const;

    /// None of them null.
    const Devices devices;
};

} // namespace quorvane::capture
