#pragma once

#include <string>
#include <utility>
#include <variant>
#include <vector>

#include "Platform/Location.h"

namespace quorvane::testing {

/// A recorded way, in the order of its recording. Times need not ascend.
struct Track {
    /// Empty where the recording has none.
    std::string name;
    /// One at least.
    std::vector<platform::Location> fixes;
    /// Whether every fix carried a time. Where one did not, the reader says which it got.
    bool isTimed = true;
};

/// Why a recording could not be read.
struct TrackError {
    /// One sentence that names the file and, where that is known, the line.
    std::string message;
};

/// A track, or why there is none.
using TrackResult = std::variant<Track, TrackError>;

} // namespace quorvane::testing
