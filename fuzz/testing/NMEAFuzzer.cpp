// Reads any lines as NMEA sentences. Those that lack a checksum get the right one, or no change would ever get past it.

#include <cstdio>
#include <sstream>

#include "fuzz/testing/TrackFuzzing.h"

namespace {

std::string withChecksums(const std::string& text) {
    std::string result;
    std::istringstream lines(text);
    for (std::string line; std::getline(lines, line);) {
        if (line.starts_with('$') && line.find('*') == std::string::npos) {
            unsigned sum = 0;
            for (const char c : line.substr(1)) {
                sum ^= static_cast<unsigned char>(c);
            }
            char checksum[8];
            std::snprintf(checksum, sizeof checksum, "*%02X", sum);
            line += checksum;
        }
        result += line + "\r\n";
    }
    return result;
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    quorvane::fuzz::readAnything(withChecksums({reinterpret_cast<const char*>(data), size}),
                                 quorvane::testing::TrackFormat::nmea);
    return 0;
}
