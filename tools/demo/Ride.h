#pragma once

#include <chrono>
#include <cstddef>
#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "Platform/Location.h"
#include "testing/Track.h"

namespace quorvane::tool {

/// A track as the demo rides it: at least one fix.
class Ride {
public:
    /// A point of the ride.
    struct Stop {
        platform::Location fix;
        /// Metres along the ride.
        double metres = 0;
    };

    /// The ride that comes with the program.
    [[nodiscard]] static Ride invented();

    /// The track in a GPX file. Throws a `Failure` when it cannot be read.
    [[nodiscard]] static Ride fromFile(const std::string& path);

    /// Empty where the track has none.
    [[nodiscard]] const std::string& name() const { return track->name; }
    [[nodiscard]] std::size_t fixCount() const { return track->fixes.size(); }
    /// Whether the times of the fixes were recorded.
    [[nodiscard]] bool isTimed() const { return track->isTimed; }
    /// The recording up to the first fix that came later than so long after the first.
    [[nodiscard]] std::shared_ptr<const testing::Track> beginning(std::chrono::seconds duration) const;
    [[nodiscard]] std::vector<platform::Coordinate> coordinates() const;
    [[nodiscard]] double metres() const { return along.back(); }
    /// From the first fix to the last; none when the track has no times.
    [[nodiscard]] std::optional<std::chrono::seconds> duration() const;

    /// So many fixes, or all when there are fewer, evenly spread over the recording and not over the way: a receiver
    /// that was off for a while leaves a long way without a fix.
    [[nodiscard]] std::vector<Stop> stops(std::size_t count) const;

private:
    explicit Ride(testing::Track theTrack);
    [[nodiscard]] static Ride from(testing::TrackResult result);

    std::shared_ptr<const testing::Track> track;
    /// Metres from the start to each fix.
    std::vector<double> along;
};

} // namespace quorvane::tool
