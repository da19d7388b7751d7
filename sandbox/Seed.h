#pragma once

#include <cstdint>
#include <string>
#include <vector>

#include "Platform/Location.h"
#include "sandbox/PlaceStore.h"

namespace quorvane::sandbox {

/// Invented places and the tasks at them.
struct SeedData {
    std::vector<StoredPlace> places;
    std::vector<StoredTask> tasks;
};

/// Places scattered around @p points, which has at least one: near one point within 3 km, along a track within 600 m
/// of it. The same arguments make the same data. Every place lies within 90 degrees of latitude and 180 of longitude.
/// At the first of them, within 25 m of the first point, is the task "task-00000". Together the tasks have every type
/// of question, of guide and of frame for a photo, and every kind of reward.
[[nodiscard]] SeedData makeSeedData(std::uint64_t seed, const std::vector<platform::Coordinate>& points);

/// Names the arguments, so that a store can tell whether its data come from them.
[[nodiscard]] std::string seedName(std::uint64_t seed, const std::vector<platform::Coordinate>& points);

} // namespace quorvane::sandbox
