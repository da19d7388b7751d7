#include "Internal/Views/PictureView.h"

#include <QDebug>
#include <QPainter>
#include <QQuickWindow>
#include <QSGImageNode>
#include <QSGTexture>
#include <QSvgRenderer>
#include <cmath>

#include <QtQml/qqml.h>

#include "Internal/Views/InterfaceFile.h"
#include "Platform/Precondition.h"

namespace quorvane::capture {

void PictureView::registerType() {
    static const int registered = qmlRegisterType<PictureView>("Quorvane.Capture", 1, 0, "Picture");
    static_cast<void>(registered);
}

PictureView::PictureView(QQuickItem* parent) : QQuickItem(parent) {
    setFlag(ItemHasContents);
}

PictureView::~PictureView() = default;

void PictureView::setImage(const QString& theName) {
    if (theName == name) {
        return;
    }
    name = theName;
    drawing = nullptr;
    if (!name.isEmpty()) {
        drawing = std::make_unique<QSvgRenderer>(QString::fromStdString(bundlePath(name.toStdString() + ".svg")));
        if (!drawing->isValid()) {
            qCritical() << "The bundle has no drawing of this name:" << name;
        }
        QV_PRECONDITION(drawing->isValid(), "a picture must be a drawing of the bundle");
        drawing->setAspectRatioMode(Qt::KeepAspectRatio);
    }
    const QSize size = drawing ? drawing->defaultSize() : QSize(0, 0);
    setImplicitSize(size.width(), size.height());
    redraw();
    Q_EMIT imageChanged();
}

void PictureView::setBorderWidth(qreal theWidth) {
    if (theWidth != lineWidth) {
        lineWidth = theWidth;
        redraw();
        Q_EMIT borderChanged();
    }
}

void PictureView::setBorderColor(const QColor& theColor) {
    if (theColor != lineColor) {
        lineColor = theColor;
        redraw();
        Q_EMIT borderChanged();
    }
}

QImage PictureView::drawn(qreal scale) const {
    const QSize pixels(static_cast<int>(std::ceil(width() * scale)), static_cast<int>(std::ceil(height() * scale)));
    if (pixels.isEmpty() || (!drawing && lineWidth <= 0)) {
        return {};
    }
    QImage image(pixels, QImage::Format_ARGB32_Premultiplied);
    image.fill(Qt::transparent);
    QPainter painter(&image);
    painter.setRenderHint(QPainter::Antialiasing);
    painter.scale(scale, scale);
    if (drawing) {
        drawing->render(&painter, QRectF(QPointF(), size()));
    }
    if (lineWidth > 0) {
        const qreal half = lineWidth / 2;
        painter.setPen(QPen(lineColor, lineWidth, Qt::SolidLine, Qt::SquareCap, Qt::MiterJoin));
        painter.drawRect(QRectF(QPointF(), size()).adjusted(half, half, -half, -half));
    }
    return image;
}

QSGNode* PictureView::updatePaintNode(QSGNode* before, UpdatePaintNodeData* /*data*/) {
    auto* node = static_cast<QSGImageNode*>(before);
    if (!isStale) {
        return node;
    }
    isStale = false;
    const qreal scale = window()->effectiveDevicePixelRatio();
    const QImage image = drawn(scale);
    if (image.isNull()) {
        delete node;
        return nullptr;
    }
    if (node == nullptr) {
        node = window()->createImageNode();
        node->setOwnsTexture(true);
        node->setFiltering(QSGTexture::Linear);
    }
    node->setTexture(window()->createTextureFromImage(image));
    node->setRect(0, 0, image.width() / scale, image.height() / scale);
    return node;
}

void PictureView::geometryChange(const QRectF& now, const QRectF& before) {
    QQuickItem::geometryChange(now, before);
    if (now.size() != before.size()) {
        redraw();
    }
}

void PictureView::itemChange(ItemChange change, const ItemChangeData& value) {
    QQuickItem::itemChange(change, value);
    if (change == ItemDevicePixelRatioHasChanged || change == ItemSceneChange) {
        redraw();
    }
}

void PictureView::redraw() {
    isStale = true;
    update();
}

} // namespace quorvane::capture
