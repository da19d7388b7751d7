#pragma once

#include <QRectF>
#include <QSizeF>
#include <optional>

#include "Platform/BarcodeReader.h"
#include "Platform/VideoFrame.h"

namespace quorvane::capture {

/// As a user sees it: after the rotation.
[[nodiscard]] QSizeF uprightSize(const platform::VideoFrame& frame);

/// The part of a picture, in its pixels, that is seen where it fills a view and keeps its proportions: what does not
/// fit is cut off, the same on both sides. Empty when either is.
[[nodiscard]] QRectF visiblePart(const QSizeF& picture, const QSizeF& view);

/// What of an upright picture is seen within @p part of a view that it fills; none when that is nothing.
[[nodiscard]] std::optional<platform::BarcodeReader::Area> areaSeenIn(const QRectF& part, const QSizeF& view,
                                                                      const QSizeF& picture);

} // namespace quorvane::capture
