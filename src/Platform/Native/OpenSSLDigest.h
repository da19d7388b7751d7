#pragma once

#include <string_view>

#include "Platform/Digest.h"
#include "Platform/SecureRandom.h"

namespace quorvane::platform::native {

class OpenSSLDigest final : public Digest {
public:
    [[nodiscard]] std::array<std::uint8_t, 32> sha256(std::string_view bytes) const override;
    [[nodiscard]] std::array<std::uint8_t, 16> md5(std::string_view bytes) const override;
};

class OpenSSLRandom final : public SecureRandom {
public:
    [[nodiscard]] std::vector<std::uint8_t> bytes(std::size_t count) override;
};

/// HMAC-SHA256 (RFC 2104) of @p message under @p key.
[[nodiscard]] std::array<std::uint8_t, 32> hmacSHA256(std::string_view key, std::string_view message);

} // namespace quorvane::platform::native
