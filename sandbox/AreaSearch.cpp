#include "sandbox/AreaSearch.h"

#include <algorithm>
#include <cmath>
#include <numbers>

namespace quorvane::sandbox {
namespace {

/// Metres of a degree of latitude, a little too few, so that a rectangle is never too small.
constexpr double fewestMetresPerDegree = 111'000;

} // namespace

std::vector<Area> areasAround(const platform::Coordinate& center, double radius) {
    const double reach = radius / fewestMetresPerDegree;
    Area area{.south = std::max(-90.0, center.latitude - reach), .north = std::min(90.0, center.latitude + reach)};
    const double farthestLatitude = std::max(std::abs(center.latitude - reach), std::abs(center.latitude + reach));
    if (farthestLatitude >= 90) {
        return {area};
    }
    constexpr double radiansPerDegree = std::numbers::pi / 180;
    const double sine = std::sin(reach * radiansPerDegree) / std::cos(center.latitude * radiansPerDegree);
    const double width = std::asin(std::min(1.0, sine)) / radiansPerDegree;
    area.west = center.longitude - width;
    area.east = center.longitude + width;
    if (area.west < -180) {
        return {{area.south, area.north, area.west + 360, 180}, {area.south, area.north, -180, area.east}};
    }
    if (area.east > 180) {
        return {{area.south, area.north, area.west, 180}, {area.south, area.north, -180, area.east - 360}};
    }
    return {area};
}

std::map<std::int64_t, Found> findWithin(Database& database, std::string_view table, const platform::Coordinate& center,
                                         double radius, double minimum, std::string_view condition) {
    const std::string name(table);
    const std::string sql = "SELECT t.id, t.latitude, t.longitude, t.body FROM " + name + "_area AS a JOIN " + name +
                            " AS t ON t.id = a.id WHERE a.south <= ? AND a.north >= ? AND a.west <= ? AND a.east >= ?" +
                            " AND (" + std::string(condition) + ")";
    std::map<std::int64_t, Found> found;
    for (const Area& area : areasAround(center, radius)) {
        Statement rows = database.prepare(sql);
        rows.bind(area.north).bind(area.south).bind(area.east).bind(area.west);
        while (rows.step()) {
            const double distance = platform::distance(center, {rows.real(1), rows.real(2)});
            if (distance <= radius && distance > minimum) {
                found.insert_or_assign(rows.integer(0), Found{distance, rows.text(3)});
            }
        }
    }
    return found;
}

} // namespace quorvane::sandbox
