#include "Internal/Views/LevelingView/LevelingView.h"

#include <QGuiApplication>
#include <QQuickWindow>
#include <algorithm>
#include <chrono>
#include <cmath>

#include "Internal/Views/PictureView.h"

namespace quorvane::capture {
namespace {

constexpr std::chrono::nanoseconds updateInterval = std::chrono::nanoseconds(std::chrono::seconds(1)) / 30;

PictureView* newPicture(const char* image, QQuickItem& parent) {
    auto* const picture = new PictureView(&parent);
    picture->setImage(image);
    picture->setSize({picture->implicitWidth(), picture->implicitHeight()});
    return picture;
}

} // namespace

LevelingView::LevelingView(ReticleType theReticleType, platform::Accelerometer* accelerometer)
    : levelWithinThresholdChanged([](bool) {}),
      reticle(newPicture(theReticleType == ReticleType::top ? "level_top" : "level", *this)),
      bubble(newPicture("bubble", *this)) {
    accelerometerData.reticleType = theReticleType;
    setImplicitSize(std::max(reticle->width(), bubble->width()), std::max(reticle->height(), bubble->height()));
    motionManager = accelerometer == nullptr ? nullptr : accelerometer->makeManager();
    if (motionManager && motionManager->isAccelerometerAvailable()) {
        motionManager->startAccelerometerUpdates(updateInterval, [this](const auto& sample) { receive(sample); });
    }
    layOut();
}

LevelingView::~LevelingView() = default;

void LevelingView::receive(const std::optional<platform::Acceleration>& sample) {
    // A filter that took in no number would never show one again.
    if (sample && std::isfinite(sample->x) && std::isfinite(sample->y)) {
        accelerometerData.filter(sample->x, sample->y);
        updateState();
    }
}

void LevelingView::updateState() {
    placeBubble();
    const bool isLevelNow = accelerometerData.isWithinThreshold();
    if (isLevelNow != isLevel) {
        isLevel = isLevelNow;
        const std::function<void(bool)> call = levelWithinThresholdChanged;
        if (call) {
            call(isLevelNow);
        }
    }
}

qreal LevelingView::pixelRatio() const {
    return window() == nullptr ? qGuiApp->devicePixelRatio() : window()->effectiveDevicePixelRatio();
}

void LevelingView::placeBubble() {
    const BubblePosition position =
        bubblePosition(accelerometerData, {width(), height(), bubble->width(), bubble->height(), pixelRatio()});
    bubble->setPosition({position.x, position.y});
}

void LevelingView::layOut() {
    const bool isAtTop = reticleType() == ReticleType::top;
    // In the middle, and sharp.
    const auto inMiddle = [ratio = pixelRatio()](double room) { return std::round(room / 2 * ratio) / ratio; };
    reticle->setPosition({inMiddle(width() - reticle->width()), isAtTop ? 0 : inMiddle(height() - reticle->height())});
    placeBubble();
}

void LevelingView::geometryChange(const QRectF& now, const QRectF& before) {
    QQuickItem::geometryChange(now, before);
    layOut();
}

void LevelingView::itemChange(ItemChange change, const ItemChangeData& value) {
    QQuickItem::itemChange(change, value);
    const bool isInWindow = change == ItemSceneChange && value.window != nullptr;
    if (isInWindow || change == ItemDevicePixelRatioHasChanged) {
        layOut();
    }
}

} // namespace quorvane::capture
