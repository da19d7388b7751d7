#pragma once

#include <mutex>

#include "Platform/SecureRandom.h"

namespace quorvane::testing {

/// Bytes that look random and are the same in every run. Never use them for a secret.
///
/// The generator is SplitMix64, started at the seed: for each output the state grows by 0x9E3779B97F4A7C15 and is
/// mixed. A call for n bytes takes (n + 7) / 8 outputs, lowest byte first; what is left of the last one is dropped.
class SimulatedRandom : public platform::SecureRandom {
public:
    explicit SimulatedRandom(std::uint64_t seed = 1) : state(seed) {}

    [[nodiscard]] std::vector<std::uint8_t> bytes(std::size_t count) override;

private:
    std::mutex mutex;
    std::uint64_t state;
};

} // namespace quorvane::testing
