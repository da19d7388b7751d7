#pragma once

#include <QColor>
#include <QImage>
#include <QQuickItem>
#include <memory>

QT_BEGIN_NAMESPACE
class QSvgRenderer;
QT_END_NAMESPACE

namespace quorvane::capture {

/// Shows a drawing of the library's bundle as large as fits, drawn for the pixels of the screen that it is on, on a
/// ground of one colour, and a border around itself. `Picture` in interface files, which import `Quorvane.Capture`.
///
/// Whatever is round on a screen is drawn by it: all of them are pictures to the graphics processor, which is made
/// ready for one kind of thing only.
class PictureView : public QQuickItem {
    Q_OBJECT
    Q_PROPERTY(QString image READ image WRITE setImage NOTIFY imageChanged)
    Q_PROPERTY(QColor color READ color WRITE setColor NOTIFY colorChanged)
    Q_PROPERTY(qreal radius READ radius WRITE setRadius NOTIFY radiusChanged)
    Q_PROPERTY(qreal borderWidth READ borderWidth WRITE setBorderWidth NOTIFY borderChanged)
    Q_PROPERTY(QColor borderColor READ borderColor WRITE setBorderColor NOTIFY borderChanged)

public:
    /// Makes `Picture` known to interface files; again does nothing.
    static void registerType();

    explicit PictureView(QQuickItem* parent = nullptr);
    ~PictureView() override;

    /// The name of a drawing, without its ending; empty for none. One that the bundle does not have is a fatal error.
    /// Its size is the view's implicit size.
    void setImage(const QString& theName);
    [[nodiscard]] QString image() const { return name; }

    /// The ground's; transparent for none.
    void setColor(const QColor& theColor);
    [[nodiscard]] QColor color() const { return groundColor; }
    /// Points, of the corners of the ground and of the border.
    void setRadius(qreal theRadius);
    [[nodiscard]] qreal radius() const { return cornerRadius; }

    /// Points, inside the view's edges; 0 for none.
    void setBorderWidth(qreal theWidth);
    [[nodiscard]] qreal borderWidth() const { return lineWidth; }
    void setBorderColor(const QColor& theColor);
    [[nodiscard]] QColor borderColor() const { return lineColor; }

    /// The view as it is drawn with @p scale device pixels in a point.
    [[nodiscard]] QImage drawn(qreal scale) const;

Q_SIGNALS:
    void imageChanged();
    void colorChanged();
    void radiusChanged();
    void borderChanged();

protected:
    void updatePolish() override;
    QSGNode* updatePaintNode(QSGNode* before, UpdatePaintNodeData* data) override;
    void geometryChange(const QRectF& now, const QRectF& before) override;
    void itemChange(ItemChange change, const ItemChangeData& value) override;

private:
    [[nodiscard]] QImage draw(QSize pixels, qreal scale) const;
    void redraw();

    QString name;
    std::unique_ptr<QSvgRenderer> drawing;
    QColor groundColor = Qt::transparent;
    qreal cornerRadius = 0;
    qreal lineWidth = 0;
    QColor lineColor = Qt::transparent;
    /// For the window's pixels, drawn on the main thread.
    QImage picture;
    qreal pictureScale = 1;
    bool isStale = true;
};

} // namespace quorvane::capture
