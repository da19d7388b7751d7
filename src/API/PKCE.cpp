#include "API/PKCE.h"

#include "Platform/Digest.h"
#include "Platform/Platform.h"
#include "Platform/SecureRandom.h"

namespace quorvane::pkce {

std::string base64URL(std::span<const std::uint8_t> bytes) {
    static constexpr std::string_view alphabet = "ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz0123456789-_";
    std::string text;
    text.reserve((bytes.size() * 4 + 2) / 3);
    std::uint32_t bits = 0;
    unsigned waiting = 0;
    for (const std::uint8_t byte : bytes) {
        bits = (bits << 8U) | byte;
        waiting += 8;
        while (waiting >= 6) {
            waiting -= 6;
            text += alphabet[(bits >> waiting) & 0x3FU];
        }
    }
    if (waiting > 0) {
        text += alphabet[(bits << (6 - waiting)) & 0x3FU];
    }
    return text;
}

std::string generateVerifier() {
    platform::SecureRandom& random = platform::current().random();
    return base64URL(random.bytes(random.uniform(43, 128)));
}

std::string generateChallenge(std::string_view verifier) {
    return base64URL(platform::current().digest().sha256(verifier));
}

} // namespace quorvane::pkce
