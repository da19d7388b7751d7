#pragma once

#include <cstddef>
#include <memory>
#include <utility>
#include <vector>

#include "Places/QVPlace.h"
#include "Platform/Location.h"

namespace quorvane {

using PlaceList = std::vector<std::shared_ptr<QVPlace>>;

/// The order of places as it is defined: strictly nearer, and both with a coordinate.
inline bool sortsAhead(const QVPlace& a, const QVPlace& b, const platform::Location& origin) {
    if (!a.location || !a.location->coordinate || !b.location || !b.location->coordinate) {
        return false;
    }
    return platform::distance(origin.coordinate, *a.location->coordinate) <
           platform::distance(origin.coordinate, *b.location->coordinate);
}

/// The sort as it is defined, with nothing spared: halves copied at each level, the distances in the comparison.
inline PlaceList naivelySorted(const PlaceList& places, const platform::Location& origin) {
    if (places.size() < 2) {
        return places;
    }
    const auto middle = places.begin() + static_cast<std::ptrdiff_t>(places.size() / 2);
    const PlaceList left = naivelySorted(PlaceList(places.begin(), middle), origin);
    const PlaceList right = naivelySorted(PlaceList(middle, places.end()), origin);
    PlaceList merged;
    merged.reserve(places.size());
    std::size_t l = 0;
    std::size_t r = 0;
    while (l < left.size() && r < right.size()) {
        merged.push_back(sortsAhead(*right[r], *left[l], origin) ? right[r++] : left[l++]);
    }
    merged.insert(merged.end(), left.begin() + static_cast<std::ptrdiff_t>(l), left.end());
    merged.insert(merged.end(), right.begin() + static_cast<std::ptrdiff_t>(r), right.end());
    return merged;
}

} // namespace quorvane
