#include <gtest/gtest.h>

#include "Models/DateDescription.h"

namespace quorvane {
namespace {

using namespace std::chrono_literals;

constexpr json::Date noonInMarch = std::chrono::sys_days{std::chrono::year{2026} / 3 / 1} + std::chrono::hours{12};

TEST(DateDescription, IsTheMomentInUTC) {
    EXPECT_EQ(descriptionOf(noonInMarch), "2026-03-01 12:00:00 +0000");
    EXPECT_EQ(descriptionOf(noonInMarch + 3723s), "2026-03-01 13:02:03 +0000");
}

TEST(DateDescription, IsCutToWholeSeconds) {
    EXPECT_EQ(descriptionOf(noonInMarch + 999999999ns), "2026-03-01 12:00:00 +0000");
    EXPECT_EQ(descriptionOf(noonInMarch - 1ns), "2026-03-01 11:59:59 +0000");
}

TEST(DateDescription, MomentsBefore1970HaveOneToo) {
    EXPECT_EQ(descriptionOf(json::Date(-1s)), "1969-12-31 23:59:59 +0000");
}

TEST(DateDescription, SoHaveBothEndsOfTime) {
    EXPECT_EQ(descriptionOf((json::Date::min)()), "1677-09-21 00:12:43 +0000");
    EXPECT_EQ(descriptionOf((json::Date::max)()), "2262-04-11 23:47:16 +0000");
}

} // namespace
} // namespace quorvane
