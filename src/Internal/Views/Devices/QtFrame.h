#pragma once

#include <QVideoFrame>

#include "Platform/VideoFrame.h"

namespace quorvane::capture {

/// The same picture with pixels of its own, since a camera takes those of its frames along when it goes. Empty when it
/// cannot be read.
[[nodiscard]] platform::VideoFrame videoFrameOf(const QVideoFrame& frame);

} // namespace quorvane::capture
