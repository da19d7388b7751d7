#include "Platform/Qt/PositionInfo.h"

#include <QDateTime>
#include <QGeoPositionInfo>
#include <chrono>
#include <cmath>

namespace quorvane::platform::qt {
namespace {

double attribute(const QGeoPositionInfo& info, QGeoPositionInfo::Attribute name, double otherwise) {
    const double value = info.hasAttribute(name) ? info.attribute(name) : otherwise;
    return std::isfinite(value) ? value : otherwise;
}

} // namespace

Location locationOf(const QGeoPositionInfo& info, double accuracy) {
    return {{info.coordinate().latitude(), info.coordinate().longitude()},
            attribute(info, QGeoPositionInfo::HorizontalAccuracy, accuracy),
            attribute(info, QGeoPositionInfo::VerticalAccuracy, -1),
            {}};
}

Date dateOf(const QDateTime& moment) {
    return Date(std::chrono::milliseconds(moment.toMSecsSinceEpoch()));
}

} // namespace quorvane::platform::qt
