#include <gmock/gmock.h>

#include "testing/PhoneTest.h"

namespace quorvane::testing {
namespace {

using namespace std::chrono_literals;
using phone::AppState;
using phone::LaunchReason;
using platform::Application;
using platform::LocationAuthorization;
using ::testing::Contains;
using ::testing::ElementsAre;
using ::testing::IsEmpty;

class PhoneRunningTest : public PhoneTest {
protected:
    PhoneRunningTest() { phone.moveTo(here); }
};

TEST_F(PhoneRunningTest, InTheForegroundAnApplicationRuns) {
    phone.advance(1h);

    EXPECT_EQ(phone.state(), AppState::foreground);
    EXPECT_EQ(secondsRun(), 3600);
    EXPECT_EQ(application().backgroundTimeRemaining(), Application::foreground);
    EXPECT_THAT(reasons, ElementsAre(LaunchReason::user));
}

TEST_F(PhoneRunningTest, InTheBackgroundItIsSuspendedAfterTenSeconds) {
    phone.enterBackground();
    EXPECT_EQ(application().backgroundTimeRemaining(), 180);
    phone.advance(9s);
    EXPECT_EQ(phone.state(), AppState::background);
    EXPECT_EQ(application().backgroundTimeRemaining(), 171);

    phone.advance(1h);

    EXPECT_EQ(phone.state(), AppState::suspended);
    EXPECT_EQ(secondsRun(), 10);
}

TEST_F(PhoneRunningTest, TimersThatFellDueWhileItWasSuspendedRunWhenItGoesOn) {
    phone.enterBackground();
    int ran = 0;
    phone.platform().mainQueue().postAfter(30s, [&ran] { ++ran; });
    phone.advance(1h);
    EXPECT_EQ(ran, 0);

    phone.launch();
    phone.advance({});

    EXPECT_EQ(phone.state(), AppState::foreground);
    EXPECT_EQ(ran, 1);
    EXPECT_EQ(secondsRun(), 11);
    phone.advance(10s);
    EXPECT_EQ(secondsRun(), 10);
    EXPECT_EQ(phone.usage().launches, 1U);
    EXPECT_EQ(phone.usage().wakeUps, 0U);
}

TEST_F(PhoneRunningTest, AGrantKeepsItRunningUntilItIsEnded) {
    phone.enterBackground();
    const Application::BackgroundTask task = application().beginBackgroundTask("work", [] {});
    phone.platform().mainQueue().postAfter(60s, [this, task] { application().endBackgroundTask(task); });
    phone.advance(1h);

    EXPECT_EQ(phone.state(), AppState::suspended);
    EXPECT_EQ(secondsRun(), 60);
}

TEST_F(PhoneRunningTest, AGrantExpiresAfterThreeMinutes) {
    phone.enterBackground();
    int expired = 0;
    application().beginBackgroundTask("work", [&expired] { ++expired; });
    application().beginBackgroundTask("more", [&expired] { ++expired; });
    phone.advance(180s - 1ns);
    EXPECT_EQ(expired, 0);

    phone.advance(1ns);

    EXPECT_EQ(expired, 2);
    EXPECT_EQ(phone.state(), AppState::suspended);
    EXPECT_EQ(secondsRun(), 180);
}

TEST_F(PhoneRunningTest, AGrantThatIsEndedInItsOwnExpirationIsGone) {
    phone.enterBackground();
    Application::BackgroundTask task = 0;
    int expired = 0;
    task = application().beginBackgroundTask("work", [&] {
        ++expired;
        application().endBackgroundTask(task);
    });
    phone.advance(1h);

    EXPECT_EQ(expired, 1);
    phone.launch();
    phone.enterBackground();
    phone.advance(11s);
    EXPECT_EQ(phone.state(), AppState::suspended);
}

TEST_F(PhoneRunningTest, WithoutTimeLeftThereIsNoGrant) {
    phone.enterBackground();
    Application::BackgroundTask late = 1;
    application().beginBackgroundTask("work", [&] { late = application().beginBackgroundTask("late", [] {}); });
    phone.advance(180s);

    EXPECT_EQ(late, 0U);
}

TEST_F(PhoneRunningTest, ContinuousUpdatesInTheBackgroundKeepItRunning) {
    startBackgroundUpdates();
    phone.enterBackground();
    phone.advance(1h);

    EXPECT_EQ(phone.state(), AppState::background);
    EXPECT_EQ(secondsRun(), 3600);
    EXPECT_EQ(application().backgroundTimeRemaining(), Application::foreground);
    EXPECT_EQ(phone.usage().timerWakeUps, 3600U);
    EXPECT_EQ(phone.usage().wakeUps, 0U);

    manager().stopUpdatingLocation();
    phone.advance(9s);
    EXPECT_EQ(application().backgroundTimeRemaining(), 171);
    phone.advance(1h);
    EXPECT_EQ(phone.state(), AppState::suspended);
    EXPECT_EQ(secondsRun(), 10);
}

TEST_F(PhoneRunningTest, ContinuousUpdatesOfTheForegroundDoNot) {
    manager().startUpdatingLocation();
    EXPECT_THAT(told(), ElementsAre("fix"));
    phone.enterBackground();
    phone.advance(1h);

    EXPECT_EQ(phone.state(), AppState::suspended);
    EXPECT_THAT(told(), IsEmpty());
    EXPECT_EQ(phone.usage().receiverTime, 0s);
    phone.launch();
    EXPECT_THAT(told(), ElementsAre("fix"));
}

TEST_F(PhoneRunningTest, PermissionThatIsWithdrawnEndsWhatKeepsItRunning) {
    startBackgroundUpdates();
    phone.enterBackground();
    phone.advance(1h);
    phone.setAuthorization(LocationAuthorization::denied);
    phone.advance(1h);

    EXPECT_EQ(phone.state(), AppState::suspended);
}

TEST_F(PhoneRunningTest, ARegionThatIsCrossedWakesIt) {
    manager().startMonitoring(home);
    phone.enterBackground();
    phone.advance(1h);
    told();
    secondsRun();

    phone.moveTo(there);
    phone.advance(1h);

    EXPECT_THAT(told(), ElementsAre("exit home"));
    EXPECT_EQ(manager().location()->coordinate, there);
    EXPECT_EQ(phone.usage().wakeUps, 1U);
    EXPECT_EQ(phone.state(), AppState::suspended);
    EXPECT_EQ(secondsRun(), 11);
}

TEST_F(PhoneRunningTest, AVisitWakesIt) {
    manager().startMonitoringVisits();
    phone.enterBackground();
    phone.advance(299s);
    EXPECT_EQ(phone.state(), AppState::suspended);
    phone.advance(1s);

    EXPECT_EQ(phone.state(), AppState::background);
    EXPECT_THAT(told(), ElementsAre("arrival"));
    EXPECT_EQ(phone.usage().wakeUps, 1U);
}

TEST_F(PhoneRunningTest, ASignificantChangeWakesIt) {
    manager().startMonitoringSignificantLocationChanges();
    phone.enterBackground();
    phone.advance(1h);
    phone.moveTo(there);
    phone.advance({});

    EXPECT_EQ(phone.state(), AppState::background);
    EXPECT_EQ(application().backgroundTimeRemaining(), 180);
    EXPECT_THAT(told(), ElementsAre("fix"));
}

TEST_F(PhoneRunningTest, NothingElseWakesIt) {
    phone.enterBackground();
    phone.advance(1h);
    secondsRun();
    phone.moveTo(there);
    phone.setSignal(false);
    phone.setSignal(true);
    phone.setWallTime(SimulatedClock::start);
    phone.advance(1h);

    EXPECT_EQ(phone.state(), AppState::suspended);
    EXPECT_EQ(secondsRun(), 0);
    EXPECT_EQ(phone.usage().wakeUps, 0U);
}

TEST_F(PhoneRunningTest, WithPermissionForItsUseOnlyNothingWakesIt) {
    manager().startMonitoring(home);
    told();
    phone.setAuthorization(LocationAuthorization::whenInUse);
    phone.enterBackground();
    phone.advance(1h);
    phone.moveTo(there);
    phone.advance(1h);
    EXPECT_EQ(phone.state(), AppState::suspended);

    phone.launch();
    EXPECT_THAT(told(), ElementsAre("exit home"));
}

TEST_F(PhoneRunningTest, AnEventWhileItRunsGivesItTenMoreSeconds) {
    manager().startMonitoring(home);
    told();
    phone.enterBackground();
    phone.advance(5s);
    phone.moveTo(there);
    phone.advance(1h);

    EXPECT_EQ(secondsRun(), 15);
    EXPECT_EQ(phone.usage().wakeUps, 0U);
}

TEST_F(PhoneRunningTest, ARegionThatIsCrossedLaunchesAnApplicationThatHasEnded) {
    manager().startMonitoring(home);
    EXPECT_THAT(told(), Contains("inside home"));
    phone.platform().preferences().setString("kept", "yes");
    phone.terminate();
    EXPECT_EQ(phone.state(), AppState::notRunning);
    EXPECT_FALSE(platform::isInstalled());
    phone.advance(1h);
    EXPECT_EQ(phone.state(), AppState::notRunning);

    phone.moveTo(there);
    phone.advance({});

    EXPECT_EQ(phone.state(), AppState::background);
    EXPECT_THAT(reasons, ElementsAre(LaunchReason::user, LaunchReason::location));
    EXPECT_THAT(told(), ElementsAre("exit home"));
    EXPECT_EQ(manager().monitoredRegions().size(), 1U);
    EXPECT_EQ(phone.platform().preferences().string("kept"), "yes");
    EXPECT_EQ(phone.usage().launches, 2U);
    EXPECT_EQ(phone.usage().wakeUps, 1U);
    phone.advance(11s);
    EXPECT_EQ(phone.state(), AppState::suspended);
}

TEST_F(PhoneRunningTest, AVisitThatTheLaunchBeforeMonitoredLaunchesIt) {
    manager().startMonitoringVisits();
    phone.advance(100s);
    phone.terminate();
    phone.advance(199s);
    EXPECT_EQ(phone.state(), AppState::notRunning);
    phone.advance(1s);

    EXPECT_EQ(phone.state(), AppState::background);
    EXPECT_THAT(told(), ElementsAre("arrival"));
}

TEST_F(PhoneRunningTest, WithoutPermissionForAllTimesNothingLaunchesIt) {
    manager().startMonitoring(home);
    told();
    phone.terminate();
    phone.setAuthorization(LocationAuthorization::whenInUse);
    phone.moveTo(there);
    phone.advance(1h);

    EXPECT_EQ(phone.state(), AppState::notRunning);
    phone.launch();
    EXPECT_EQ(manager().authorization(), LocationAuthorization::whenInUse);
}

TEST_F(PhoneRunningTest, TimeGoesOnFromLaunchToLaunch) {
    phone.advance(1h);
    phone.terminate();
    phone.advance(1h);
    phone.launch();

    EXPECT_EQ(phone.platform().clock().now(), SimulatedClock::start + 2h);
    EXPECT_EQ(phone.platform().clock().monotonic(), 2h);
}

TEST_F(PhoneRunningTest, AnApplicationMayBeginWithoutABackgroundMode) {
    const auto declares = [] {
        return platform::current().application().informationDictionary().contains("UIBackgroundModes");
    };
    EXPECT_TRUE(declares());
    phone.terminate();

    PhoneOptions options;
    options.declaresBackgroundLocation = false;
    SimulatedPhone other(options);
    other.launch();
    EXPECT_FALSE(declares());
}

TEST_F(PhoneRunningTest, WorkWithoutAnEndIsSaidToHaveNone) {
    std::function<void()> again = [&] { phone.platform().mainQueue().post(again); };
    again();
    EXPECT_FALSE(phone.advance(1s));

    phone.terminate();
    again = [&] { phone.world().post(again); };
    again();
    EXPECT_FALSE(phone.advance(1s));
}

} // namespace
} // namespace quorvane::testing
