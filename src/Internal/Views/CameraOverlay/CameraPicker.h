#pragma once

#include <memory>

#include "Internal/Views/Backdrop.h"
#include "Internal/Views/CameraOverlay/CameraOverlayView.h"
#include "Internal/Views/CameraPreview.h"
#include "Internal/Views/Capture.h"
#include "Internal/Views/CaptureSession.h"
#include "Internal/Views/ViewController.h"
#include "Platform/Camera.h"
#include "Platform/CaptureUI.h"
#include "Platform/Lifetime.h"

namespace quorvane::capture {

/// The camera's picture all over the screen, and an overlay over it. The camera is held while it is on screen.
class CameraPicker final : public ViewController, public platform::ImagePicker {
public:
    explicit CameraPicker(const Devices& devices);
    ~CameraPicker() override;

    /// Lies over the whole picture. Null for none.
    void setCameraOverlayView(std::shared_ptr<CameraOverlayView> overlay);
    [[nodiscard]] CameraOverlayView* cameraOverlayView() const { return overlayView.get(); }
    [[nodiscard]] const CameraPreview& preview() const { return *cameraView; }

    [[nodiscard]] bool isFlashAvailable() const override { return camera && camera->hasFlash(); }
    void takePicture() override;
    void dismiss(bool animated) override;

protected:
    void viewDidLoad() override;
    void viewWillAppear() override;
    void viewDidLayoutSubviews() override;
    void viewDidDisappear() override;
    void releaseDevices() override;

private:
    [[nodiscard]] bool startCamera();
    void stopCamera();
    void fail();
    /// Whatever still comes is no answer to anything.
    void awaitNoPhoto();
    /// The answer to the photo of that number; null when there is none.
    void receive(int asked, std::shared_ptr<const platform::Image> picture);

    const std::shared_ptr<platform::Cameras> cameras;
    std::shared_ptr<platform::Camera> camera;
    std::unique_ptr<CaptureSession> session;
    ItemPointer<Backdrop> backdrop;
    ItemPointer<CameraPreview> cameraView;
    std::shared_ptr<CameraOverlayView> overlayView;
    bool takingPicture = false;
    /// Counts the photos that were asked for, and the ends of waiting for one.
    int photo = 0;
    platform::Lifetime lifetime;
};

} // namespace quorvane::capture
