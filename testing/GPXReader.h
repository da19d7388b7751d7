#pragma once

#include <cstddef>
#include <string>
#include <string_view>

#include "testing/Track.h"

namespace quorvane::testing {

/// Metres: the accuracy of a fix whose point tells no dilution of precision.
inline constexpr double gpxDefaultAccuracy = 10.0;
/// Metres for each unit of horizontal dilution of precision ("hdop").
inline constexpr double gpxAccuracyPerDilution = 5.0;
/// The largest file that is read: 64 MiB.
inline constexpr std::size_t gpxMaxBytes = std::size_t{64} * 1024 * 1024;

/// Reads a GPX file of version 1.0 or 1.1, whatever its namespace. Never throws; any thread.
///
/// The fixes are the points of all tracks, segment after segment; without any, those of all routes; without any, the
/// waypoints. Extensions are passed over. A fix has:
/// - a horizontal accuracy of 5 m for each unit of "hdop", 10 m where that is absent or 0;
/// - a vertical accuracy of -1, since it carries no altitude;
/// - the time of its point. A point without a time comes one second after the point before it. Those at the beginning
///   go back from the first time in the same way; where no point has a time the first is at 2026-03-01 12:00:00 UTC.
///
/// It is an error when the file cannot be read or is too large, is no well-formed XML or no GPX, has no point, or when
/// a point has a latitude, longitude, time or "hdop" that is missing, malformed or out of range.
[[nodiscard]] TrackResult readGPX(const std::string& path);

/// The same for a text. @p name stands for the file's name in an error.
[[nodiscard]] TrackResult readGPXText(std::string_view text, const std::string& name);

} // namespace quorvane::testing
