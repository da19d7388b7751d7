#pragma once

#include <QVideoFrame>

#include "Platform/VideoFrame.h"

namespace quorvane::capture {

/// The same picture, which shares the pixels where their format is one of ours. Empty when it cannot be read.
[[nodiscard]] platform::VideoFrame videoFrameOf(const QVideoFrame& frame);

} // namespace quorvane::capture
