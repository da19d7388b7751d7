#pragma once

#include <QImage>
#include <QSize>
#include <QString>

#include "Platform/VideoFrame.h"

namespace quorvane::capture {

/// Points: small and large phones and a tablet, upright and lying.
inline constexpr QSize screenshotSizes[] = {{360, 640}, {640, 360}, {412, 915}, {915, 412}, {800, 1280}, {1280, 800}};

/// What the camera sees in a screenshot.
enum class Surroundings { light, dark };

[[nodiscard]] const char* nameOf(Surroundings surroundings);

/// A shelf with things on it, in daylight or at night.
[[nodiscard]] platform::VideoFrame scene(Surroundings surroundings);

/// "360x640".
[[nodiscard]] QString textOf(QSize size);

/// Keeps @p picture for people to look at, as `<name>@<ratio>x.png` in the folder `screenshots` of the build. Fails the
/// test when it is of another size than @p points at @p ratio, or all of one colour.
void keepScreenshot(const QImage& picture, const QString& name, QSize points, double ratio);

} // namespace quorvane::capture
