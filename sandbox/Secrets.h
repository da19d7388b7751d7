#pragma once

#include <cstddef>
#include <string>
#include <string_view>

namespace quorvane::sandbox {

/// Base64 with "-" and "_" and without padding.
[[nodiscard]] std::string base64URL(std::string_view bytes);

/// The S256 challenge that belongs to a PKCE verifier.
[[nodiscard]] std::string challengeFor(std::string_view verifier);

/// The HMAC-SHA256 of @p text under @p key, as bytes.
[[nodiscard]] std::string signature(std::string_view key, std::string_view text);

/// @p count bytes that nobody can guess.
[[nodiscard]] std::string randomBytes(std::size_t count);

/// A new code or token: 32 random bytes as 43 characters.
[[nodiscard]] std::string randomToken();

} // namespace quorvane::sandbox
