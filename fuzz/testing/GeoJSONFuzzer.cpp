// Reads any bytes as a GeoJSON file.

#include "fuzz/testing/TrackFuzzing.h"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    quorvane::fuzz::readAnything({reinterpret_cast<const char*>(data), size}, quorvane::testing::TrackFormat::geoJSON);
    return 0;
}
