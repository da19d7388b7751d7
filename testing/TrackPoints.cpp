#include "testing/TrackPoints.h"

#include "testing/TrackReader.h"
#include "testing/TrackText.h"

namespace quorvane::testing {

bool TrackPoints::fail(const TrackInput& input, std::uint64_t line, const std::string& problem) {
    if (message.empty()) {
        message = input.name() + ", line " + std::to_string(line) + ": " + problem + '.';
    }
    return false;
}

bool TrackPoints::fail(const TrackInput& input, const std::string& problem) {
    if (message.empty()) {
        message = input.name() + ": " + problem + '.';
    }
    return false;
}

bool TrackPoints::coordinate(const TrackInput& input, std::uint64_t line, std::string_view what, std::string_view text,
                             int bound, double& value) {
    const std::optional<double> number = readDecimal(text);
    if (!number || *number < -bound || *number > bound) {
        return fail(input, line,
                    "the " + std::string(what) + ' ' + quoted(text) + " is no number from -" + std::to_string(bound) +
                        " to " + std::to_string(bound));
    }
    value = *number;
    return true;
}

bool TrackPoints::moment(const TrackInput& input, std::uint64_t line, std::string_view text, TrackPoint& point) {
    const std::string_view content = trimmed(text);
    if (content.empty()) {
        return true;
    }
    const std::optional<platform::Date> date = readMoment(content);
    if (!date) {
        return fail(input, line, "the time " + quoted(content) + " is no date and time");
    }
    point.fix.timestamp = *date;
    point.isTimed = true;
    return true;
}

bool TrackPoints::accuracy(const TrackInput& input, std::uint64_t line, std::string_view text, TrackPoint& point) {
    const std::string_view content = trimmed(text);
    const std::optional<double> number = content.empty() ? point.fix.horizontalAccuracy : readDecimal(content);
    point.fix.horizontalAccuracy = number.value_or(defaultAccuracy);
    return number || fail(input, line, "the accuracy " + quoted(content) + " is no number");
}

bool TrackPoints::dilution(const TrackInput& input, std::uint64_t line, std::string_view text, TrackPoint& point) {
    const std::optional<double> number = trimmed(text).empty() ? 0.0 : readDecimal(text);
    if (!number || *number < 0 || *number > largestDilution) {
        return fail(input, line, "the hdop " + quoted(text) + " is no number from 0 to 1000000");
    }
    point.fix.horizontalAccuracy = *number > 0 ? accuracyPerDilution * *number : defaultAccuracy;
    return true;
}

} // namespace quorvane::testing
