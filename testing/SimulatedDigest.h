#pragma once

#include "Platform/Digest.h"

namespace quorvane::testing {

/// The real digests.
class SimulatedDigest : public platform::Digest {
public:
    [[nodiscard]] std::array<std::uint8_t, 32> sha256(std::string_view bytes) const override;
    [[nodiscard]] std::array<std::uint8_t, 16> md5(std::string_view bytes) const override;
};

} // namespace quorvane::testing
