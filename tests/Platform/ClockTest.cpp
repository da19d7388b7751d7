#include <gtest/gtest.h>

#include "Platform/Clock.h"

namespace quorvane::platform {
namespace {

using namespace std::chrono_literals;

TEST(Clock, SecondsSince1970AreRoundedToTheNearest) {
    EXPECT_EQ(roundedSecondsSince1970(Date(1'700'000'000s)), 1'700'000'000);
    EXPECT_EQ(roundedSecondsSince1970(Date(10s + 499'999'999ns)), 10);
    EXPECT_EQ(roundedSecondsSince1970(Date(10s + 500ms)), 11);
    EXPECT_EQ(roundedSecondsSince1970(Date(0s)), 0);
}

TEST(Clock, HalvesBefore1970AreRoundedAwayFromZeroToo) {
    EXPECT_EQ(roundedSecondsSince1970(Date(-10s - 499'999'999ns)), -10);
    EXPECT_EQ(roundedSecondsSince1970(Date(-10s - 500ms)), -11);
    EXPECT_EQ(roundedSecondsSince1970(Date(-500ms)), -1);
    EXPECT_EQ(roundedSecondsSince1970(Date(-499ms)), 0);
}

TEST(Clock, TheFirstAndTheLastMomentAreRounded) {
    EXPECT_EQ(roundedSecondsSince1970(Date::max()), 9'223'372'037);
    EXPECT_EQ(roundedSecondsSince1970(Date::min()), -9'223'372'037);
}

} // namespace
} // namespace quorvane::platform
