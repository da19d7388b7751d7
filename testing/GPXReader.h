#pragma once

#include <string>
#include <string_view>

#include "testing/Track.h"

namespace quorvane::testing {

/// Reads a GPX file of version 1.0 or 1.1, whatever its namespace. Never throws; any thread. For a recording that may
/// be long, or of another format, see `TrackReader`, whose rules hold here too.
///
/// The fixes are the points of all tracks, segment after segment; without any, those of all routes; without any, the
/// waypoints. Extensions are passed over. The accuracy of a fix follows its point's "hdop". The track's name is that of
/// the first track or route.
///
/// It is an error when the file cannot be read, is no well-formed XML or no GPX, or has no point.
[[nodiscard]] TrackResult readGPX(const std::string& path);

/// The same for a text. @p name stands for the file's name in an error.
[[nodiscard]] TrackResult readGPXText(std::string_view text, const std::string& name);

} // namespace quorvane::testing
