#pragma once

#include <QQuickItem>
#include <functional>
#include <memory>

#include "Internal/Views/LevelingView/AccelerometerData.h"
#include "Platform/Accelerometer.h"

namespace quorvane::capture {

class PictureView;

/// A spirit level: a bubble that moves with the device, and a reticle for it to come to. Main thread only. Without an
/// accelerometer it is never level.
class LevelingView final : public QQuickItem {
public:
    using ReticleType = capture::ReticleType;

    /// Starts reading @p accelerometer, which may be null, at once.
    LevelingView(ReticleType theReticleType, platform::Accelerometer* accelerometer);
    ~LevelingView() override;

    /// Called when it becomes level, with true, and when it is level no more; may destroy or change anything.
    std::function<void(bool)> levelWithinThresholdChanged;

    [[nodiscard]] bool levelIsWithinThreshold() const { return isLevel; }
    [[nodiscard]] ReticleType reticleType() const { return accelerometerData.reticleType; }
    [[nodiscard]] const AccelerometerData& reading() const { return accelerometerData; }
    [[nodiscard]] PictureView& bubbleView() { return *bubble; }
    [[nodiscard]] PictureView& reticleView() { return *reticle; }

protected:
    void geometryChange(const QRectF& now, const QRectF& before) override;
    void itemChange(ItemChange change, const ItemChangeData& value) override;

private:
    void receive(const std::optional<platform::Acceleration>& sample);
    /// Device pixels in a point.
    [[nodiscard]] qreal pixelRatio() const;
    void layOut();
    void placeBubble();
    void updateState();

    AccelerometerData accelerometerData;
    bool isLevel = false;
    // Children of this item, which owns them.
    PictureView* const reticle;
    PictureView* const bubble;
    std::unique_ptr<platform::MotionManager> motionManager;
};

} // namespace quorvane::capture
