#include "Internal/Views/CameraOverlay/CameraOverlayView.h"

#include <QColor>
#include <functional>
#include <string>
#include <utility>

#include "Internal/Views/LevelingView/LevelingView.h"
#include "Internal/Views/PictureView.h"

namespace quorvane::capture {

using CameraFlashMode = platform::ImagePicker::CameraFlashMode;

namespace {

CameraFlashMode flashMode(bool on) {
    return on ? CameraFlashMode::on : CameraFlashMode::off;
}

/// Empty for none.
QString imageName(QVPhotoOverlayType type) {
    return type == QVPhotoOverlayType::none ? QString() : QString::fromStdString(std::string(json::rawValue(type)));
}

} // namespace

std::shared_ptr<CameraOverlayView> CameraOverlayView::load(std::shared_ptr<platform::Accelerometer> accelerometer,
                                                           const char* fileName) {
    PictureView::registerType();
    const std::optional<InterfaceFile> file = InterfaceFile::named(fileName);
    ItemPointer<QQuickItem> items = file ? file->instantiate() : nullptr;
    return items ? std::make_shared<CameraOverlayView>(*file, std::move(items), std::move(accelerometer)) : nullptr;
}

CameraOverlayView::CameraOverlayView(InterfaceFile theFile, ItemPointer<QQuickItem> theItems,
                                     std::shared_ptr<platform::Accelerometer> theAccelerometer)
    : file(std::move(theFile)),
      accelerometer(std::move(theAccelerometer)),
      items(std::move(theItems)),
      tiltLabel(&connection(*items, "tiltLabel")),
      tiltLabelIsVisible(tiltLabel->isVisible()),
      cameraButton(&connection(*items, "cameraButton")),
      imageOverlay(&connection<PictureView>(*items, "imageOverlay")),
      flashButton(&connection(*items, "flashButton")) {
    connectAction(*items, "cameraButton", lifetime.guard([this] { takePhotoPressed(); }));
    connectAction(*items, "cancelButton", lifetime.guard([this] { cancelPressed(); }));
    connectAction(*items, "flashButton", lifetime.guard([this] { flashButtonTapped(); }));
    const std::function<void()> layOut = lifetime.guard([this] { layOutLevelingView(); });
    QObject::connect(imageOverlay, &QQuickItem::widthChanged, imageOverlay, layOut);
    QObject::connect(imageOverlay, &QQuickItem::heightChanged, imageOverlay, layOut);
}

CameraOverlayView::~CameraOverlayView() = default;

void CameraOverlayView::configure(const QVPhotoCaptureOptions& photoOptions,
                                  const std::shared_ptr<platform::ImagePicker>& thePicker) {
    picker = thePicker;
    imageOverlay->setImage(imageName(photoOptions.photoOverlayType));
    if (photoOptions.photoLevelType != QVPhotoLevelType::none) {
        addLevelingView(photoOptions.photoLevelType);
        imageOverlay->setBorderWidth(borderWidth);
        tiltLabel->setVisible(true);
        showLevel(leveling->levelIsWithinThreshold());
    } else if (leveling) {
        removeLevelingView();
    }
    flashIsAllowed = photoOptions.allowFlashToggle;
    updateFlash();
    flashButton->setProperty("selected", photoOptions.defaultFlashState);
    if (thePicker) {
        thePicker->cameraFlashMode = flashMode(photoOptions.defaultFlashState);
    }
}

void CameraOverlayView::addLevelingView(QVPhotoLevelType type) {
    removeLevelingView();
    const ReticleType reticle = type == QVPhotoLevelType::vertical ? ReticleType::top : ReticleType::middle;
    leveling.reset(new LevelingView(reticle, accelerometer.get()));
    leveling->levelWithinThresholdChanged = lifetime.guard([this](bool isLevel) { showLevel(isLevel); });
    leveling->setParentItem(imageOverlay);
    layOutLevelingView();
}

void CameraOverlayView::removeLevelingView() {
    if (leveling) {
        leveling->levelWithinThresholdChanged = nullptr;
        leveling = nullptr;
    }
    imageOverlay->setBorderWidth(0);
    tiltLabel->setVisible(tiltLabelIsVisible);
    cameraButton->setEnabled(true);
}

void CameraOverlayView::showLevel(bool isLevel) {
    items->setProperty("isLevel", isLevel);
    cameraButton->setEnabled(isLevel);
    imageOverlay->setBorderColor(isLevel ? Qt::green : Qt::red);
}

void CameraOverlayView::layOutLevelingView() {
    if (leveling) {
        leveling->setPosition({});
        leveling->setSize(imageOverlay->size());
    }
}

void CameraOverlayView::updateFlash() {
    const auto itsPicker = picker.lock();
    const bool isUsable = flashIsAllowed && itsPicker && itsPicker->isFlashAvailable();
    flashButton->setEnabled(isUsable);
    flashButton->setOpacity(isUsable ? 1.0 : dimmed);
}

void CameraOverlayView::setFailed(bool failed) {
    items->setState(failed ? "failed" : "");
}

void CameraOverlayView::takePhotoPressed() {
    if (const auto itsPicker = picker.lock()) {
        itsPicker->takePicture();
    }
}

void CameraOverlayView::cancelPressed() {
    if (const auto itsPicker = picker.lock()) {
        itsPicker->dismiss(true);
    }
}

void CameraOverlayView::flashButtonTapped() {
    const bool wasSelected = flashButton->property("selected").toBool();
    flashButton->setProperty("selected", !wasSelected);
    if (const auto itsPicker = picker.lock()) {
        itsPicker->cameraFlashMode = flashMode(!wasSelected);
    }
}

} // namespace quorvane::capture
