// Reads any bytes as a table of values between commas.

#include "fuzz/testing/TrackFuzzing.h"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    quorvane::fuzz::readAnything({reinterpret_cast<const char*>(data), size}, quorvane::testing::TrackFormat::csv);
    return 0;
}
