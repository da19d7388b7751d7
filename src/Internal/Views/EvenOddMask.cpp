#include "Internal/Views/EvenOddMask.h"

#include <QString>

#include "Platform/Precondition.h"

namespace quorvane::capture {
namespace {

QString pathOf(const QRectF& rectangle) {
    return QString("M %1 %2 L %3 %2 L %3 %4 L %1 %4 Z")
        .arg(rectangle.left())
        .arg(rectangle.top())
        .arg(rectangle.right())
        .arg(rectangle.bottom());
}

} // namespace

void setEvenOddMask(QQuickItem& item, const QRectF& whole, const QRectF& hole) {
    const bool fits = item.metaObject()->indexOfProperty("maskPath") >= 0;
    QV_PRECONDITION(fits, "a masked item of an interface file must have a property maskPath");
    item.setProperty("maskPath", pathOf(whole) + ' ' + pathOf(hole));
}

} // namespace quorvane::capture
