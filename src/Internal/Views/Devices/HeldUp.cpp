#include "Internal/Views/Devices/HeldUp.h"

#include <QPainter>
#include <algorithm>

namespace quorvane::capture {
namespace {

/// A little less than the three quarters that the scanner's frame takes, so that there is some white around it.
constexpr double shareOfWidth = 0.7;
constexpr int longestLength = 1600;

} // namespace

QImage heldUp(const QImage& picture) {
    if (picture.isNull()) {
        return {};
    }
    const bool isLarge = std::max(picture.width(), picture.height()) > longestLength;
    const QImage shown =
        isLarge ? picture.scaled(longestLength, longestLength, Qt::KeepAspectRatio, Qt::SmoothTransformation) : picture;
    const int width = static_cast<int>(std::max(shown.width(), shown.height()) / shareOfWidth) + 1;
    QImage frame(width, width * 16 / 9, QImage::Format_RGB888);
    frame.fill(Qt::white);
    QPainter(&frame).drawImage((frame.width() - shown.width()) / 2, (frame.height() - shown.height()) / 2, shown);
    return frame;
}

} // namespace quorvane::capture
