#include <random>
#include <string>

#include <gtest/gtest.h>

#include "Models/Base64.h"

namespace quorvane {
namespace {

/// One character at a time, as a reader of the definition would write it.
std::string slowBase64(const std::string& bytes) {
    static const std::string alphabet = "ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz0123456789+/";
    std::string bits;
    for (const char byte : bytes) {
        for (int bit = 7; bit >= 0; --bit) {
            bits += ((static_cast<unsigned char>(byte) >> bit) & 1) != 0 ? '1' : '0';
        }
    }
    while (bits.size() % 6 != 0) {
        bits += '0';
    }
    std::string text;
    for (std::size_t i = 0; i < bits.size(); i += 6) {
        text += alphabet[std::stoul(bits.substr(i, 6), nullptr, 2)];
    }
    while (text.size() % 4 != 0) {
        text += '=';
    }
    return text;
}

TEST(Base64, TheExamplesOfTheStandardRead) {
    EXPECT_EQ(base64(""), "");
    EXPECT_EQ(base64("f"), "Zg==");
    EXPECT_EQ(base64("fo"), "Zm8=");
    EXPECT_EQ(base64("foo"), "Zm9v");
    EXPECT_EQ(base64("foob"), "Zm9vYg==");
    EXPECT_EQ(base64("fooba"), "Zm9vYmE=");
    EXPECT_EQ(base64("foobar"), "Zm9vYmFy");
}

TEST(Base64, EveryLengthAgreesWithTheDefinitionBitByBit) {
    std::mt19937 random(7);
    for (std::size_t length = 0; length < 200; ++length) {
        std::string bytes(length, '\0');
        for (char& byte : bytes) {
            byte = static_cast<char>(random());
        }
        EXPECT_EQ(base64(bytes), slowBase64(bytes)) << length;
    }
}

TEST(Base64, TheTextIsAppendedToWhatIsThere) {
    std::string text = "data:,";
    appendBase64(text, "foo");
    EXPECT_EQ(text, "data:,Zm9v");
}

} // namespace
} // namespace quorvane
