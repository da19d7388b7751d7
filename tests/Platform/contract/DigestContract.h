#pragma once

#include <algorithm>
#include <string>
#include <thread>
#include <vector>

#include "Platform/Digest.h"
#include "Platform/contract/Rig.h"

namespace quorvane::platform::contract {

class DigestContract : public Contract {
protected:
    template <class Bytes>
    static std::string hex(const Bytes& bytes) {
        static constexpr char digits[] = "0123456789abcdef";
        std::string text;
        for (const std::uint8_t byte : bytes) {
            text += digits[byte >> 4U];
            text += digits[byte & 0x0FU];
        }
        return text;
    }

    std::string sha256(std::string_view bytes) { return hex(platform().digest().sha256(bytes)); }
    std::string md5(std::string_view bytes) { return hex(platform().digest().md5(bytes)); }
};

TEST_P(DigestContract, SHA256AnswersThePublishedValues) {
    EXPECT_EQ(sha256(""), "e3b0c44298fc1c149afbf4c8996fb92427ae41e4649b934ca495991b7852b855");
    EXPECT_EQ(sha256("abc"), "ba7816bf8f01cfea414140de5dae2223b00361a396177a9cb410ff61f20015ad");
    EXPECT_EQ(sha256("abcdbcdecdefdefgefghfghighijhijkijkljklmklmnlmnomnopnopq"),
              "248d6a61d20638b8e5c026930c3e6039a33ce45964ff2167f6ecedd419db06c1");
    EXPECT_EQ(sha256(std::string(1'000'000, 'a')), "cdc76e5c9914fb9281a1c7e284d73e67f1809a48a497200e046d39ccc7112cd0");
}

TEST_P(DigestContract, MD5AnswersThePublishedValues) {
    EXPECT_EQ(md5(""), "d41d8cd98f00b204e9800998ecf8427e");
    EXPECT_EQ(md5("abc"), "900150983cd24fb0d6963f7d28e17f72");
    EXPECT_EQ(md5("12345678901234567890123456789012345678901234567890123456789012345678901234567890"),
              "57edf4a22be3c955ac49da2e2107b67a");
}

TEST_P(DigestContract, EachLengthAroundABlockHasADigestOfItsOwn) {
    std::vector<std::string> seen;
    for (std::size_t length = 0; length <= 130; ++length) {
        seen.push_back(sha256(std::string(length, '\0')) + md5(std::string(length, '\0')));
    }
    std::sort(seen.begin(), seen.end());

    EXPECT_EQ(std::unique(seen.begin(), seen.end()) - seen.begin(), 131);
}

TEST_P(DigestContract, AnyThreadMayAsk) {
    std::string elsewhere;

    std::thread([&] { elsewhere = sha256("abc") + md5("abc"); }).join();

    EXPECT_EQ(elsewhere, sha256("abc") + md5("abc"));
}

} // namespace quorvane::platform::contract
