#include "Internal/Views/Backdrop.h"

#include <QImage>
#include <QQuickWindow>
#include <QSGImageNode>

namespace quorvane::capture {

QSGNode* Backdrop::updatePaintNode(QSGNode* before, UpdatePaintNodeData* /*data*/) {
    auto* node = static_cast<QSGImageNode*>(before);
    if (node == nullptr) {
        // A picture that might be transparent, as those above it are: the graphics processor is made ready for one
        // kind.
        QImage black(1, 1, QImage::Format_ARGB32_Premultiplied);
        black.fill(Qt::black);
        node = window()->createImageNode();
        node->setOwnsTexture(true);
        node->setTexture(window()->createTextureFromImage(black));
    }
    node->setRect(boundingRect());
    return node;
}

void Backdrop::geometryChange(const QRectF& now, const QRectF& before) {
    QQuickItem::geometryChange(now, before);
    update();
}

} // namespace quorvane::capture
