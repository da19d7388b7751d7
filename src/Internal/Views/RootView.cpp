#include "Internal/Views/RootView.h"

#include <QHoverEvent>
#include <QKeyEvent>
#include <QMouseEvent>
#include <QTouchEvent>
#include <QWheelEvent>

namespace quorvane::capture {
namespace {

/// Above whatever the host shows.
constexpr double topmost = 1'000'000;

} // namespace

RootView::RootView() {
    setFlag(ItemIsFocusScope);
    setAcceptedMouseButtons(Qt::AllButtons);
    setAcceptTouchEvents(true);
    setAcceptHoverEvents(true);
    setZ(topmost);
}

void RootView::geometryChange(const QRectF& now, const QRectF& before) {
    QQuickItem::geometryChange(now, before);
    if (now.size() != before.size() && layout) {
        layout();
    }
}

void RootView::itemChange(ItemChange change, const ItemChangeData& value) {
    QQuickItem::itemChange(change, value);
    if (change == ItemSceneChange && value.window == nullptr && removed) {
        removed();
    }
}

void RootView::updatePolish() {
    if (layout) {
        layout();
    }
}

void RootView::mousePressEvent(QMouseEvent* event) {
    event->accept();
}

void RootView::touchEvent(QTouchEvent* event) {
    event->accept();
}

void RootView::wheelEvent(QWheelEvent* event) {
    event->accept();
}

void RootView::hoverMoveEvent(QHoverEvent* event) {
    event->accept();
}

void RootView::keyPressEvent(QKeyEvent* event) {
    event->setAccepted(event->key() == Qt::Key_Tab || event->key() == Qt::Key_Backtab);
}

} // namespace quorvane::capture
