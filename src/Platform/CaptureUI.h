#pragma once

#include <cstdint>
#include <memory>
#include <string>
#include <vector>

namespace quorvane {

/// Receives what a barcode scanner found. Held weakly; called on the main thread.
class BarcodeScannerDelegate {
public:
    BarcodeScannerDelegate() = default;
    BarcodeScannerDelegate(const BarcodeScannerDelegate&) = delete;
    BarcodeScannerDelegate& operator=(const BarcodeScannerDelegate&) = delete;
    virtual ~BarcodeScannerDelegate() = default;

    /// The camera or the recogniser could not be set up.
    virtual void scanningDidFail() = 0;
    /// Scanning ended: cancelled, or about to report a success.
    virtual void scanningDidStop() = 0;
    /// @p code is the barcode's text.
    virtual void scanningSucceeded(const std::string& code) = 0;
};

/// A barcode scanner screen, ready to be presented by the host.
class BarcodeScannerViewControllerType {
public:
    BarcodeScannerViewControllerType() = default;
    BarcodeScannerViewControllerType(const BarcodeScannerViewControllerType&) = delete;
    BarcodeScannerViewControllerType& operator=(const BarcodeScannerViewControllerType&) = delete;
    virtual ~BarcodeScannerViewControllerType() = default;

    std::weak_ptr<BarcodeScannerDelegate> delegate;
};

class QVQuestion;

namespace platform {

class Image;

/// Receives the photo of an image picker. Held weakly; called on the main thread.
class ImagePickerDelegate {
public:
    ImagePickerDelegate() = default;
    ImagePickerDelegate(const ImagePickerDelegate&) = delete;
    ImagePickerDelegate& operator=(const ImagePickerDelegate&) = delete;
    virtual ~ImagePickerDelegate() = default;

    /// The picture that was taken. The picker stays on screen; the host dismisses it.
    virtual void imagePickerDidTakePicture(std::shared_ptr<const Image> picture) = 0;
    /// No picture could be taken: there is no camera, it is in use, or it failed. The picker stays on screen.
    virtual void imagePickerDidFail() = 0;
    /// The picker has left the screen: cancelled by the user, dismissed, or gone with what it was shown in.
    virtual void imagePickerWasDismissed() {}
};

/// A camera screen that takes one photo, ready to be presented by the host. Main thread only.
class ImagePicker {
public:
    enum class SourceType : std::uint8_t { camera };
    enum class CameraFlashMode : std::uint8_t { off, on };
    enum class CameraCaptureMode : std::uint8_t { photo };
    /// The media type of still images.
    static constexpr const char* imageType = "public.image";

    ImagePicker() = default;
    ImagePicker(const ImagePicker&) = delete;
    ImagePicker& operator=(const ImagePicker&) = delete;
    virtual ~ImagePicker() = default;

    std::weak_ptr<ImagePickerDelegate> delegate;
    SourceType sourceType = SourceType::camera;
    std::vector<std::string> mediaTypes = {imageType};
    CameraFlashMode cameraFlashMode = CameraFlashMode::off;
    CameraCaptureMode cameraCaptureMode = CameraCaptureMode::photo;
    /// This library's pickers have no controls but those of their overlay.
    bool showsCameraControls = true;

    /// Whether its camera has a flash.
    [[nodiscard]] virtual bool isFlashAvailable() const = 0;
    /// Takes a picture, with the flash as the mode says; the delegate is told of the outcome. Does nothing while one is
    /// being taken. A picture that arrives after the picker was dismissed is not told.
    virtual void takePicture() = 0;
    /// Leaves the screen. Does nothing when it is on none.
    virtual void dismiss(bool animated) = 0;
};

/// Makes the camera screens. Main thread only.
class CaptureUI {
public:
    CaptureUI() = default;
    CaptureUI(const CaptureUI&) = delete;
    CaptureUI& operator=(const CaptureUI&) = delete;
    virtual ~CaptureUI() = default;

    [[nodiscard]] virtual std::shared_ptr<BarcodeScannerViewControllerType> createBarcodeScanner() = 0;
    /// Null when the question has no photo options.
    [[nodiscard]] virtual std::shared_ptr<ImagePicker> createImagePicker(const QVQuestion& question) = 0;
};

/// Sets the maker of the camera screens for the platform in use; installing another platform forgets it. Main thread
/// only.
void setCaptureUI(std::shared_ptr<CaptureUI> captureUI);
/// The maker of the camera screens; null when none was set.
[[nodiscard]] std::shared_ptr<CaptureUI> captureUI();

} // namespace platform

} // namespace quorvane
