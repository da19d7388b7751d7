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
    return file ? std::make_shared<CameraOverlayView>(*file, std::move(accelerometer)) : nullptr;
}

CameraOverlayView::CameraOverlayView(InterfaceFile theFile, std::shared_ptr<platform::Accelerometer> theAccelerometer)
    : file(std::move(theFile)),
      accelerometer(std::move(theAccelerometer)),
      items(file.instantiate()),
      tiltLabel(&connection(*items, "tiltLabel")),
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
    if (const QString name = imageName(photoOptions.photoOverlayType); !name.isEmpty()) {
        imageOverlay->setImage(name);
    }
    if (photoOptions.photoLevelType != QVPhotoLevelType::none) {
        addLevelingView(photoOptions.photoLevelType);
        imageOverlay->setBorderWidth(borderWidth);
        tiltLabel->setVisible(true);
        showLevel(leveling->levelIsWithinThreshold());
    }
    flashIsAllowed = photoOptions.allowFlashToggle;
    updateFlash();
    flashButton->setProperty("selected", photoOptions.defaultFlashState);
    if (thePicker) {
        thePicker->cameraFlashMode = flashMode(photoOptions.defaultFlashState);
    }
}

void CameraOverlayView::addLevelingView(QVPhotoLevelType type) {
    if (leveling) {
        leveling->levelWithinThresholdChanged = nullptr;
    }
    const ReticleType reticle = type == QVPhotoLevelType::vertical ? ReticleType::top : ReticleType::middle;
    leveling.reset(new LevelingView(reticle, accelerometer.get()));
    leveling->levelWithinThresholdChanged = lifetime.guard([this](bool isLevel) { showLevel(isLevel); });
    leveling->setParentItem(imageOverlay);
    layOutLevelingView();
}

void CameraOverlayView::showLevel(bool isLevel) {
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
