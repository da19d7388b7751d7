#pragma once

#include <QImage>
#include <QQuickItem>

#include "Platform/VideoFrame.h"

namespace quorvane::capture {

/// Shows what a camera sees, filling the item and keeping the picture's proportions. Nothing before the first frame.
class CameraPreview : public QQuickItem {
public:
    CameraPreview();

    /// What is shown from the next drawing on. An empty frame, or one that cannot be read, leaves what is shown.
    void show(const platform::VideoFrame& frame);
    void clear();

    /// Of the picture that is shown, upright; empty when none is.
    [[nodiscard]] QSize pictureSize() const { return picture.size(); }

protected:
    QSGNode* updatePaintNode(QSGNode* before, UpdatePaintNodeData* data) override;
    void geometryChange(const QRectF& now, const QRectF& before) override;

private:
    QImage picture;
    bool hasNewPicture = false;
};

} // namespace quorvane::capture
