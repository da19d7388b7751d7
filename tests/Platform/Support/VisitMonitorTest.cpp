#include <gtest/gtest.h>

#include "Platform/Support/VisitMonitor.h"

namespace quorvane::platform {
namespace {

using namespace std::chrono_literals;

class VisitMonitorTest : public ::testing::Test {
protected:
    /// What a fix that many metres north shows, a minute after the one before.
    std::optional<Visit> fixAt(double metres, double accuracy = 10) {
        now += 1min;
        wall += 1min;
        return monitor.receive({{46 + metres / 111'195.08, 14.5}, accuracy, -1, wall}, now);
    }

    /// Fixes at one place for @p minutes; the last thing that they showed.
    std::optional<Visit> stayAt(double metres, int minutes) {
        std::optional<Visit> last;
        for (int i = 0; i < minutes; ++i) {
            if (const auto visit = fixAt(metres)) {
                last = visit;
            }
        }
        return last;
    }

    VisitMonitor monitor;
    std::chrono::nanoseconds now{0};
    Date wall{1'772'000'000s};
};

TEST_F(VisitMonitorTest, FiveMinutesAtAPlaceAreAVisitWithoutAnEnd) {
    const Date arrival = wall + 1min;
    EXPECT_EQ(stayAt(0, 5), std::nullopt);

    const std::optional<Visit> visit = fixAt(0);

    ASSERT_TRUE(visit);
    EXPECT_EQ(*visit, (Visit{{46, 14.5}, 10, arrival, distantFuture}));
    EXPECT_EQ(stayAt(0, 100), std::nullopt);
}

TEST_F(VisitMonitorTest, LeavingThePlaceEndsTheVisit) {
    const std::optional<Visit> arrival = stayAt(0, 10);

    const std::optional<Visit> departure = fixAt(500);

    ASSERT_TRUE(arrival && departure);
    EXPECT_EQ(departure->coordinate, arrival->coordinate);
    EXPECT_EQ(departure->arrivalDate, arrival->arrivalDate);
    EXPECT_EQ(departure->departureDate, wall);
    EXPECT_EQ(fixAt(1000), std::nullopt);
}

TEST_F(VisitMonitorTest, WhoeverPassesThroughVisitsNothing) {
    for (int i = 0; i < 100; ++i) {
        EXPECT_EQ(fixAt(i * 150.0), std::nullopt);
    }
}

TEST_F(VisitMonitorTest, AStayThatIsTooShortIsForgotten) {
    EXPECT_EQ(stayAt(0, 5), std::nullopt);
    EXPECT_EQ(fixAt(500), std::nullopt);
    EXPECT_EQ(stayAt(0, 5), std::nullopt);
}

TEST_F(VisitMonitorTest, FixesThatDriftAroundThePlaceDoNotEndTheVisit) {
    stayAt(0, 10);
    for (int i = 0; i < 20; ++i) {
        EXPECT_EQ(fixAt(i % 2 == 0 ? 80 : -80, 60), std::nullopt);
        EXPECT_EQ(fixAt(130, 60), std::nullopt);
        EXPECT_EQ(fixAt(0, 60), std::nullopt);
    }
}

TEST_F(VisitMonitorTest, TwoUncertainFixesInARowEndTheVisitAtTheFirst) {
    stayAt(0, 10);
    EXPECT_EQ(fixAt(150, 60), std::nullopt);
    const Date first = wall;

    const std::optional<Visit> departure = fixAt(150, 60);

    ASSERT_TRUE(departure);
    EXPECT_EQ(departure->departureDate, first);
}

TEST_F(VisitMonitorTest, AFixThatMayAsWellBeAtThePlaceSaysNothingAgainstIt) {
    stayAt(0, 10);
    EXPECT_EQ(fixAt(800, 1000), std::nullopt);
    EXPECT_EQ(fixAt(800, 1000), std::nullopt);
    EXPECT_EQ(fixAt(150, 60), std::nullopt);
    EXPECT_EQ(fixAt(800, 1000), std::nullopt);
    EXPECT_EQ(fixAt(150, 60), std::nullopt);
}

TEST_F(VisitMonitorTest, ThePlaceIsTheMeanOfTheFixesAcrossTheDateLineToo) {
    std::optional<Visit> visit;
    for (int i = 0; i < 6; ++i) {
        now += 1min;
        visit = monitor.receive({{0.1, i % 2 == 0 ? 179.9998 : -179.9998}, i % 2 == 0 ? 10.0 : 20.0, -1, wall}, now);
    }

    ASSERT_TRUE(visit);
    EXPECT_NEAR(std::abs(visit->coordinate.longitude), 180, 1e-9);
    EXPECT_NEAR(visit->horizontalAccuracy, 15, 1e-9);
}

TEST_F(VisitMonitorTest, AWallClockThatIsSetMakesNoStayLongerOrShorter) {
    EXPECT_EQ(stayAt(0, 3), std::nullopt);
    wall += 24h;
    EXPECT_EQ(stayAt(0, 2), std::nullopt);
    wall -= 48h;
    EXPECT_TRUE(fixAt(0));
}

TEST_F(VisitMonitorTest, AStayWithoutFurtherFixesIsDueFiveMinutesAfterItsBeginningAndOnce) {
    EXPECT_EQ(monitor.due(), std::nullopt);
    fixAt(0);
    const std::chrono::nanoseconds due = now + 5min;
    EXPECT_EQ(monitor.due(), due);
    EXPECT_EQ(monitor.look(due - 1ns), std::nullopt);

    const std::optional<Visit> visit = monitor.look(due);

    EXPECT_EQ(visit, (Visit{{46, 14.5}, 10, wall, distantFuture}));
    EXPECT_EQ(monitor.due(), std::nullopt);
    EXPECT_EQ(monitor.look(due + 1h), std::nullopt);
    EXPECT_EQ(fixAt(0), std::nullopt);
    EXPECT_EQ(fixAt(500)->arrivalDate, visit->arrivalDate);
}

TEST_F(VisitMonitorTest, NothingIsDueWhileTheLastFixLayOutside) {
    fixAt(0);
    fixAt(150, 60);
    EXPECT_EQ(monitor.due(), std::nullopt);
    EXPECT_EQ(monitor.look(now + 1h), std::nullopt);

    fixAt(0);

    EXPECT_EQ(monitor.due(), now + 3min);
}

TEST_F(VisitMonitorTest, AfterAResetAVisitIsFoundAnew) {
    stayAt(0, 10);
    monitor.reset();

    EXPECT_EQ(fixAt(500), std::nullopt);
    EXPECT_TRUE(stayAt(500, 6));
}

} // namespace
} // namespace quorvane::platform
