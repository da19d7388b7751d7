#pragma once

#include <QtGlobal>

#include "Platform/Location.h"

QT_BEGIN_NAMESPACE
class QDateTime;
class QGeoPositionInfo;
QT_END_NAMESPACE

namespace quorvane::platform::qt {

/// Without a time. @p accuracy stands where none is told; a negative one that is told stays.
[[nodiscard]] Location locationOf(const QGeoPositionInfo& info, double accuracy);

[[nodiscard]] Date dateOf(const QDateTime& moment);

} // namespace quorvane::platform::qt
