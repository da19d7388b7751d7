#pragma once

#include <string>
#include <utility>
#include <variant>
#include <vector>

#include <gtest/gtest.h>

#include "testing/DateText.h"
#include "testing/TrackReader.h"

namespace quorvane::testing {

/// The track in @p text. A failure of the test, and one fix of nowhere, when there is none.
inline Track readGood(const std::string& text) {
    TrackResult result = readTrackText(text, "file");
    if (const auto* error = std::get_if<TrackError>(&result)) {
        ADD_FAILURE() << error->message;
        return {"", {{}}, false};
    }
    return std::get<Track>(std::move(result));
}

/// What is wrong with @p text.
inline std::string readError(const std::string& text) {
    const TrackResult result = readTrackText(text, "file");
    const auto* error = std::get_if<TrackError>(&result);
    return error != nullptr ? error->message : "no error";
}

/// The times of a track's fixes.
inline std::vector<std::string> timesOf(const Track& track) {
    std::vector<std::string> times;
    for (const platform::Location& fix : track.fixes) {
        times.push_back(dateText(fix.timestamp));
    }
    return times;
}

} // namespace quorvane::testing
