#pragma once

#include <QQuickItem>

namespace quorvane::capture {

/// Black, so that nothing of the host shows where there is no picture.
class Backdrop final : public QQuickItem {
public:
    Backdrop() { setFlag(ItemHasContents); }

protected:
    QSGNode* updatePaintNode(QSGNode* before, UpdatePaintNodeData* data) override;
    void geometryChange(const QRectF& now, const QRectF& before) override;
};

} // namespace quorvane::capture
