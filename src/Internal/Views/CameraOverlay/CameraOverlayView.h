#pragma once

#include <QQuickItem>
#include <memory>

#include "Internal/Views/InterfaceFile.h"
#include "Internal/Views/ItemPointer.h"
#include "Platform/CaptureUI.h"
#include "Platform/Lifetime.h"
#include "Tasks/QVPhotoCaptureOptions.h"

namespace quorvane::platform {
class Accelerometer;
} // namespace quorvane::platform

namespace quorvane::capture {

class LevelingView;
class PictureView;

/// What lies over the camera's picture: a shutter, a cancel and a flash button, a framing image, and a spirit level
/// that lets the shutter be used. Main thread only.
class CameraOverlayView {
public:
    static constexpr double borderWidth = 4;
    static constexpr double dimmed = 0.8;

    /// Null when the bundle has no interface file of that name, and when that holds no view. Connections that are
    /// missing are a fatal error.
    [[nodiscard]] static std::shared_ptr<CameraOverlayView> load(std::shared_ptr<platform::Accelerometer> accelerometer,
                                                                 const char* fileName = "CameraOverlayView");

    /// @p theItems are the file's.
    CameraOverlayView(InterfaceFile theFile, ItemPointer<QQuickItem> theItems,
                      std::shared_ptr<platform::Accelerometer> theAccelerometer);
    CameraOverlayView(const CameraOverlayView&) = delete;
    CameraOverlayView& operator=(const CameraOverlayView&) = delete;
    /// Takes its items from the screen.
    ~CameraOverlayView();

    void configure(const QVPhotoCaptureOptions& photoOptions, const std::shared_ptr<platform::ImagePicker>& thePicker);
    /// Whether the flash button can be used: allowed and there is a flash.
    void updateFlash();
    /// Tells the user that there is no picture to come, or that there is again.
    void setFailed(bool failed);

    [[nodiscard]] bool isShutterEnabled() const { return cameraButton->isEnabled(); }

    void takePhotoPressed();
    void cancelPressed();
    void flashButtonTapped();

    [[nodiscard]] QQuickItem& view() { return *items; }
    [[nodiscard]] LevelingView* levelingView() const { return leveling.get(); }

private:
    void addLevelingView(QVPhotoLevelType type);
    /// As in the interface file.
    void removeLevelingView();
    void showLevel(bool isLevel);
    void layOutLevelingView();

    /// Keeps what runs the items.
    const InterfaceFile file;
    const std::shared_ptr<platform::Accelerometer> accelerometer;
    std::weak_ptr<platform::ImagePicker> picker;
    bool flashIsAllowed = false;
    const ItemPointer<QQuickItem> items;
    // Items of the interface file.
    QQuickItem* const tiltLabel;
    const bool tiltLabelIsVisible;
    QQuickItem* const cameraButton;
    PictureView* const imageOverlay;
    QQuickItem* const flashButton;
    ItemPointer<LevelingView> leveling;
    platform::Lifetime lifetime;
};

} // namespace quorvane::capture
