#pragma once

#include <QImage>

namespace quorvane::capture {

/// The picture as a camera sees it that a user holds it up to: see `FileCameras::Options`. A large one loses pixels.
[[nodiscard]] QImage heldUp(const QImage& picture);

} // namespace quorvane::capture
