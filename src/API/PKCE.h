#pragma once

#include <cstdint>
#include <span>
#include <string>
#include <string_view>

/// Proof key for code exchange (RFC 7636, method "S256").
namespace quorvane::pkce {

/// Base64 with "-" and "_" and without padding (RFC 4648, section 5).
[[nodiscard]] std::string base64URL(std::span<const std::uint8_t> bytes);

/// A new verifier: 43 to 128 random bytes, each count equally likely, as 58 to 171 characters.
[[nodiscard]] std::string generateVerifier();

/// The challenge for a verifier: the SHA-256 of its characters.
[[nodiscard]] std::string generateChallenge(std::string_view verifier);

} // namespace quorvane::pkce
