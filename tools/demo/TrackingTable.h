#pragma once

#include <cstddef>
#include <list>
#include <string>

#include "tools/demo/TrackingReasons.h"

namespace quorvane::tool {

class Terminal;

/// Events of a sync in words: "stopped; entered Golden Crumb and its fence; left Fern Hollow".
[[nodiscard]] std::string wordsFor(const std::vector<TrackedRide::Event>& events);

/// What tracking did on one ride: the syncs that found events, stops, calls of the delegate, and what it cost.
void printTracking(const TrackedPreset& preset, Terminal& terminal);

/// The numbers of all rides side by side, but for those that are nothing everywhere.
void printSideBySide(const std::list<TrackedPreset>& presets, Terminal& terminal);

} // namespace quorvane::tool
