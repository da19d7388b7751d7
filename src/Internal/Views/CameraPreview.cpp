#include "Internal/Views/CameraPreview.h"

#include <QQuickWindow>
#include <QSGImageNode>
#include <QSGTexture>
#include <memory>

#include "Internal/Views/FrameGeometry.h"
#include "Internal/Views/FrameImage.h"

namespace quorvane::capture {

CameraPreview::CameraPreview() {
    setFlag(ItemHasContents);
}

void CameraPreview::show(const platform::VideoFrame& frame) {
    QImage image = imageOf(frame);
    if (image.isNull()) {
        return;
    }
    picture = std::move(image);
    hasNewPicture = true;
    update();
}

void CameraPreview::clear() {
    picture = {};
    update();
}

void CameraPreview::geometryChange(const QRectF& now, const QRectF& before) {
    QQuickItem::geometryChange(now, before);
    update();
}

QSGNode* CameraPreview::updatePaintNode(QSGNode* before, UpdatePaintNodeData* /*data*/) {
    const QRectF visible = visiblePart(picture.size(), size());
    std::unique_ptr<QSGNode> old(before);
    if (visible.isEmpty()) {
        return nullptr;
    }
    auto* node = static_cast<QSGImageNode*>(old.release());
    const bool isNew = node == nullptr;
    if (isNew) {
        node = window()->createImageNode();
        node->setOwnsTexture(true);
        node->setFiltering(QSGTexture::Linear);
    }
    if (isNew || hasNewPicture) {
        node->setTexture(window()->createTextureFromImage(picture, QQuickWindow::TextureIsOpaque));
        hasNewPicture = false;
    }
    node->setRect(boundingRect());
    node->setSourceRect(visible);
    return node;
}

} // namespace quorvane::capture
