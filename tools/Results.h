#pragma once

#include <cstddef>
#include <limits>
#include <set>
#include <string>

#include "JSON/AnyCodable.h"
#include "Platform/Location.h"
#include "Search/QVSearchService.h"

namespace quorvane::tool {

class Terminal;

// What a search found: as a table, and as JSON.

/// How a list is shown.
struct ListStyle {
    std::size_t indent = 2;
    /// Of longer lists the beginning is shown, and how many more there are.
    std::size_t mostRows = std::numeric_limits<std::size_t>::max();
    /// The identifiers of places that are marked as the host's own.
    std::set<std::string> own = {};
};

/// What the user is offered or has earned, as short as it can be said: "A hot drink (earned)".
[[nodiscard]] std::string rewardText(const QVReward& reward);

/// In the order in which they are, with their distances from @p point. No table where there are none.
void printPlaces(const QVPlaceList& places, const platform::Coordinate& point, Terminal& terminal,
                 const ListStyle& style = {});
/// Each with its number in the list.
void printTasks(const QVTaskList& tasks, Terminal& terminal, const ListStyle& style = {});

/// A list of {"distance": metres, "place": {...}}.
[[nodiscard]] AnyCodable::List documentOf(const QVPlaceList& places, const platform::Coordinate& point);
/// A list of {"distanceText": "2.00 miles away", "task": {...}}.
[[nodiscard]] AnyCodable::List documentOf(const QVTaskList& tasks);
/// {"latitude": ..., "longitude": ...}
[[nodiscard]] AnyCodable::Dictionary documentOf(const platform::Coordinate& coordinate);

} // namespace quorvane::tool
