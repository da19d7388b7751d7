#include <cstring>
#include <deque>
#include <limits>

#include <gtest/gtest.h>

#include "Platform/SecureRandom.h"

namespace quorvane::platform {
namespace {

/// Answers the bytes that it is given.
class Dictated : public SecureRandom {
public:
    [[nodiscard]] std::vector<std::uint8_t> bytes(std::size_t count) override {
        std::vector<std::uint8_t> result(dictated.begin(), dictated.begin() + static_cast<std::ptrdiff_t>(count));
        dictated.erase(dictated.begin(), dictated.begin() + static_cast<std::ptrdiff_t>(count));
        return result;
    }

    void add(std::uint64_t number) {
        std::uint8_t bytes[sizeof number];
        std::memcpy(bytes, &number, sizeof number);
        dictated.insert(dictated.end(), bytes, bytes + sizeof number);
    }

    std::deque<std::uint8_t> dictated;
};

constexpr std::uint64_t largest = std::numeric_limits<std::uint64_t>::max();

TEST(SecureRandom, DrawsAgainWhereALowNumberWouldBeFavoured) {
    Dictated random;
    // 2^64 is 1 more than a multiple of 3: the largest value must not count.
    random.add(largest);
    random.add(largest - 1);

    EXPECT_EQ(random.uniform(10, 12), 12U);
    EXPECT_TRUE(random.dictated.empty());
}

TEST(SecureRandom, TheWholeRangeIsARangeToo) {
    Dictated random;
    random.add(largest);
    random.add(0);

    EXPECT_EQ(random.uniform(0, largest), largest);
    EXPECT_EQ(random.uniform(0, largest), 0U);
}

TEST(SecureRandom, ARangeOfOneIsThatOne) {
    Dictated random;
    random.add(12345);

    EXPECT_EQ(random.uniform(largest, largest), largest);
}

TEST(SecureRandom, AUUIDMarksItsVersionAndItsVariantOnly) {
    Dictated random;
    random.dictated.assign(16, 0xFF);
    EXPECT_EQ(random.uuid(), "FFFFFFFF-FFFF-4FFF-BFFF-FFFFFFFFFFFF");

    random.dictated.assign(16, 0x00);
    EXPECT_EQ(random.uuid(), "00000000-0000-4000-8000-000000000000");
}

TEST(SecureRandom, TheTextOfAUUIDIsItsBytesInOrder) {
    std::uint8_t bytes[16];
    for (std::uint8_t i = 0; i < 16; ++i) {
        bytes[i] = static_cast<std::uint8_t>(i * 16 + i);
    }

    EXPECT_EQ(uuidText(bytes), "00112233-4455-6677-8899-AABBCCDDEEFF");
}

} // namespace
} // namespace quorvane::platform
