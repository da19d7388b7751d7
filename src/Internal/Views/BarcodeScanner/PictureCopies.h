#pragma once

#include "Internal/Views/BarcodeScanner/GrayPicture.h"

namespace quorvane::capture {

/// Each of these makes a picture from another, for a recogniser that reads it where it does not read the original, and
/// says with its placement where its points lie. The memory of the copy is used again. No picture is empty.

/// Each pixel is the average of @p factor by @p factor ones; false, and no copy, where that leaves nothing.
[[nodiscard]] bool makeReduced(const GrayPicture& picture, int factor, GrayPicture& copy);

/// Resampled to @p scale times the width and height.
void makeScaled(const GrayPicture& picture, double scale, GrayPicture& copy);

/// Turned by @p degrees and as large as that makes it, but with at most @p rows rows, as any row tells all of a code of
/// bars, and its rows @p stretch times as long.
void makeTurned(const GrayPicture& picture, double degrees, int rows, double stretch, GrayPicture& copy);

/// A square of @p side pixels whose middle shows the given point, turned and enlarged.
void makeWindow(const GrayPicture& picture, double x, double y, double degrees, double scale, int side,
                GrayPicture& copy);

void makeInverted(const GrayPicture& picture, GrayPicture& copy);

/// With edges made stronger.
void makeSharper(const GrayPicture& picture, GrayPicture& copy);

/// Each row is the average of @p count rows.
void makeSmoothRows(const GrayPicture& picture, int count, GrayPicture& copy);

/// With @p border pixels around it, as bright as the brightest of its own border.
void makeBordered(const GrayPicture& picture, int border, GrayPicture& copy);

/// A part of it.
void makeCropped(const GrayPicture& picture, int left, int top, int width, int height, GrayPicture& copy);

} // namespace quorvane::capture
