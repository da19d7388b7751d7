#pragma once

#include <QQuickItem>
#include <functional>

namespace quorvane::capture {

/// The outermost item of a screen. Events that nothing on the screen wants end here: what lies behind gets none, and
/// the tabulator does not leave.
class RootView final : public QQuickItem {
public:
    /// Called when its size has changed, and soon after `setNeedsLayout`.
    std::function<void()> layout;
    /// Called when it has left its window, by whomever.
    std::function<void()> removed;

    RootView();

    void setNeedsLayout() { polish(); }

protected:
    void geometryChange(const QRectF& now, const QRectF& before) override;
    void itemChange(ItemChange change, const ItemChangeData& value) override;
    void updatePolish() override;
    void mousePressEvent(QMouseEvent* event) override;
    void touchEvent(QTouchEvent* event) override;
    void wheelEvent(QWheelEvent* event) override;
    void hoverMoveEvent(QHoverEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;
};

} // namespace quorvane::capture
