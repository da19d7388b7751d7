#pragma once

#include <cstddef>
#include <cstdint>
#include <memory>
#include <optional>
#include <string>

#include "testing/Track.h"

namespace quorvane::testing {

class TrackPoints;
struct TrackOrigin;

/// Metres: the accuracy of a fix whose point tells none.
inline constexpr double defaultAccuracy = 10.0;
/// Metres for each unit of horizontal dilution of precision ("hdop"). A GPS service that keeps its promise of 8 m
/// horizontally for 95 % of the time (GPS Standard Positioning Service Performance Standard, 5th edition, 2020, as the
/// average over the earth) is 4 to 5 m off in the root mean square, at a dilution of about 1.
inline constexpr double accuracyPerDilution = 5.0;
inline constexpr double largestDilution = 1'000'000;

enum class TrackFormat { gpx, nmea, geoJSON, csv };

/// Hands out the fixes of a recording one by one, in the order in which they stand there, with no more of a file in
/// memory than some 64 KiB at a time; what comes out of a pipe is kept as a whole. One thread at a time. Never throws.
///
/// What every format has in common:
/// - The text is UTF-8, or UTF-16 that begins with a byte order mark. Lines end with a line feed.
/// - Latitudes lie in [-90, 90], longitudes in [-180, 180]; anything else is an error, as is a time that is no time.
/// - A point without a time comes one second after the point before it. Those at the beginning go back from the first
///   time in the same way; where no point has a time the first is at 2026-03-01 12:00:00 UTC. Times need not ascend.
/// - The horizontal accuracy is `defaultAccuracy` where none is told. One that is told need only be a number: it may be
///   0, negative or absurd, and is for the tracking code to judge. A dilution is 0 to 1,000,000; 0 tells nothing.
/// - The vertical accuracy is -1, since no altitude is read.
///
/// The formats:
/// - GPX: see `GPXReader.h`.
/// - NMEA 0183: the sentences RMC and GGA of any talker. Those of one moment make one fix, unless one of them says that
///   there is none. The accuracy follows the dilution that GGA tells. The date is RMC's; where a moment has none the
///   day goes on from the moment before, to the next one where the time of day falls by more than 12 hours. The first
///   date holds for what comes before it; a file without any begins on 2026-03-01. Years are 1980 to 2079. A sentence
///   without a checksum, or with a wrong one, is passed over, and so is everything that is no sentence.
/// - GeoJSON: the positions of Point, MultiPoint, LineString and MultiLineString, alone, in a feature, in collections
/// of
///   features, or in several documents one after the other; other geometries are passed over. A feature is read to its
///   end before its first position is handed out. Of the properties, in upper or lower case, "time", "timestamp",
///   "date" or "datetime" is the time of the first position; a list called like these or "times", "timestamps",
///   "coordTimes", or "times" in "coordinateProperties", has the times of all of them, null where there is none;
///   "accuracy" or "horizontalAccuracy" are metres.
/// - CSV: lines "lat,lon[,time[,accuracy]]". A first line that does not begin with a number names the columns, in any
///   order and among others: "lat" or "latitude", "lon", "lng", "long" or "longitude", "time", "timestamp", "date" or
///   "datetime", "accuracy", "acc" or "horizontalAccuracy". A last column with accuracies may be left out of a line.
///   Blank lines, and lines that begin with "#", are passed over. A value may stand in quotes.
/// - Times, but for NMEA's, are "2026-03-01T12:00:00Z" with an optional fraction and zone, "2026-03-01 12:00:00" or
///   seconds since 1970; from 100,000,000,000 on milliseconds.
class TrackReader {
public:
    /// Opens a file of the format that its content looks like; its name does not matter. Null, and a sentence in @p
    /// error, when it cannot be read, is empty or looks like no track.
    [[nodiscard]] static std::unique_ptr<TrackReader> open(const std::string& path, TrackError& error);
    /// The same for a text. @p name stands for the file's name in an error.
    [[nodiscard]] static std::unique_ptr<TrackReader> openText(std::string text, const std::string& name,
                                                               TrackError& error);
    /// As the others, for a format that is known. Never null; what is wrong comes with the first fix.
    [[nodiscard]] static std::unique_ptr<TrackReader> open(const std::string& path, TrackFormat format);
    [[nodiscard]] static std::unique_ptr<TrackReader> openText(std::string text, const std::string& name,
                                                               TrackFormat format);

    TrackReader(const TrackReader&) = delete;
    TrackReader& operator=(const TrackReader&) = delete;
    ~TrackReader();

    /// The next fix; none when there is no further one, or when something is wrong, which `error` says then. A
    /// recording without any fix is wrong.
    [[nodiscard]] std::optional<platform::Location> next();

    [[nodiscard]] const std::optional<TrackError>& error() const { return failure; }
    [[nodiscard]] TrackFormat format() const { return kind; }
    /// The line of the last fix, from 1 on.
    [[nodiscard]] std::uint64_t line() const { return lastLine; }
    /// Whether every fix so far carried a time.
    [[nodiscard]] bool isTimed() const { return timed; }
    /// The recording's own name, as far as it is known yet; empty where it has none.
    [[nodiscard]] const std::string& trackName() const;

private:
    TrackReader(const TrackOrigin& origin, TrackFormat format);

    [[nodiscard]] static std::unique_ptr<TrackReader> openAny(const TrackOrigin& origin, TrackError& error);
    [[nodiscard]] static std::unique_ptr<TrackPoints> points(const TrackOrigin& origin, TrackFormat format);
    void findFirstTime(const TrackOrigin& origin);

    const std::string name;
    const TrackFormat kind;
    const std::unique_ptr<TrackPoints> source;
    std::optional<TrackError> failure;
    /// The time of a next point that has none.
    platform::Date nextTime;
    std::uint64_t lastLine = 0;
    bool timed = true;
    bool hasEnded = false;
};

/// All of a recording at once.
[[nodiscard]] TrackResult readTrack(const std::string& path);
/// The same for a text. @p name stands for the file's name in an error.
[[nodiscard]] TrackResult readTrackText(std::string text, const std::string& name);

/// What is left of @p reader.
[[nodiscard]] TrackResult readTrack(TrackReader& reader);

} // namespace quorvane::testing
