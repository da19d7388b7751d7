#pragma once

#include <QQuickItem>
#include <QRectF>

namespace quorvane::capture {

/// Leaves of @p item what lies in @p whole and not in @p hole: the item fills its property `maskPath`, a path of both
/// rectangles, by the even-odd rule. An item without that property is a fatal error.
void setEvenOddMask(QQuickItem& item, const QRectF& whole, const QRectF& hole);

} // namespace quorvane::capture
