#pragma once

#include <memory>
#include <vector>

#include "Places/QVPlace.h"
#include "Platform/Location.h"

namespace quorvane {

using QVPlaceList = std::vector<std::shared_ptr<QVPlace>>;

/// Sorts @p places by their distance from @p origin, ascending, by a merge sort: halves of n/2 and the rest, and a
/// place of the right half goes first only when it is strictly nearer. A place without a coordinate is neither nearer
/// nor farther than any other, so it keeps its neighbours where the merging leaves them; no other sort gives the same
/// order. Distances are computed once a place.
void sortByDistance(QVPlaceList& places, const platform::Location& origin);

} // namespace quorvane
