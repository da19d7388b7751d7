// Reads any bytes as a GPX file. What comes back is a track whose fixes are all valid, or one sentence.

#include <cmath>
#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <string>
#include <string_view>

#include "testing/GPXReader.h"

namespace {

using namespace quorvane;

void require(bool holds) {
    if (!holds) {
        std::abort();
    }
}

void check(const testing::Track& track) {
    require(!track.fixes.empty());
    for (const platform::Location& fix : track.fixes) {
        require(fix.coordinate.isValid());
        require(std::isfinite(fix.horizontalAccuracy) && fix.horizontalAccuracy > 0);
    }
}

void check(const testing::TrackError& error) {
    require(error.message.starts_with("fuzzed.gpx") && error.message.back() == '.');
    for (const char c : error.message) {
        require(c >= ' ' && c <= '~');
    }
    require(error.message.size() < 300);
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const std::string_view text(reinterpret_cast<const char*>(data), size);
    const testing::TrackResult result = testing::readGPXText(text, "fuzzed.gpx");
    std::visit([](const auto& outcome) { check(outcome); }, result);
    return 0;
}
