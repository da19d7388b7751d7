#include "Internal/Views/PictureView.h"

#include <QCache>
#include <QDebug>
#include <QPainter>
#include <QQuickWindow>
#include <QSGImageNode>
#include <QSGTexture>
#include <QSvgRenderer>
#include <algorithm>
#include <cmath>

#include <QtQml/qqml.h>

#include "Internal/Views/InterfaceFile.h"
#include "Platform/Precondition.h"
#include "Platform/Registry.h"

namespace quorvane::capture {
namespace {

/// What was drawn lately, for the next screen of that kind.
struct Drawn {
    static constexpr int mostKilobytes = 16'384;

    QCache<QString, QImage> images{mostKilobytes};
};

} // namespace

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

void PictureView::setColor(const QColor& theColor) {
    if (theColor != groundColor) {
        groundColor = theColor;
        redraw();
        Q_EMIT colorChanged();
    }
}

void PictureView::setRadius(qreal theRadius) {
    if (theRadius != cornerRadius) {
        cornerRadius = theRadius;
        redraw();
        Q_EMIT radiusChanged();
    }
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
    if (pixels.isEmpty() || (!drawing && lineWidth <= 0 && groundColor.alpha() == 0)) {
        return {};
    }
    if (!platform::isInstalled()) {
        return draw(pixels, scale);
    }
    auto& images = platform::shared<Drawn>().images;
    const QString key = QString("%1 %2 %3 %4 %5 %6 %7 %8")
                            .arg(name)
                            .arg(width())
                            .arg(height())
                            .arg(scale)
                            .arg(lineWidth)
                            .arg(lineColor.rgba())
                            .arg(groundColor.rgba())
                            .arg(cornerRadius);
    if (const QImage* const before = images.object(key)) {
        return *before;
    }
    QImage image = draw(pixels, scale);
    images.insert(key, new QImage(image), static_cast<int>(image.sizeInBytes() / 1024));
    return image;
}

QImage PictureView::draw(QSize pixels, qreal scale) const {
    QImage image(pixels, QImage::Format_ARGB32_Premultiplied);
    image.fill(Qt::transparent);
    QPainter painter(&image);
    painter.setRenderHint(QPainter::Antialiasing);
    painter.scale(scale, scale);
    if (groundColor.alpha() > 0) {
        painter.setPen(Qt::NoPen);
        painter.setBrush(groundColor);
        painter.drawRoundedRect(QRectF(QPointF(), size()), cornerRadius, cornerRadius);
        painter.setBrush(Qt::NoBrush);
    }
    if (drawing) {
        drawing->render(&painter, QRectF(QPointF(), size()));
    }
    if (lineWidth > 0) {
        const qreal half = lineWidth / 2;
        painter.setPen(QPen(lineColor, lineWidth, Qt::SolidLine, Qt::SquareCap, Qt::MiterJoin));
        const qreal radius = std::max(0.0, cornerRadius - half);
        painter.drawRoundedRect(QRectF(QPointF(), size()).adjusted(half, half, -half, -half), radius, radius);
    }
    return image;
}

void PictureView::updatePolish() {
    pictureScale = window()->effectiveDevicePixelRatio();
    picture = drawn(pictureScale);
    isStale = true;
    update();
}

QSGNode* PictureView::updatePaintNode(QSGNode* before, UpdatePaintNodeData* /*data*/) {
    auto* node = static_cast<QSGImageNode*>(before);
    // The node is gone where the scene was released meanwhile.
    if (node != nullptr && !isStale) {
        return node;
    }
    isStale = false;
    if (picture.isNull()) {
        delete node;
        return nullptr;
    }
    if (node == nullptr) {
        node = window()->createImageNode();
        node->setOwnsTexture(true);
        node->setFiltering(QSGTexture::Linear);
    }
    node->setTexture(window()->createTextureFromImage(picture));
    node->setRect(0, 0, picture.width() / pictureScale, picture.height() / pictureScale);
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
    polish();
}

} // namespace quorvane::capture
