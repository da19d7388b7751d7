#pragma once

#include <QImage>

#include "Platform/VideoFrame.h"

namespace quorvane::capture {

/// The frame as a picture of its own memory, upright, in `QImage::Format_RGB32`. A null image for an empty frame, and
/// for one whose planes are missing or too short.
[[nodiscard]] QImage imageOf(const platform::VideoFrame& frame);

/// A frame of the picture's pixels, which it shares.
[[nodiscard]] platform::VideoFrame frameOf(const QImage& image);

} // namespace quorvane::capture
