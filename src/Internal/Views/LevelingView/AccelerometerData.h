#pragma once

namespace quorvane::capture {

/// Where the reticle stands: at the top for a device held upright, in the middle for one held flat.
enum class ReticleType : int { top = 0, middle = 1 };

/// The filtered reading of the accelerometer, in units of standard gravity.
struct AccelerometerData {
    double x = 0;
    double y = 0;
    /// How much of the reading before stays with each sample.
    double k = 0.9;
    ReticleType reticleType = ReticleType::top;

    /// Takes a sample into account.
    void filter(double ax, double ay);

    /// How far the reading is from the one that is level.
    [[nodiscard]] double distance() const;
    /// Whether that is less than `threshold`.
    [[nodiscard]] bool isWithinThreshold() const;

    static constexpr double threshold = 0.15;
};

/// Points.
struct BubblePosition {
    double x = 0;
    double y = 0;
};

struct BubbleSurroundings {
    /// Points: the view in which the bubble moves, and the bubble's picture.
    double width = 0;
    double height = 0;
    double bubbleWidth = 0;
    double bubbleHeight = 0;
    /// Device pixels in a point.
    double scale = 1;
};

/// The top left corner of the bubble. It moves by whole device pixels, truncated towards the centre: left with a
/// positive x, down with a positive y.
[[nodiscard]] BubblePosition bubblePosition(const AccelerometerData& data, const BubbleSurroundings& surroundings);

} // namespace quorvane::capture
