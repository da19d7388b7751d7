#include "testing/SimulatedDigest.h"

#include <openssl/evp.h>

#include "Platform/Precondition.h"

namespace quorvane::testing {
namespace {

template <std::size_t Size>
std::array<std::uint8_t, Size> digest(std::string_view bytes, const EVP_MD* kind) {
    std::array<std::uint8_t, Size> result{};
    unsigned int size = 0;
    const int done = EVP_Digest(bytes.data(), bytes.size(), result.data(), &size, kind, nullptr);
    QV_PRECONDITION(done == 1 && size == Size, "the system's OpenSSL must provide SHA-256 and MD5");
    return result;
}

} // namespace

std::array<std::uint8_t, 32> SimulatedDigest::sha256(std::string_view bytes) const {
    return digest<32>(bytes, EVP_sha256());
}

std::array<std::uint8_t, 16> SimulatedDigest::md5(std::string_view bytes) const {
    return digest<16>(bytes, EVP_md5());
}

} // namespace quorvane::testing
