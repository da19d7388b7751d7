#include "testing/GeoJSONPoints.h"

#include <utility>

#include "testing/TrackReader.h"
#include "testing/TrackText.h"

namespace quorvane::testing {

bool GeoJSONPoints::next(TrackPoint& point) {
    while (true) {
        if (!positions && !toFeature()) {
            return false;
        }
        point = {};
        point.fix.horizontalAccuracy = defaultAccuracy;
        const bool isThere = position(point);
        if (!error().empty()) {
            return false;
        }
        const bool isFirst = !std::exchange(hadPosition, true);
        if (isThere && !times) {
            return !isFirst || moment(aheadInput, feature.timeLine, feature.time, point);
        }
        if (isThere) {
            return time(point) || fail(positionInput, point.line, "the feature has fewer times than positions");
        }
        TrackPoint beyond;
        if (times && time(beyond)) {
            return fail(timeInput, times->line(), "the feature has more times than positions");
        }
        if (!error().empty()) {
            return false;
        }
        positions.reset();
    }
}

bool GeoJSONPoints::hasPoints() const {
    const std::string& type = feature.geometryType.empty() ? feature.type : feature.geometryType;
    return feature.positions &&
           (type == "Point" || type == "MultiPoint" || type == "LineString" || type == "MultiLineString");
}

bool GeoJSONPoints::toFeature() {
    do {
        const Token token = ahead.next();
        if (token == Token::finished) {
            return false;
        }
        feature = {};
        if (isInFeatures && token == Token::endArray) {
            isInFeatures = false;
            if (!members(Level::root)) {
                return false;
            }
            feature = {};
        } else if (token == Token::beginObject) {
            if (!members(isInFeatures ? Level::feature : Level::root)) {
                return false;
            }
        } else if (!isInFeatures && token != Token::error) {
            return fail(aheadInput, ahead.line(), "the file is no GeoJSON: it is no object");
        } else if (!ahead.skip(token)) {
            return malformed(aheadInput, ahead);
        }
    } while (!hasPoints());
    positionInput.skipTo(*feature.positions);
    positions.emplace(positionInput);
    times.reset();
    if (feature.times) {
        timeInput.skipTo(*feature.times);
        times.emplace(timeInput);
    }
    hadPosition = false;
    return true;
}

/// Takes the members of an object to its end, or into the list of features.
bool GeoJSONPoints::members(Level level) {
    while (true) {
        const Token token = ahead.next();
        if (token == Token::endObject) {
            return true;
        }
        const std::string name = ahead.value();
        const Token first = token == Token::key ? ahead.next() : Token::error;
        if (first == Token::error) {
            return malformed(aheadInput, ahead);
        }
        if (level == Level::root && name == "features" && first == Token::beginArray) {
            isInFeatures = true;
            return true;
        }
        if (!member(level, name, first)) {
            return false;
        }
    }
}

bool GeoJSONPoints::member(Level level, const std::string& name, Token first) {
    if (level == Level::properties || level == Level::coordinateProperties) {
        const std::string lower = lowered(name);
        if (first == Token::beginObject && lower == "coordinateproperties") {
            return members(Level::coordinateProperties);
        }
        property(lower, first);
    } else if (first == Token::beginObject && (name == "geometry" || name == "properties")) {
        return members(name == "geometry" ? Level::geometry : Level::properties);
    } else if (name == "type" && first == Token::text) {
        (level == Level::geometry ? feature.geometryType : feature.type) = ahead.value();
    } else if (name == "coordinates" && first == Token::beginArray) {
        feature.positions = ahead.offset();
    }
    return ahead.skip(first) || malformed(aheadInput, ahead);
}

void GeoJSONPoints::property(const std::string& name, Token first) {
    const bool isScalar = first == Token::text || first == Token::number;
    const bool isTime = name == "time" || name == "timestamp" || name == "date" || name == "datetime";
    if (first == Token::beginArray && (isTime || name == "times" || name == "timestamps" || name == "coordtimes")) {
        feature.times = ahead.offset();
    } else if (isScalar && isTime && feature.time.empty()) {
        feature.time = ahead.value();
        feature.timeLine = ahead.line();
    } else if (isScalar && (name == "accuracy" || name == "horizontalaccuracy" || name == "horizontal_accuracy")) {
        feature.accuracy = ahead.value();
        feature.accuracyLine = ahead.line();
    } else if (first == Token::text && name == "name" && title.empty()) {
        title = ahead.value();
    }
}

bool GeoJSONPoints::position(TrackPoint& point) {
    bool isInList = false;
    if (hadPosition && positions->depth() == 0) {
        return false;
    }
    while (true) {
        const Token token = positions->next();
        point.line = positions->line();
        if (token == Token::endArray && positions->depth() == 0) {
            return false;
        }
        if (token == Token::number && isInList) {
            break;
        }
        isInList = token == Token::beginArray;
        if (!isInList && token != Token::endArray) {
            return malformed(positionInput, *positions);
        }
    }
    return longitude(positionInput, point.line, positions->value(), point) &&
           (positions->next() == Token::number || malformed(positionInput, *positions)) &&
           latitude(positionInput, point.line, positions->value(), point) && restOfPosition() &&
           accuracy(aheadInput, feature.accuracyLine, feature.accuracy, point);
}

/// Takes the altitude, and whatever else a position has.
bool GeoJSONPoints::restOfPosition() {
    Token token = positions->next();
    while (token == Token::number) {
        token = positions->next();
    }
    return token == Token::endArray || malformed(positionInput, *positions);
}

bool GeoJSONPoints::time(TrackPoint& point) {
    Token token = times->next();
    while (token == Token::beginArray || (token == Token::endArray && times->depth() > 0)) {
        token = times->next();
    }
    const std::string text = token == Token::word && times->value() == "null" ? "" : times->value();
    if (token == Token::text || token == Token::number || token == Token::word) {
        return moment(timeInput, times->line(), text, point);
    }
    return token != Token::endArray && malformed(timeInput, *times);
}

/// Says what is wrong with the list, the object or the whole file.
bool GeoJSONPoints::malformed(const TrackInput& input, const JSONScanner& scanner) {
    if (!input.problem().empty()) {
        return fail(input, input.problem());
    }
    return fail(input, scanner.line(),
                scanner.problem().empty() ? "a position is no list of numbers"
                                          : "the file is no well-formed JSON (" + scanner.problem() + ')');
}

} // namespace quorvane::testing
