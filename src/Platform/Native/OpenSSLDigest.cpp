#include "Platform/Native/OpenSSLDigest.h"

#include <limits>

#include <openssl/evp.h>
#include <openssl/hmac.h>
#include <openssl/rand.h>

#include "Platform/Precondition.h"

namespace quorvane::platform::native {
namespace {

template <std::size_t Size>
std::array<std::uint8_t, Size> digest(std::string_view bytes, const EVP_MD* algorithm) {
    std::array<std::uint8_t, Size> result{};
    const bool made = EVP_Digest(bytes.data(), bytes.size(), result.data(), nullptr, algorithm, nullptr) == 1;
    QV_PRECONDITION(made, "the cryptographic library must offer SHA-256 and MD5");
    return result;
}

} // namespace

std::array<std::uint8_t, 32> OpenSSLDigest::sha256(std::string_view bytes) const {
    return digest<32>(bytes, EVP_sha256());
}

std::array<std::uint8_t, 16> OpenSSLDigest::md5(std::string_view bytes) const {
    return digest<16>(bytes, EVP_md5());
}

std::vector<std::uint8_t> OpenSSLRandom::bytes(std::size_t count) {
    std::vector<std::uint8_t> result(count);
    constexpr std::size_t most = std::numeric_limits<int>::max();
    for (std::size_t done = 0; done < count;) {
        const std::size_t piece = std::min(count - done, most);
        QV_PRECONDITION(RAND_bytes(result.data() + done, static_cast<int>(piece)) == 1,
                        "the system must offer randomness");
        done += piece;
    }
    return result;
}

std::array<std::uint8_t, 32> hmacSHA256(std::string_view key, std::string_view message) {
    std::array<std::uint8_t, 32> result{};
    const bool made =
        HMAC(EVP_sha256(), key.data(), static_cast<int>(key.size()),
             reinterpret_cast<const unsigned char*>(message.data()), message.size(), result.data(), nullptr) != nullptr;
    QV_PRECONDITION(made, "the cryptographic library must offer HMAC-SHA256");
    return result;
}

} // namespace quorvane::platform::native
