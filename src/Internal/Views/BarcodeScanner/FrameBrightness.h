#pragma once

#include <optional>

#include "Internal/Views/BarcodeScanner/GrayPicture.h"
#include "Platform/BarcodeReader.h"
#include "Platform/VideoFrame.h"

namespace quorvane::capture {

/// Takes the brightness of the part of @p frame that is aimed at, with a margin around it for a code that fills the
/// aim; of the whole frame where there is no aim. It is not turned upright. @p picture becomes empty where the frame
/// shows nothing there, or is none: without pixels, with too short rows, or too large to be one.
void takeBrightness(const platform::VideoFrame& frame, const std::optional<platform::BarcodeReader::Area>& aim,
                    GrayPicture& picture);

} // namespace quorvane::capture
