#include "testing/SimulatedRandom.h"

namespace quorvane::testing {

std::vector<std::uint8_t> SimulatedRandom::bytes(std::size_t count) {
    const std::lock_guard lock(mutex);
    std::vector<std::uint8_t> result;
    result.reserve(count);
    std::uint64_t output = 0;
    for (std::size_t i = 0; i < count; ++i) {
        if (i % 8 == 0) {
            state += 0x9E3779B97F4A7C15U;
            output = (state ^ (state >> 30U)) * 0xBF58476D1CE4E5B9U;
            output = (output ^ (output >> 27U)) * 0x94D049BB133111EBU;
            output ^= output >> 31U;
        }
        result.push_back(static_cast<std::uint8_t>(output & 0xFFU));
        output >>= 8U;
    }
    return result;
}

} // namespace quorvane::testing
