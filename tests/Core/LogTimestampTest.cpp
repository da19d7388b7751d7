#include <gtest/gtest.h>

#include "Core/QVLogger.h"

namespace quorvane {
namespace {

using namespace std::chrono_literals;
using std::chrono::sys_days;

constexpr platform::Date day = sys_days{std::chrono::year{2024} / 2 / 29};

TEST(LogTimestamp, MidnightIsTwelve) {
    EXPECT_EQ(logTimestamp(day, 0s), "2024-02-29 12:00:00 GMT");
    EXPECT_EQ(logTimestamp(day + 59min + 59s, 0s), "2024-02-29 12:59:59 GMT");
}

TEST(LogTimestamp, HoursRunFromOneToTwelveTwiceADay) {
    EXPECT_EQ(logTimestamp(day + 1h, 0s), "2024-02-29 01:00:00 GMT");
    EXPECT_EQ(logTimestamp(day + 11h + 59min, 0s), "2024-02-29 11:59:00 GMT");
    EXPECT_EQ(logTimestamp(day + 12h, 0s), "2024-02-29 12:00:00 GMT");
    EXPECT_EQ(logTimestamp(day + 13h + 5min + 9s, 0s), "2024-02-29 01:05:09 GMT");
    EXPECT_EQ(logTimestamp(day + 23h, 0s), "2024-02-29 11:00:00 GMT");
}

TEST(LogTimestamp, TheOffsetIsTheLongLocalizedForm) {
    EXPECT_EQ(logTimestamp(day + 10h, 2h), "2024-02-29 12:00:00 GMT+02:00");
    EXPECT_EQ(logTimestamp(day + 10h, -(3h + 30min)), "2024-02-29 06:30:00 GMT-03:30");
    EXPECT_EQ(logTimestamp(day + 10h, 5h + 45min), "2024-02-29 03:45:00 GMT+05:45");
    EXPECT_EQ(logTimestamp(day + 6h, -8h), "2024-02-28 10:00:00 GMT-08:00");
}

TEST(LogTimestamp, AnOffsetWithSecondsTellsThem) {
    EXPECT_EQ(logTimestamp(day, 19min + 32s), "2024-02-29 12:19:32 GMT+00:19:32");
}

TEST(LogTimestamp, TheOffsetMovesTheDay) {
    EXPECT_EQ(logTimestamp(day + 23h, 2h), "2024-03-01 01:00:00 GMT+02:00");
    EXPECT_EQ(logTimestamp(day, -1h), "2024-02-28 11:00:00 GMT-01:00");
}

TEST(LogTimestamp, PartsOfASecondAreCutOff) {
    EXPECT_EQ(logTimestamp(day + 999ms, 0s), "2024-02-29 12:00:00 GMT");
}

TEST(LogTimestamp, MomentsBefore1970HaveTheirOwnDay) {
    EXPECT_EQ(logTimestamp(platform::Date(-1s), 0s), "1969-12-31 11:59:59 GMT");
    EXPECT_EQ(logTimestamp(platform::Date(-1ms), 0s), "1969-12-31 11:59:59 GMT");
}

} // namespace
} // namespace quorvane
