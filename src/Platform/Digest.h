#pragma once

#include <array>
#include <cstdint>
#include <string_view>

namespace quorvane::platform {

/// Message digests of byte strings. Safe from any thread.
class Digest {
public:
    Digest() = default;
    Digest(const Digest&) = delete;
    Digest& operator=(const Digest&) = delete;
    virtual ~Digest() = default;

    [[nodiscard]] virtual std::array<std::uint8_t, 32> sha256(std::string_view bytes) const = 0;

    /// For names only, never for a proof.
    [[nodiscard]] virtual std::array<std::uint8_t, 16> md5(std::string_view bytes) const = 0;
};

} // namespace quorvane::platform
