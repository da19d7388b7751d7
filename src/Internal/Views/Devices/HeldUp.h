#pragma once

#include <QColor>
#include <QImage>

namespace quorvane::capture {

/// The colour of the lighter half of the picture's edge: a code that reaches the edge goes on into its own paper, and a
/// dark photograph into no white that would outshine it. Not valid for no picture.
[[nodiscard]] QColor paperOf(const QImage& picture);

/// The picture as a camera sees it that a user holds it up to, with @p paper around it: see `FileCameras::Options`. A
/// large one loses pixels.
[[nodiscard]] QImage heldUp(const QImage& picture, const QColor& paper);

} // namespace quorvane::capture
