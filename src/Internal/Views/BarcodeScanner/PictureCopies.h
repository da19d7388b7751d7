#pragma once

#include "Internal/Views/BarcodeScanner/GrayPicture.h"

namespace quorvane::capture {

/// Each of these makes a picture from another, for a recogniser that reads it where it does not read the original, and
/// says with its placement where its points lie. The memory of the copy is used again. No picture is empty.

/// Each pixel is the average of @p factor by @p factor ones; false, and no copy, where that leaves nothing.
[[nodiscard]] bool makeReduced(const GrayPicture& picture, int factor, GrayPicture& copy);

/// Resampled to @p scale times the width and height.
void makeScaled(const GrayPicture& picture, double scale, GrayPicture& copy);

/// Turned by @p degrees, as large as it needs to be, with only so many rows as are there at most @p rows: enough for
/// codes of bars, of which any row tells all, and cheap.
void makeTurned(const GrayPicture& picture, double degrees, int rows, GrayPicture& copy);

void makeInverted(const GrayPicture& picture, GrayPicture& copy);

/// With edges made stronger.
void makeSharper(const GrayPicture& picture, GrayPicture& copy);

/// With @p border pixels around it, as bright as the brightest of its own border.
void makeBordered(const GrayPicture& picture, int border, GrayPicture& copy);

/// A part of it.
void makeCropped(const GrayPicture& picture, int left, int top, int width, int height, GrayPicture& copy);

} // namespace quorvane::capture
