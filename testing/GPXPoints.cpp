#include "testing/GPXPoints.h"

#include <algorithm>
#include <utility>

#include "testing/TrackReader.h"
#include "testing/TrackText.h"

namespace quorvane::testing {

GPXPoints::Element GPXPoints::bestPoint(const TrackOrigin& origin) {
    GPXPoints all(origin, Element::anyPoint);
    Element best = Element::anyPoint;
    while (best != Element::trackPoint && all.toPoint()) {
        best = std::max(best, all.kind);
    }
    return best;
}

bool GPXPoints::next(TrackPoint& point) {
    if (!toPoint()) {
        return false;
    }
    point = {};
    point.line = scanner.line();
    point.fix.horizontalAccuracy = defaultAccuracy;
    return position(point) && inPoint(point);
}

bool GPXPoints::toPoint() {
    while (true) {
        switch (scanner.next()) {
            case Token::start:
                if (start()) {
                    return true;
                }
                break;
            case Token::end:
                end();
                break;
            case Token::finished:
                return false;
            case Token::error:
                return input.problem().empty()
                           ? fail(input, scanner.line(), "the file is no well-formed XML (" + scanner.problem() + ')')
                           : fail(input, input.problem());
        }
        if (!error().empty()) {
            return false;
        }
    }
}

std::optional<GPXPoints::Element> GPXPoints::child() const {
    const std::string_view name = scanner.name();
    switch (around.back()) {
        case Element::root:
            if (name == "trk") {
                return Element::track;
            }
            if (name == "rte") {
                return Element::route;
            }
            return name == "wpt" ? std::optional(Element::waypoint) : std::nullopt;
        case Element::track:
            if (name == "trkseg") {
                return Element::segment;
            }
            return name == "name" ? std::optional(Element::name) : std::nullopt;
        case Element::route:
            if (name == "rtept") {
                return Element::routePoint;
            }
            return name == "name" ? std::optional(Element::name) : std::nullopt;
        case Element::segment:
            return name == "trkpt" ? std::optional(Element::trackPoint) : std::nullopt;
        default:
            return std::nullopt;
    }
}

/// Whether a point of the wanted kind has begun.
bool GPXPoints::start() {
    if (passedOver > 0) {
        ++passedOver;
        return false;
    }
    if (around.empty()) {
        around.push_back(Element::root);
        return scanner.name() != "gpx" &&
               fail(input, "the file is no GPX: its root element is " + quoted(scanner.name()));
    }
    const std::optional<Element> element = child();
    const bool isPoint = element > Element::anyPoint;
    if (isPoint) {
        kind = *element;
    }
    if (isPoint && wanted == kind) {
        return true;
    }
    if (element && !isPoint) {
        around.push_back(*element);
    } else {
        passedOver = 1;
    }
    return isPoint && wanted == Element::anyPoint;
}

void GPXPoints::end() {
    if (passedOver > 0) {
        --passedOver;
        return;
    }
    const bool isName = around.back() == Element::name;
    around.pop_back();
    if (isName && title.empty() && around.back() == (wanted == Element::trackPoint ? Element::track : Element::route)) {
        title = trimmed(scanner.text());
    }
}

bool GPXPoints::position(TrackPoint& point) {
    const std::optional<std::string_view> lat = scanner.attribute("lat");
    const std::optional<std::string_view> lon = scanner.attribute("lon");
    if (!lat || !lon) {
        return fail(input, point.line, std::string("a point has no ") + (lat ? "longitude" : "latitude"));
    }
    return latitude(input, point.line, *lat, point) && longitude(input, point.line, *lon, point);
}

/// Takes what is in a point, to its end. The first time and the first dilution count.
bool GPXPoints::inPoint(TrackPoint& point) {
    bool hadTime = false;
    bool hadDilution = false;
    std::size_t depth = 1;
    std::uint64_t line = 0;
    while (depth > 0) {
        const Token token = scanner.next();
        const bool isField = token == Token::end && depth == 2;
        if (token == Token::start) {
            ++depth;
            line = scanner.line();
        } else if (token == Token::end) {
            --depth;
        } else {
            return toPoint();
        }
        if (isField && scanner.name() == "time" && !std::exchange(hadTime, true) &&
            !moment(input, line, scanner.text(), point)) {
            return false;
        }
        if (isField && scanner.name() == "hdop" && !std::exchange(hadDilution, true) &&
            !dilution(input, line, scanner.text(), point)) {
            return false;
        }
    }
    return true;
}

} // namespace quorvane::testing
