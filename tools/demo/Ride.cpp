#include "tools/demo/Ride.h"

#include <algorithm>
#include <cstdint>
#include <utility>
#include <variant>

#include "testing/GPXReader.h"
#include "tools/Failure.h"
#include "tools/demo/InventedRide.h"

namespace quorvane::tool {
namespace {

/// Between any two dates: those that can be told lie further apart than their own kind of duration reaches.
using Span = std::chrono::duration<std::uint64_t, platform::Date::period>;

/// From @p first to @p last, which is not before it.
Span between(platform::Date first, platform::Date last) {
    const auto count = [](platform::Date date) { return static_cast<std::uint64_t>(date.time_since_epoch().count()); };
    return Span(count(last) - count(first));
}

} // namespace

Ride::Ride(testing::Track theTrack) : track(std::make_shared<const testing::Track>(std::move(theTrack))) {
    double metres = 0;
    for (std::size_t i = 0; i < track->fixes.size(); ++i) {
        metres += i == 0 ? 0 : track->fixes[i - 1].distance(track->fixes[i]);
        along.push_back(metres);
    }
}

Ride Ride::from(testing::TrackResult result) {
    if (const auto* const error = std::get_if<testing::TrackError>(&result)) {
        throw Failure(error->message);
    }
    return Ride(std::get<testing::Track>(std::move(result)));
}

Ride Ride::invented() {
    return from(testing::readGPXText(inventedRide(), "the invented ride"));
}

Ride Ride::fromFile(const std::string& path) {
    return from(testing::readGPX(path));
}

std::vector<platform::Coordinate> Ride::coordinates() const {
    std::vector<platform::Coordinate> coordinates;
    for (const platform::Location& fix : track->fixes) {
        coordinates.push_back(fix.coordinate);
    }
    return coordinates;
}

std::optional<std::chrono::seconds> Ride::duration() const {
    const platform::Date first = track->fixes.front().timestamp;
    const platform::Date last = track->fixes.back().timestamp;
    if (!track->isTimed || last < first) {
        return std::nullopt;
    }
    return std::chrono::round<std::chrono::seconds>(between(first, last));
}

std::shared_ptr<const testing::Track> Ride::beginning(std::chrono::seconds duration) const {
    const platform::Date start = track->fixes.front().timestamp;
    const auto end = std::find_if(track->fixes.begin(), track->fixes.end(), [&](const platform::Location& fix) {
        return fix.timestamp > start && between(start, fix.timestamp) > duration;
    });
    if (end == track->fixes.end()) {
        return track;
    }
    return std::make_shared<const testing::Track>(
        testing::Track{track->name, {track->fixes.begin(), end}, track->isTimed});
}

std::vector<Ride::Stop> Ride::stops(std::size_t count) const {
    const std::size_t fixes = track->fixes.size();
    const std::size_t possible = std::min(count, fixes);
    std::vector<Stop> stops;
    for (std::size_t i = 0; i < possible; ++i) {
        // Each in the middle of its part: a round trip would else begin and end with the same one.
        const std::size_t index = (2 * i + 1) * fixes / (2 * possible);
        stops.push_back({track->fixes[index], along[index]});
    }
    return stops;
}

} // namespace quorvane::tool
