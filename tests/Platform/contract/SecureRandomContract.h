#pragma once

#include <algorithm>
#include <cstdint>
#include <set>
#include <string>
#include <thread>
#include <vector>

#include <gmock/gmock.h>

#include "Platform/SecureRandom.h"
#include "Platform/contract/Rig.h"

namespace quorvane::platform::contract {

class SecureRandomContract : public Contract {
protected:
    [[nodiscard]] SecureRandom& random() { return platform().random(); }
};

TEST_P(SecureRandomContract, AnswersAsManyBytesAsAskedFor) {
    for (const std::size_t count : {0U, 1U, 16U, 33U, 100'000U}) {
        EXPECT_EQ(random().bytes(count).size(), count);
    }
}

TEST_P(SecureRandomContract, TwoDrawsDiffer) {
    EXPECT_NE(random().bytes(32), random().bytes(32));
}

TEST_P(SecureRandomContract, EachByteValueOccursAboutEquallyOften) {
    std::vector<int> counts(256, 0);

    for (const std::uint8_t byte : random().bytes(256 * 1000)) {
        ++counts[byte];
    }

    // Ten standard deviations around the mean of 1000.
    EXPECT_GT(*std::min_element(counts.begin(), counts.end()), 680);
    EXPECT_LT(*std::max_element(counts.begin(), counts.end()), 1320);
}

TEST_P(SecureRandomContract, AUniformNumberLiesWithinItsBoundsAndReachesBoth) {
    std::set<std::uint64_t> seen;

    for (int i = 0; i < 1000; ++i) {
        seen.insert(random().uniform(43, 48));
    }

    EXPECT_EQ(seen, (std::set<std::uint64_t>{43, 44, 45, 46, 47, 48}));
    EXPECT_EQ(random().uniform(7, 7), 7U);
}

TEST_P(SecureRandomContract, AUUIDIsOfVersionFourInUpperCase) {
    EXPECT_THAT(random().uuid(), ::testing::MatchesRegex("[0-9A-F]{8}-[0-9A-F]{4}-4[0-9A-F]{3}-[89AB][0-9A-F]{3}-"
                                                         "[0-9A-F]{12}"));
    EXPECT_NE(random().uuid(), random().uuid());
}

TEST_P(SecureRandomContract, ThreadsMayDrawAtOnce) {
    std::vector<std::vector<std::string>> drawn(4);
    std::vector<std::thread> threads;
    for (std::vector<std::string>& own : drawn) {
        threads.emplace_back([&] {
            for (int i = 0; i < 100; ++i) {
                own.push_back(random().uuid());
            }
        });
    }
    for (std::thread& thread : threads) {
        thread.join();
    }

    std::set<std::string> all;
    for (const std::vector<std::string>& own : drawn) {
        all.insert(own.begin(), own.end());
    }
    EXPECT_EQ(all.size(), 400U);
}

} // namespace quorvane::platform::contract
