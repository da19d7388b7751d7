#include "Internal/Views/Devices/HeldUp.h"

#include <QPainter>
#include <algorithm>
#include <cstddef>
#include <vector>

namespace quorvane::capture {
namespace {

/// A little less than the three quarters that the scanner's frame takes, so that there is some paper around it.
constexpr double shareOfWidth = 0.7;
/// What lies in the scanner's frame then is read in full.
constexpr int longestLength = 1200;

} // namespace

QColor paperOf(const QImage& picture) {
    if (picture.isNull()) {
        return {};
    }
    std::vector<QColor> edge;
    for (int x = 0; x < picture.width(); ++x) {
        edge.push_back(picture.pixelColor(x, 0));
        edge.push_back(picture.pixelColor(x, picture.height() - 1));
    }
    for (int y = 0; y < picture.height(); ++y) {
        edge.push_back(picture.pixelColor(0, y));
        edge.push_back(picture.pixelColor(picture.width() - 1, y));
    }
    const auto middle = edge.begin() + static_cast<std::ptrdiff_t>(edge.size() / 2);
    std::nth_element(edge.begin(), middle, edge.end(),
                     [](const QColor& a, const QColor& b) { return a.lightnessF() < b.lightnessF(); });
    int red = 0;
    int green = 0;
    int blue = 0;
    const auto count = static_cast<int>(edge.end() - middle);
    for (auto color = middle; color != edge.end(); ++color) {
        red += color->red();
        green += color->green();
        blue += color->blue();
    }
    return {red / count, green / count, blue / count};
}

QImage heldUp(const QImage& picture, const QColor& paper) {
    if (picture.isNull()) {
        return {};
    }
    const bool isLarge = std::max(picture.width(), picture.height()) > longestLength;
    const QImage shown =
        isLarge ? picture.scaled(longestLength, longestLength, Qt::KeepAspectRatio, Qt::SmoothTransformation) : picture;
    const int width = static_cast<int>(std::max(shown.width(), shown.height()) / shareOfWidth) + 1;
    QImage frame(width, width * 16 / 9, QImage::Format_RGB888);
    frame.fill(paper);
    QPainter(&frame).drawImage((frame.width() - shown.width()) / 2, (frame.height() - shown.height()) / 2, shown);
    return frame;
}

} // namespace quorvane::capture
