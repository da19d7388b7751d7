#include "sandbox/Secrets.h"

#include <array>
#include <cstdint>
#include <stdexcept>

#include <openssl/evp.h>
#include <openssl/hmac.h>
#include <openssl/rand.h>

#include "API/PKCE.h"

namespace quorvane::sandbox {
namespace {

const unsigned char* bytesOf(std::string_view text) {
    return reinterpret_cast<const unsigned char*>(text.data());
}

using DigestBytes = std::array<unsigned char, 32>;

std::string textOf(const DigestBytes& digest) {
    return {reinterpret_cast<const char*>(digest.data()), digest.size()};
}

} // namespace

std::string base64URL(std::string_view bytes) {
    return pkce::base64URL({reinterpret_cast<const std::uint8_t*>(bytes.data()), bytes.size()});
}

std::string challengeFor(std::string_view verifier) {
    DigestBytes digest{};
    if (EVP_Digest(verifier.data(), verifier.size(), digest.data(), nullptr, EVP_sha256(), nullptr) != 1) {
        throw std::runtime_error("SHA-256 is not available");
    }
    return base64URL(textOf(digest));
}

std::string signature(std::string_view key, std::string_view text) {
    DigestBytes digest{};
    if (HMAC(EVP_sha256(), key.data(), static_cast<int>(key.size()), bytesOf(text), text.size(), digest.data(),
             nullptr) == nullptr) {
        throw std::runtime_error("HMAC-SHA256 is not available");
    }
    return textOf(digest);
}

std::string randomBytes(std::size_t count) {
    std::string bytes(count, '\0');
    if (RAND_bytes(reinterpret_cast<unsigned char*>(bytes.data()), static_cast<int>(count)) != 1) {
        throw std::runtime_error("the system gives no random bytes");
    }
    return bytes;
}

std::string randomToken() {
    return base64URL(randomBytes(32));
}

} // namespace quorvane::sandbox
