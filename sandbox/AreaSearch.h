#pragma once

#include <cstdint>
#include <map>
#include <string>
#include <string_view>
#include <vector>

#include "Platform/Location.h"
#include "sandbox/Database.h"

namespace quorvane::sandbox {

/// A rectangle of latitudes and longitudes in degrees.
struct Area {
    double south = -90;
    double north = 90;
    double west = -180;
    double east = 180;
};

/// Rectangles that together hold every point within @p radius metres of @p center: two where the circle crosses the
/// date line, all longitudes where it holds a pole.
[[nodiscard]] std::vector<Area> areasAround(const platform::Coordinate& center, double radius);

/// A row of a table, and its metres from where one searched.
struct Found {
    double distance = 0;
    std::string body;
};

/// The rows of the table "places" or "tasks" that are farther than @p minimum metres from @p center and at most
/// @p radius away, by their number. The table's R*Tree narrows the search, the great circle decides. A negative
/// minimum excludes nothing. @p condition is SQL on the table, whose name in it is "t".
[[nodiscard]] std::map<std::int64_t, Found> findWithin(Database& database, std::string_view table,
                                                       const platform::Coordinate& center, double radius,
                                                       double minimum, std::string_view condition = "1");

} // namespace quorvane::sandbox
