#include "Internal/Views/LevelingView/AccelerometerData.h"

#include <cmath>

namespace quorvane::capture {

void AccelerometerData::filter(double ax, double ay) {
    x = k * x + (1 - k) * ax;
    y = k * y + (1 - k) * ay;
}

double AccelerometerData::distance() const {
    // Upright, gravity pulls along the screen towards its lower edge; flat, it does not pull along the screen at all.
    const double target = reticleType == ReticleType::top ? -1.0 : 0.0;
    return std::sqrt(x * x + (y - target) * (y - target));
}

bool AccelerometerData::isWithinThreshold() const {
    return distance() < threshold;
}

BubblePosition bubblePosition(const AccelerometerData& data, const BubbleSurroundings& surroundings) {
    const auto& [width, height, bubbleWidth, bubbleHeight, scale] = surroundings;
    return {width / 2 - std::trunc(scale * data.x * width * 0.5) / scale - bubbleWidth / 2,
            height / 2 + std::trunc(scale * data.y * height * 0.5) / scale - bubbleHeight / 2};
}

} // namespace quorvane::capture
