#include "Internal/Views/FrameGeometry.h"

#include <algorithm>

namespace quorvane::capture {

QSizeF uprightSize(const platform::VideoFrame& frame) {
    const QSizeF stored(frame.width, frame.height);
    return frame.rotation % 180 == 0 ? stored : stored.transposed();
}

QRectF visiblePart(const QSizeF& picture, const QSizeF& view) {
    if (picture.isEmpty() || view.isEmpty()) {
        return {};
    }
    const double scale = std::max(view.width() / picture.width(), view.height() / picture.height());
    const QSizeF seen = view / scale;
    return {QPointF((picture.width() - seen.width()) / 2, (picture.height() - seen.height()) / 2), seen};
}

std::optional<platform::BarcodeReader::Area> areaSeenIn(const QRectF& part, const QSizeF& view, const QSizeF& picture) {
    const QRectF visible = visiblePart(picture, view);
    const QRectF inView = part.intersected(QRectF(QPointF(), view));
    if (visible.isEmpty() || inView.isEmpty()) {
        return std::nullopt;
    }
    const double scale = visible.width() / view.width();
    return platform::BarcodeReader::Area{
        (visible.x() + inView.x() * scale) / picture.width(), (visible.y() + inView.y() * scale) / picture.height(),
        inView.width() * scale / picture.width(), inView.height() * scale / picture.height()};
}

} // namespace quorvane::capture
