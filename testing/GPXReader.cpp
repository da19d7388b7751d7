#include "testing/GPXReader.h"

#include "testing/TrackReader.h"

namespace quorvane::testing {

TrackResult readGPX(const std::string& path) {
    return readTrack(*TrackReader::open(path, TrackFormat::gpx));
}

TrackResult readGPXText(std::string_view text, const std::string& name) {
    return readTrack(*TrackReader::openText(std::string(text), name, TrackFormat::gpx));
}

} // namespace quorvane::testing
