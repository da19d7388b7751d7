#include "testing/GPXReader.h"

#include <algorithm>
#include <chrono>
#include <cstring>
#include <optional>
#include <variant>

#include <pugixml.hpp>

#include "testing/DateText.h"
#include "testing/SimulatedClock.h"
#include "testing/TrackFile.h"

namespace quorvane::testing {
namespace {

using platform::Date;

/// Whether an element is called @p name, whatever prefix its namespace has.
bool isNamed(const pugi::xml_node& node, std::string_view name) {
    const char* colon = std::strrchr(node.name(), ':');
    return node.type() == pugi::node_element && name == (colon != nullptr ? colon + 1 : node.name());
}

pugi::xml_node child(const pugi::xml_node& parent, std::string_view name) {
    return parent.find_child([name](const pugi::xml_node& node) { return isNamed(node, name); });
}

/// Calls @p visit with each child called @p name, until that answers false.
template <class Visit>
bool forEach(const pugi::xml_node& parent, std::string_view name, Visit visit) {
    for (const pugi::xml_node& node : parent.children()) {
        if (isNamed(node, name) && !visit(node)) {
            return false;
        }
    }
    return true;
}

/// Reads the points of one document until the first that is wrong.
class Reading {
public:
    Reading(std::string_view theText, const std::string& theName, pugi::xml_encoding encoding)
        : text(theText), name(theName), linesAreKnown(encoding == pugi::encoding_utf8) {}

    TrackResult read(const pugi::xml_document& document) {
        const pugi::xml_node root = document.document_element();
        if (!isNamed(root, "gpx")) {
            return TrackError{name + ": the file is no GPX: its root element is " + quoted(root.name()) + '.'};
        }
        bool good = forEach(root, "trk", [this](const pugi::xml_node& way) {
            nameAfter(way);
            return forEach(way, "trkseg", [this](const pugi::xml_node& segment) { return points(segment, "trkpt"); });
        });
        if (good && track.fixes.empty()) {
            good = forEach(root, "rte", [this](const pugi::xml_node& route) {
                nameAfter(route);
                return points(route, "rtept");
            });
        }
        if (good && track.fixes.empty()) {
            good = points(root, "wpt");
        }
        if (!good) {
            return error;
        }
        if (track.fixes.empty()) {
            return TrackError{name + ": the file has no track, route or waypoint with a point in it."};
        }
        fillTimes();
        return std::move(track);
    }

private:
    void nameAfter(const pugi::xml_node& node) {
        if (track.name.empty()) {
            track.name = trimmed(child(node, "name").text().get());
        }
    }

    bool points(const pugi::xml_node& parent, std::string_view pointName) {
        return forEach(parent, pointName, [this](const pugi::xml_node& node) { return point(node); });
    }

    bool point(const pugi::xml_node& node) {
        platform::Location fix;
        std::optional<Date> time;
        if (!coordinate(node, "lat", "latitude", 90, fix.coordinate.latitude) ||
            !coordinate(node, "lon", "longitude", 180, fix.coordinate.longitude) || !accuracy(node, fix) ||
            !moment(node, time)) {
            return false;
        }
        fix.timestamp = time.value_or(Date());
        track.fixes.push_back(fix);
        times.push_back(time.has_value());
        return true;
    }

    bool coordinate(const pugi::xml_node& node, const char* attribute, const char* what, int limit, double& value) {
        const pugi::xml_attribute found = node.attribute(attribute);
        if (!found) {
            return fail(node, std::string("a point has no ") + what);
        }
        const std::optional<double> number = readDecimal(found.value());
        if (!number || *number < -limit || *number > limit) {
            return fail(node, std::string("the ") + what + ' ' + quoted(found.value()) + " is no number from -" +
                                  std::to_string(limit) + " to " + std::to_string(limit));
        }
        value = *number;
        return true;
    }

    bool accuracy(const pugi::xml_node& node, platform::Location& fix) {
        const char* content = child(node, "hdop").text().get();
        const std::optional<double> dilution = trimmed(content).empty() ? 0.0 : readDecimal(content);
        if (!dilution || *dilution < 0) {
            return fail(node, "the hdop " + quoted(content) + " is no number from 0 on");
        }
        fix.horizontalAccuracy = *dilution > 0 ? gpxAccuracyPerDilution * *dilution : gpxDefaultAccuracy;
        return true;
    }

    bool moment(const pugi::xml_node& node, std::optional<Date>& time) {
        const std::string_view content = trimmed(child(node, "time").text().get());
        if (!content.empty()) {
            time = readDate(content);
        }
        return content.empty() || time || fail(node, "the time " + quoted(content) + " is no date and time");
    }

    bool fail(const pugi::xml_node& node, const std::string& problem) {
        error.message = name + ", ";
        if (const std::ptrdiff_t offset = node.offset_debug(); linesAreKnown && offset >= 0) {
            const auto end = text.begin() + std::min<std::ptrdiff_t>(offset, std::ssize(text));
            error.message += "line " + std::to_string(1 + std::count(text.begin(), end, '\n'));
        } else {
            error.message += "point " + std::to_string(track.fixes.size() + 1);
        }
        error.message += ": " + problem + '.';
        return false;
    }

    void fillTimes() {
        using std::chrono::seconds;
        std::vector<platform::Location>& fixes = track.fixes;
        const auto first = static_cast<std::size_t>(std::find(times.begin(), times.end(), true) - times.begin());
        track.isTimed = std::find(times.begin(), times.end(), false) == times.end();
        if (first == times.size()) {
            fixes[0].timestamp = SimulatedClock::start;
        } else {
            for (std::size_t i = first; i > 0; --i) {
                fixes[i - 1].timestamp = fixes[i].timestamp - seconds(1);
            }
        }
        for (std::size_t i = 1; i < fixes.size(); ++i) {
            if (!times[i] && (i > first || first == times.size())) {
                fixes[i].timestamp = fixes[i - 1].timestamp + seconds(1);
            }
        }
    }

    const std::string_view text;
    const std::string& name;
    const bool linesAreKnown;
    Track track;
    /// Whether the fix of that index had a time.
    std::vector<bool> times;
    TrackError error;
};

} // namespace

TrackResult readGPX(const std::string& path) {
    TrackError error;
    const std::optional<std::string> content = readTrackFile(path, gpxMaxBytes, error);
    return content ? readGPXText(*content, path) : TrackResult(error);
}

TrackResult readGPXText(std::string_view text, const std::string& name) {
    pugi::xml_document document;
    const pugi::xml_parse_result parsed = document.load_buffer(text.data(), text.size());
    if (!parsed) {
        std::string where = name;
        if (parsed.encoding == pugi::encoding_utf8 && parsed.offset >= 0) {
            const auto end = text.begin() + std::min<std::ptrdiff_t>(parsed.offset, std::ssize(text));
            where += ", line " + std::to_string(1 + std::count(text.begin(), end, '\n'));
        }
        std::string reason = parsed.description();
        return TrackError{where + ": the file is no well-formed XML (" + reason + ")."};
    }
    return Reading(text, name, parsed.encoding).read(document);
}

} // namespace quorvane::testing
