#include <cmath>
#include <limits>
#include <random>

#include <gtest/gtest.h>

#include "JSON/Date.h"

namespace quorvane {

using namespace std::chrono_literals;
using json::Date;
using json::dateFromSeconds;
using json::secondsSince2001;

namespace {

constexpr Date start2001{std::chrono::seconds(978307200)};

} // namespace

TEST(Dates, AreSecondsSinceTheBeginningOf2001) {
    EXPECT_EQ(secondsSince2001(start2001), 0.0);
    EXPECT_EQ(secondsSince2001(start2001 + 1500ms), 1.5);
    EXPECT_EQ(secondsSince2001(start2001 - 250ms), -0.25);
    EXPECT_EQ(secondsSince2001(Date{}), -978307200.0);
    EXPECT_EQ(dateFromSeconds(0.125), start2001 + 125ms);
    EXPECT_EQ(dateFromSeconds(-0.125), start2001 - 125ms);
}

TEST(Dates, HaveANumberToTheEndsOfTime) {
    EXPECT_EQ(secondsSince2001((Date::min)()), -10201679236.854775808);
    EXPECT_EQ(secondsSince2001((Date::max)()), 8245064836.854775807);
}

TEST(Dates, OnceDecodedKeepTheirNumber) {
    std::mt19937_64 random(3);
    std::uniform_real_distribution<double> seconds(-2e9, 8e9);
    for (int i = 0; i < 20000; ++i) {
        const double value = seconds(random);
        const double again = secondsSince2001(*dateFromSeconds(value));
        ASSERT_EQ(*dateFromSeconds(again), *dateFromSeconds(value)) << value;
        if (std::fabs(value) > 1e8) {
            ASSERT_EQ(again, value);
        }
    }
}

TEST(Dates, AreNoneFarFromOurTime) {
    EXPECT_EQ(dateFromSeconds(1e10), std::nullopt);
    EXPECT_EQ(dateFromSeconds(-1e10), std::nullopt);
    EXPECT_EQ(dateFromSeconds(std::numeric_limits<double>::quiet_NaN()), std::nullopt);
    EXPECT_NE(dateFromSeconds(8.2e9), std::nullopt);
    EXPECT_NE(dateFromSeconds(-8.2e9), std::nullopt);
}

} // namespace quorvane
