#include <vector>

#include <gtest/gtest.h>

#include "testing/SimulatedClock.h"
#include "testing/TrackPath.h"

namespace quorvane::testing {
namespace {

using namespace std::chrono_literals;
using platform::Coordinate;
using platform::Location;

Location fix(double latitude, double longitude, std::chrono::nanoseconds after, double accuracy = 5) {
    return {{latitude, longitude}, accuracy, -1, SimulatedClock::start + after};
}

TrackPath pathOf(std::vector<Location> fixes) {
    return TrackPath([fixes = std::move(fixes), next = std::size_t{0}]() mutable {
        return next < fixes.size() ? std::optional(fixes[next++]) : std::nullopt;
    });
}

TEST(TrackPathTest, BetweenTwoFixesTheDeviceMovesEvenly) {
    TrackPath path = pathOf({fix(46, 14, 0s), fix(46.4, 14.8, 40s), fix(46, 14, 50s)});

    EXPECT_EQ(path.start(), SimulatedClock::start);
    EXPECT_EQ(path.at(0s)->coordinate, (Coordinate{46, 14}));
    EXPECT_NEAR(path.at(10s)->coordinate.latitude, 46.1, 1e-9);
    EXPECT_NEAR(path.at(10s)->coordinate.longitude, 14.2, 1e-9);
    EXPECT_EQ(path.at(40s)->coordinate, (Coordinate{46.4, 14.8}));
    EXPECT_NEAR(path.at(45s)->coordinate.latitude, 46.2, 1e-9);
}

TEST(TrackPathTest, TheAccuracyIsThatOfTheFixBefore) {
    TrackPath path = pathOf({fix(46, 14, 0s, 5), fix(46, 14, 10s, 50)});

    EXPECT_EQ(path.at(9s)->horizontalAccuracy, 5);
    EXPECT_EQ(path.at(10s)->horizontalAccuracy, 50);
}

TEST(TrackPathTest, AfterTheLastFixTheDeviceStays) {
    TrackPath path = pathOf({fix(46, 14, 0s), fix(47, 14, 10s)});

    EXPECT_EQ(path.at(1h)->coordinate, (Coordinate{47, 14}));
    EXPECT_EQ(path.next(), std::nullopt);
}

TEST(TrackPathTest, TheNextFixIsKnown) {
    TrackPath path = pathOf({fix(46, 14, 0s), fix(46, 14, 10s), fix(46, 14, 30s)});

    EXPECT_EQ(path.next(), 10s);
    EXPECT_EQ(path.reached(), 0s);
    EXPECT_TRUE(path.at(10s));
    EXPECT_EQ(path.next(), 30s);
    EXPECT_EQ(path.reached(), 10s);
}

TEST(TrackPathTest, TheDateLineIsCrossedTheShorterWay) {
    TrackPath east = pathOf({fix(0, 179, 0s), fix(0, -179, 10s)});
    TrackPath west = pathOf({fix(0, -179, 0s), fix(0, 179, 10s)});

    EXPECT_NEAR(east.at(4s)->coordinate.longitude, 179.8, 1e-9);
    EXPECT_NEAR(east.at(6s)->coordinate.longitude, -179.8, 1e-9);
    EXPECT_NEAR(west.at(4s)->coordinate.longitude, -179.8, 1e-9);
    EXPECT_NEAR(west.at(6s)->coordinate.longitude, 179.8, 1e-9);
}

TEST(TrackPathTest, TheWayOverAPoleStaysOnTheEarth) {
    TrackPath path = pathOf({fix(89, 0, 0s), fix(90, 180, 10s), fix(89, 180, 20s)});

    for (const auto elapsed : {0s, 5s, 10s, 15s, 20s}) {
        EXPECT_TRUE(path.at(elapsed)->coordinate.isValid());
    }
}

TEST(TrackPathTest, AFixThatIsNotLaterThanTheLatestIsPassedOver) {
    TrackPath path = pathOf({fix(46, 14, 10s), fix(50, 14, 10s), fix(50, 14, 5s), fix(47, 14, 20s), fix(50, 14, 19s)});

    EXPECT_EQ(path.at(5s)->coordinate, (Coordinate{46.5, 14}));
    EXPECT_EQ(path.at(1h)->coordinate, (Coordinate{47, 14}));
    EXPECT_EQ(path.passedOver(), 3U);
    EXPECT_EQ(path.problem(), "");
}

TEST(TrackPathTest, AFixOfAMonthLaterEndsTheWay) {
    TrackPath path =
        pathOf({fix(46, 14, 0s), fix(47, 14, 31 * 24h), fix(48, 14, 62 * 24h + 1ns), fix(49, 14, 63 * 24h)});

    EXPECT_EQ(path.at(100 * 24h)->coordinate, (Coordinate{47, 14}));
    EXPECT_EQ(path.problem(),
              "The fix after 2026-04-01T12:00:00Z is of 2026-05-02T12:00:00Z, more than 31 days later: "
              "the way ends before it.");
}

TEST(TrackPathTest, TimesAtTheEdgeOfADateAreNoGap) {
    TrackPath path = pathOf({{{46, 14}, 5, -1, platform::Date::max() - 10s}, {{47, 14}, 5, -1, platform::Date::max()}});

    EXPECT_EQ(path.at(10s)->coordinate, (Coordinate{47, 14}));
}

TEST(TrackPathTest, WithoutAFixTheDeviceIsNowhere) {
    TrackPath path = pathOf({});

    EXPECT_EQ(path.start(), std::nullopt);
    EXPECT_EQ(path.at(10s), std::nullopt);
    EXPECT_EQ(path.next(), std::nullopt);
}

} // namespace
} // namespace quorvane::testing
