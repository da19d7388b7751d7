#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

#include "Platform/Location.h"
#include "testing/TrackInput.h"

namespace quorvane::testing {

/// A point as a recording has it.
struct TrackPoint {
    /// Its time counts only where `isTimed`.
    platform::Location fix;
    bool isTimed = false;
    std::uint64_t line = 0;
};

/// Takes the points out of a recording of one format, in the order in which they stand there, until the first that is
/// wrong.
class TrackPoints {
public:
    TrackPoints() = default;
    TrackPoints(const TrackPoints&) = delete;
    TrackPoints& operator=(const TrackPoints&) = delete;
    virtual ~TrackPoints() = default;

    /// False: there is no further one, or something is wrong.
    [[nodiscard]] virtual bool next(TrackPoint& point) = 0;

    /// What is wrong; empty where nothing is.
    [[nodiscard]] const std::string& error() const { return message; }
    /// The recording's own name, as far as it is known.
    [[nodiscard]] const std::string& trackName() const { return title; }

    /// What a file of this format has none of, when it has no point: "has no ...".
    [[nodiscard]] virtual std::string missing() const = 0;

protected:
    /// Says what is wrong in a line; answers false. The first one counts.
    bool fail(const TrackInput& input, std::uint64_t line, const std::string& problem);
    /// Says what is wrong with the file, or with what was read of it.
    bool fail(const TrackInput& input, const std::string& problem);

    /// Whether @p text is a number from -@p bound to @p bound, which goes to @p value; else says so of @p what.
    bool coordinate(const TrackInput& input, std::uint64_t line, std::string_view what, std::string_view text,
                    int bound, double& value);
    bool latitude(const TrackInput& input, std::uint64_t line, std::string_view text, TrackPoint& point) {
        return coordinate(input, line, "latitude", text, 90, point.fix.coordinate.latitude);
    }
    bool longitude(const TrackInput& input, std::uint64_t line, std::string_view text, TrackPoint& point) {
        return coordinate(input, line, "longitude", text, 180, point.fix.coordinate.longitude);
    }
    /// Whether @p text is a moment, which goes to @p point, or blank.
    bool moment(const TrackInput& input, std::uint64_t line, std::string_view text, TrackPoint& point);
    /// Whether @p text is a number, which is the accuracy of @p point, or blank.
    bool accuracy(const TrackInput& input, std::uint64_t line, std::string_view text, TrackPoint& point);
    /// Whether @p text is a dilution of precision, by which the accuracy of @p point is set, or blank.
    bool dilution(const TrackInput& input, std::uint64_t line, std::string_view text, TrackPoint& point);

    std::string title;

private:
    std::string message;
};

} // namespace quorvane::testing
