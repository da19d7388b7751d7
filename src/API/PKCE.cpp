#include "API/PKCE.h"

#include <algorithm>

#include "Models/Base64.h"
#include "Platform/Digest.h"
#include "Platform/Platform.h"
#include "Platform/SecureRandom.h"

namespace quorvane::pkce {

std::string base64URL(std::span<const std::uint8_t> bytes) {
    std::string text = base64({reinterpret_cast<const char*>(bytes.data()), bytes.size()});
    std::ranges::replace(text, '+', '-');
    std::ranges::replace(text, '/', '_');
    text.resize(text.find_last_not_of('=') + 1);
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
