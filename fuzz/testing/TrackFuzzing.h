#pragma once

#include <cmath>
#include <cstdint>
#include <string>
#include <utility>
#include <variant>

#include "fuzz/Require.h"
#include "testing/TrackReader.h"

namespace quorvane::fuzz {

inline void check(const testing::Track& track) {
    require(!track.fixes.empty());
    for (const platform::Location& fix : track.fixes) {
        require(fix.coordinate.isValid());
        require(std::isfinite(fix.horizontalAccuracy));
    }
}

inline void check(const testing::TrackError& error) {
    require(error.message.starts_with("fuzzed") && error.message.back() == '.');
    for (const char c : error.message) {
        require(c >= ' ' && c <= '~');
    }
    require(error.message.size() < 300);
}

/// Reads any bytes as a track of one format. What comes back is a track whose fixes are all on this earth, or one
/// sentence; of what has the look of a track the same comes back when its format is found out.
inline void readAnything(std::string text, testing::TrackFormat format) {
    const auto reader = testing::TrackReader::openText(text, "fuzzed", format);
    const testing::TrackResult result = testing::readTrack(*reader);
    std::visit([](const auto& outcome) { check(outcome); }, result);
    const testing::TrackResult found = testing::readTrackText(std::move(text), "fuzzed");
    std::visit([](const auto& outcome) { check(outcome); }, found);
}

} // namespace quorvane::fuzz
