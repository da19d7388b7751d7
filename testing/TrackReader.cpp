#include "testing/TrackReader.h"

#include <algorithm>
#include <chrono>
#include <filesystem>
#include <fstream>
#include <sstream>
#include <string_view>
#include <system_error>
#include <utility>

#include "testing/CSVPoints.h"
#include "testing/GPXPoints.h"
#include "testing/GeoJSONPoints.h"
#include "testing/NMEAPoints.h"
#include "testing/SimulatedClock.h"
#include "testing/TrackText.h"

namespace quorvane::testing {
namespace {

using platform::Date;

/// Nobody counts beyond: the difference keeps every time within what a date can tell.
constexpr std::int64_t mostUntimed = 8'000'000;

std::optional<TrackFormat> formatOf(std::string_view start) {
    const std::string_view text = trimmed(start);
    if (text.starts_with('<')) {
        return TrackFormat::gpx;
    }
    if (text.starts_with('{') || text.starts_with('[')) {
        return TrackFormat::geoJSON;
    }
    // A receiver's log may begin in the middle of a sentence.
    const std::size_t dollar = text.find('$');
    if (dollar != std::string_view::npos && text.find('*', dollar) != std::string_view::npos) {
        return TrackFormat::nmea;
    }
    const std::string_view firstLine = text.substr(0, text.find('\n'));
    const bool isPrintable =
        std::none_of(firstLine.begin(), firstLine.end(), [](char c) { return c >= 0 && c < '\t'; });
    if (isPrintable && (firstLine.find(',') != std::string_view::npos || firstLine.starts_with('#'))) {
        return TrackFormat::csv;
    }
    return std::nullopt;
}

/// A file is opened as often as it takes to look ahead. What comes out of a pipe comes once, and so has to be kept.
TrackOrigin originOf(const std::string& path) {
    std::error_code ignored;
    if (!std::filesystem::is_fifo(path, ignored)) {
        return {path, nullptr};
    }
    std::ifstream pipe(path, std::ios::binary);
    std::ostringstream content;
    content << pipe.rdbuf();
    return {path, std::make_shared<const std::string>(std::move(content).str())};
}

} // namespace

std::unique_ptr<TrackReader> TrackReader::open(const std::string& path, TrackError& error) {
    return openAny(originOf(path), error);
}

std::unique_ptr<TrackReader> TrackReader::openText(std::string text, const std::string& name, TrackError& error) {
    return openAny({name, std::make_shared<const std::string>(std::move(text))}, error);
}

std::unique_ptr<TrackReader> TrackReader::open(const std::string& path, TrackFormat format) {
    return std::unique_ptr<TrackReader>(new TrackReader(originOf(path), format));
}

std::unique_ptr<TrackReader> TrackReader::openText(std::string text, const std::string& name, TrackFormat format) {
    return std::unique_ptr<TrackReader>(
        new TrackReader({name, std::make_shared<const std::string>(std::move(text))}, format));
}

std::unique_ptr<TrackReader> TrackReader::openAny(const TrackOrigin& origin, TrackError& error) {
    TrackInput input(origin);
    const std::string_view start = input.preview();
    const std::optional<TrackFormat> format = formatOf(start);
    if (!input.problem().empty()) {
        error = {origin.name + ": " + input.problem() + '.'};
    } else if (trimmed(start).empty()) {
        error = {origin.name + ": the file is empty."};
    } else if (!format) {
        error = {origin.name + ": the file is no track: it looks like neither GPX, NMEA, GeoJSON nor CSV."};
    } else {
        return std::unique_ptr<TrackReader>(new TrackReader(origin, *format));
    }
    return nullptr;
}

TrackReader::TrackReader(const TrackOrigin& origin, TrackFormat format)
    : name(origin.name), kind(format), source(points(origin, format)) {
    findFirstTime(origin);
}

TrackReader::~TrackReader() = default;

std::unique_ptr<TrackPoints> TrackReader::points(const TrackOrigin& origin, TrackFormat format) {
    switch (format) {
        case TrackFormat::gpx:
            return std::make_unique<GPXPoints>(origin);
        case TrackFormat::nmea:
            return std::make_unique<NMEAPoints>(origin);
        case TrackFormat::geoJSON:
            return std::make_unique<GeoJSONPoints>(origin);
        case TrackFormat::csv:
            break;
    }
    return std::make_unique<CSVPoints>(origin);
}

void TrackReader::findFirstTime(const TrackOrigin& origin) {
    const std::unique_ptr<TrackPoints> ahead = points(origin, kind);
    std::int64_t untimed = 0;
    TrackPoint point;
    while (ahead->next(point)) {
        if (point.isTimed) {
            nextTime = point.fix.timestamp - std::chrono::seconds(std::min(untimed, mostUntimed));
            return;
        }
        ++untimed;
    }
    nextTime = SimulatedClock::start;
}

std::optional<platform::Location> TrackReader::next() {
    TrackPoint point;
    if (hasEnded || !source->next(point)) {
        if (!source->error().empty()) {
            failure = {source->error()};
        } else if (lastLine == 0) {
            failure = {name + ": the file " + source->missing() + '.'};
        }
        hasEnded = true;
        return std::nullopt;
    }
    lastLine = point.line;
    timed = timed && point.isTimed;
    if (!point.isTimed) {
        point.fix.timestamp = nextTime;
    }
    nextTime = std::min(point.fix.timestamp, Date::max() - std::chrono::seconds(1)) + std::chrono::seconds(1);
    return point.fix;
}

const std::string& TrackReader::trackName() const {
    return source->trackName();
}

TrackResult readTrack(TrackReader& reader) {
    Track track;
    while (const std::optional<platform::Location> fix = reader.next()) {
        track.fixes.push_back(*fix);
    }
    if (reader.error()) {
        return *reader.error();
    }
    track.name = reader.trackName();
    track.isTimed = reader.isTimed();
    return track;
}

TrackResult readTrack(const std::string& path) {
    TrackError error;
    const std::unique_ptr<TrackReader> reader = TrackReader::open(path, error);
    return reader ? readTrack(*reader) : TrackResult(error);
}

TrackResult readTrackText(std::string text, const std::string& name) {
    TrackError error;
    const std::unique_ptr<TrackReader> reader = TrackReader::openText(std::move(text), name, error);
    return reader ? readTrack(*reader) : TrackResult(error);
}

} // namespace quorvane::testing
