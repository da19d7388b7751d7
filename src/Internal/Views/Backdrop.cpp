#include "Internal/Views/Backdrop.h"

#include <QQuickWindow>
#include <QSGRectangleNode>

namespace quorvane::capture {

QSGNode* Backdrop::updatePaintNode(QSGNode* before, UpdatePaintNodeData* /*data*/) {
    auto* node = static_cast<QSGRectangleNode*>(before);
    if (node == nullptr) {
        node = window()->createRectangleNode();
        node->setColor(Qt::black);
    }
    node->setRect(boundingRect());
    return node;
}

void Backdrop::geometryChange(const QRectF& now, const QRectF& before) {
    QQuickItem::geometryChange(now, before);
    update();
}

} // namespace quorvane::capture
