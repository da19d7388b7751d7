#pragma once

#include <QImage>
#include <QVideoFrame>
#include <memory>

#include "Platform/Image.h"
#include "Platform/VideoFrame.h"

namespace quorvane::capture {

/// The same picture with pixels of its own, since a camera takes those of its frames along when it goes. Empty when it
/// cannot be read.
[[nodiscard]] platform::VideoFrame videoFrameOf(const QVideoFrame& frame);

/// A photo of what a camera saw; null where @p picture is.
[[nodiscard]] std::shared_ptr<const platform::Image> photoOf(const QImage& picture);

} // namespace quorvane::capture
