#include <limits>

#include "Device/QVUtils.h"
#include "Tracking/QVState.h"
#include "Tracking/Seconds.h"
#include "Tracking/TrackingState.h"
#include "support/SimulatedTest.h"

namespace quorvane {
namespace {

using namespace std::chrono_literals;

class QVStateTest : public SimulatedTest {
protected:
    [[nodiscard]] TrackingState state() { return TrackingState(preferences()); }

    const platform::Date noon = quorvane::testing::SimulatedClock::start;
    const platform::Location here{{46.1, 14.5000001}, 12.5, -3.25, noon + 123456789ns};
};

TEST_F(QVStateTest, NothingIsKnownAtFirst) {
    EXPECT_EQ(QVState::getLastMovedLocation(), std::nullopt);
    EXPECT_EQ(QVState::getLastFailedStoppedLocation(), std::nullopt);
    EXPECT_EQ(QVState::getLastMovedAt(), std::nullopt);
    EXPECT_EQ(QVState::getLastSentAt(), std::nullopt);
    EXPECT_FALSE(state().isStopped());
    EXPECT_FALSE(state().canExit());
}

TEST_F(QVStateTest, LocationsAndDatesReadBackExactlyAsWritten) {
    state().setLastMovedLocation(here);
    state().setLastFailedStoppedLocation(here);
    state().setLastMovedAt(here.timestamp);
    state().setLastSentAt(here.timestamp + 1ns);
    phone.relaunch();

    EXPECT_EQ(QVState::getLastMovedLocation(), here);
    EXPECT_EQ(QVState::getLastFailedStoppedLocation(), here);
    EXPECT_EQ(QVState::getLastMovedAt(), here.timestamp);
    EXPECT_EQ(QVState::getLastSentAt(), here.timestamp + 1ns);
}

TEST_F(QVStateTest, StandsUnderItsKeys) {
    state().setLastMovedLocation(here);
    state().setLastFailedStoppedLocation(here);
    state().setLastMovedAt(noon);
    state().setLastSentAt(noon);
    state().setStopped(true);
    state().setCanExit(true);
    state().setInternalUserId("u");

    EXPECT_EQ(preferences().keys(),
              (std::vector<std::string>{"quorvane_can_exit", "quorvane_internal_user_id",
                                        "quorvane_last_failed_stopped_location", "quorvane_last_moved_at",
                                        "quorvane_last_moved_location", "quorvane_last_sent_at", "quorvane_stopped"}));
    EXPECT_EQ(preferences().dictionary("quorvane_last_moved_location"), QVUtils::fromLocation(here));
    EXPECT_EQ(preferences().boolean("quorvane_stopped"), true);
    EXPECT_EQ(preferences().date("quorvane_last_sent_at"), noon);
}

TEST_F(QVStateTest, ALocationThatIsNotValidLeavesWhatWasStored) {
    state().setLastMovedLocation(here);
    state().setLastFailedStoppedLocation(here);
    platform::Location invalid = here;
    invalid.coordinate.latitude = 0;

    state().setLastMovedLocation(invalid);
    state().setLastFailedStoppedLocation(invalid);

    EXPECT_EQ(QVState::getLastMovedLocation(), here);
    EXPECT_EQ(QVState::getLastFailedStoppedLocation(), here);
}

TEST_F(QVStateTest, AnInfiniteLongitudeReadsBackAsTheLargestAfterALaunch) {
    platform::Location odd = here;
    odd.coordinate.longitude = std::numeric_limits<double>::infinity();
    state().setLastMovedLocation(odd);
    state().setLastFailedStoppedLocation(odd);
    phone.relaunch();

    odd.coordinate.longitude = (std::numeric_limits<double>::max)();
    EXPECT_EQ(QVState::getLastMovedLocation(), odd);
    EXPECT_EQ(QVState::getLastFailedStoppedLocation(), odd);
}

TEST_F(QVStateTest, NoFailedStopRemovesTheEntry) {
    state().setLastFailedStoppedLocation(here);

    state().setLastFailedStoppedLocation(std::nullopt);

    EXPECT_EQ(QVState::getLastFailedStoppedLocation(), std::nullopt);
    EXPECT_TRUE(preferences().keys().empty());
}

TEST_F(QVStateTest, ARecordThatSomebodyBrokeIsNone) {
    state().setLastMovedLocation(here);
    preferences().setDictionary("quorvane_last_moved_location", {{"latitude", 46.0}});
    EXPECT_EQ(QVState::getLastMovedLocation(), std::nullopt);

    preferences().setString("quorvane_last_moved_location", "home");
    EXPECT_EQ(QVState::getLastMovedLocation(), std::nullopt);
}

TEST_F(QVStateTest, DatesAndFlagsOfAnotherKindAreNone) {
    preferences().setString("quorvane_last_moved_at", "noon");
    preferences().setInteger("quorvane_last_sent_at", 7);
    preferences().setString("quorvane_stopped", "true");
    preferences().setInteger("quorvane_can_exit", 1);

    EXPECT_EQ(QVState::getLastMovedAt(), std::nullopt);
    EXPECT_EQ(QVState::getLastSentAt(), std::nullopt);
    EXPECT_FALSE(state().isStopped());
    EXPECT_FALSE(state().canExit());
}

TEST(Seconds, AreCountedFromTheFirstMomentToTheSecond) {
    const platform::Date noon = quorvane::testing::SimulatedClock::start;

    EXPECT_EQ(secondsBetween(noon, noon + 1500ms), 1.5);
    EXPECT_EQ(secondsBetween(noon + 1500ms, noon), -1.5);
    EXPECT_EQ(secondsBetween(noon, noon + 1ns), 1e-9);
    EXPECT_EQ(secondsBetween(noon, noon), 0.0);
    EXPECT_EQ(secondsBetween(noon, noon + 100ms), 0.1);
}

TEST(Seconds, AnyTwoMomentsHaveADifference) {
    const platform::Date first = (platform::Date::min)();
    const platform::Date last = (platform::Date::max)();

    EXPECT_NEAR(secondsBetween(first, last), 1.8446744e10, 1e4);
    EXPECT_NEAR(secondsBetween(last, first), -1.8446744e10, 1e4);
    EXPECT_EQ(secondsBetween(last, last), 0.0);
    EXPECT_EQ(secondsBetween(first, first), 0.0);
}

} // namespace
} // namespace quorvane
