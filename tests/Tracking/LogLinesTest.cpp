#include "Device/QVUtils.h"
#include "Tracking/QVBackgroundTaskManager.h"
#include "Tracking/TrackingTest.h"

namespace quorvane {
namespace {

using ::testing::Contains;
using ::testing::Not;
using ::testing::StartsWith;
using Level = QVLogLevel;

class LogLinesTest;

/// One of the lines of tracking, and what has it logged.
struct LogLine {
    const char* name;
    const char* beginning;
    Level level;
    /// Logged only while the location manager is verbose.
    bool isVerbose;
    void (LogLinesTest::*happen)();
};

void PrintTo(const LogLine& line, std::ostream* out) {
    *out << line.beginning;
}

/// Each line at its level, and at no other; the verbose ones only while the manager is verbose.
class LogLinesTest : public TrackingTest, public ::testing::WithParamInterface<LogLine> {
public:
    void start() { track(options); }
    void startAgain() {
        start();
        start();
    }
    void tick() {
        start();
        advance(30s);
    }
    void stop() {
        start();
        manager().stopTracking();
    }
    void pass(std::optional<platform::Date>& date) {
        date = noon - 60s;
        QVSettings::setTrackingOptions(options);
        manager().updateTracking(std::nullopt);
    }
    void endByDate() {
        SignedInFlag::shared().set(true);
        pass(options.stopTrackingAfter);
    }
    void beginByDate() { pass(options.startTrackingAfter); }
    void ask() { manager().getLocation(Accuracy::LOW, calls.record()); }

    void first() { handle(fixAt(0)); }
    void invalid() { handle({{0, 14.5}, 10, 5, noon}); }
    void inaccurate() {
        setStopped(true);
        handle(fixAt(0, 0, 1500));
    }
    void old() {
        handle(fixAt(0, 60));
        handle(fixAt(0, 10));
    }
    void replay() {
        options.replay = QuorvaneTrackingOptions::Replay::STOPS;
        QVSettings::setTrackingOptions(options);
        preferences().setDictionary("quorvane_last_failed_stopped_location", QVUtils::fromLocation(fixAt(0)));
        first();
    }
    void stayStopped() {
        options.desiredStoppedUpdateInterval = 0;
        QVSettings::setTrackingOptions(options);
        for (const double seconds : {0, 150, 300}) {
            handle(fixAt(0, seconds));
        }
    }
    void beEarly() {
        setSent(1500ms);
        first();
    }
    void beTooFast() {
        options.desiredSyncInterval = 0;
        QVSettings::setTrackingOptions(options);
        setSent(500ms);
        first();
    }
    void sync(Sync mode) {
        options.sync = mode;
        QVSettings::setTrackingOptions(options);
        setSent(60s);
        first();
    }
    void syncNothing() { sync(Sync::NONE); }
    void syncExits() { sync(Sync::STOPS_AND_EXITS); }
    void send() {
        setSent(60s);
        first();
    }

    void beginGrant() { QVBackgroundTaskManager::shared().startBackgroundTask(); }
    void beginGrantTooLate() {
        phone->application().setBackgroundTimeRemaining(15);
        beginGrant();
    }
    void expireGrant() {
        beginGrant();
        phone->application().expireAll();
    }
    void endGrant() { QVBackgroundTaskManager::shared().endBackgroundTask(1); }
    void endGrants() { QVBackgroundTaskManager::shared().endBackgroundTasks(); }

    void locations() { manager().didUpdateLocations({fixAt(0)}); }
    void visit() { manager().didVisit({{46.0, 14.5}, 25, noon, platform::distantFuture}); }
    void enter() { manager().didEnterRegion(home); }
    void exit() { manager().didExitRegion(home); }
    void fail() { manager().didFail(error); }
    void authorize() { manager().didChangeAuthorization(platform::LocationAuthorization::denied); }
    void determine() { manager().didDetermineState(home, platform::RegionState::inside); }
    void monitor() { manager().didStartMonitoring(home); }
    void monitorInVain() { manager().monitoringDidFail(home, error); }
    void finishDeferred() { manager().didFinishDeferredUpdates(error); }
    void turn() { manager().didUpdateHeading(270); }
    void range() { manager().didRangeBeacons(3); }
    void rangeInVain() { manager().didFailRanging("uuid", error); }

protected:
    LogLinesTest() { QVSettings::setTrackingOptions(options); }

    [[nodiscard]] std::vector<std::string> linesAt(Level level, bool verbose) {
        setLogLevel(level);
        manager().verbose = verbose;
        (this->*GetParam().happen)();
        return messages();
    }

    QuorvaneTrackingOptions options = *QuorvaneTrackingOptions::CONTINUOUS();
    const LocationCalls calls{};
    const platform::CircularRegion home{"home", {46.0, 14.5}, 200};
    const platform::LocationError error{platform::LocationError::Kind::unknown, "No signal."};
};

TEST_P(LogLinesTest, IsLoggedAtItsLevel) {
    EXPECT_THAT(linesAt(GetParam().level, true), Contains(StartsWith(GetParam().beginning)));
}

TEST_P(LogLinesTest, IsNotLoggedAtTheNextStricterLevel) {
    const auto stricter = static_cast<Level>(static_cast<int>(GetParam().level) - 1);

    EXPECT_THAT(linesAt(stricter, true), Not(Contains(StartsWith(GetParam().beginning))));
}

TEST_P(LogLinesTest, WithoutVerbosityIsLoggedOnlyWhereItAlwaysIs) {
    const auto lines = linesAt(Level::DEBUG, false);

    if (GetParam().isVerbose) {
        EXPECT_THAT(lines, Not(Contains(StartsWith(GetParam().beginning))));
    } else {
        EXPECT_THAT(lines, Contains(StartsWith(GetParam().beginning)));
    }
}

std::string nameOf(const ::testing::TestParamInfo<LogLine>& line) {
    return line.param.name;
}

constexpr bool verbose = true;
constexpr bool always = false;
using Test = LogLinesTest;

INSTANTIATE_TEST_SUITE_P(
    Tracking, LogLinesTest,
    ::testing::Values(LogLine{"Start", "starting tracking | options = ", Level::DEBUG, verbose, &Test::start},
                      LogLine{"Update", "    updating tracking:\n        location = ", Level::DEBUG, verbose,
                              &Test::start},
                      LogLine{"EndByDate", "Stopping time-based tracking; stopTrackingAfter = ", Level::DEBUG, verbose,
                              &Test::endByDate},
                      LogLine{"BeginByDate", "Starting time-based tracking; startTrackingAfter = ", Level::INFO, always,
                              &Test::beginByDate},
                      LogLine{"StartTimer", "Starting timer; interval = 30", Level::DEBUG, verbose, &Test::start},
                      LogLine{"StartTimerAgain", "Already started timer", Level::DEBUG, verbose, &Test::startAgain},
                      LogLine{"Tick", "Timer fired", Level::DEBUG, verbose, &Test::tick},
                      LogLine{"RequestByTimer", "Requesting location", Level::DEBUG, verbose, &Test::tick},
                      LogLine{"StopTimer", "Stopping timer", Level::DEBUG, verbose, &Test::stop},
                      LogLine{"ScheduleShutdown", "Scheduling shutdown", Level::DEBUG, verbose, &Test::stop},
                      LogLine{"ShutDown", "Shutting down", Level::DEBUG, verbose, &Test::stop},
                      LogLine{"GetLocation", "getLocation | acc = LOW;", Level::DEBUG, verbose, &Test::ask},
                      LogLine{"RequestByCaller", "Requesting location", Level::DEBUG, verbose, &Test::ask}),
    &nameOf);

INSTANTIATE_TEST_SUITE_P(
    Fix, LogLinesTest,
    ::testing::Values(
        LogLine{"Handlers", "Calling completion handlers | handlers.count = 0", Level::DEBUG, verbose, &Test::first},
        LogLine{"Invalid", "Invalid location | source = ", Level::DEBUG, verbose, &Test::invalid},
        LogLine{"Inaccurate", "Skipping location: inaccurate | accuracy = ", Level::DEBUG, verbose, &Test::inaccurate},
        LogLine{"Old", "Skipping location: old | lastMovedAt = ", Level::DEBUG, always, &Test::old},
        LogLine{"Stop", "    calculating stopped |\n    \tstopped = ", Level::DEBUG, always, &Test::first},
        LogLine{"Replay", "Replaying location | location = ", Level::DEBUG, verbose, &Test::replay},
        LogLine{"AlreadyStopped", "Skipping sync: already stopped | stopped = true; wasStopped = true", Level::DEBUG,
                verbose, &Test::stayStopped},
        LogLine{"SyncInterval", "    skipping sync: desired sync interval |\n    \t", Level::DEBUG, verbose,
                &Test::beEarly},
        LogLine{"RateLimit", "Skipping sync: rate limit | justStopped = false; ", Level::INFO, always,
                &Test::beTooFast},
        LogLine{"SyncMode", "Skipping sync: sync mode | sync = none", Level::INFO, always, &Test::syncNothing},
        LogLine{"CantExit", "skipping sync: can't exit |\n\tsync = ", Level::INFO, always, &Test::syncExits},
        LogLine{"ScheduleSend", "Scheduling location send", Level::DEBUG, verbose, &Test::first},
        LogLine{"Send", "sending location |\n    \tsource = ", Level::DEBUG, always, &Test::send}),
    &nameOf);

INSTANTIATE_TEST_SUITE_P(
    BackgroundTask, LogLinesTest,
    ::testing::Values(LogLine{"Begin", "Started background task | tid = 1", Level::WARNING, always, &Test::beginGrant},
                      LogLine{"TooLate", "Background time expiring | duration = 5.0", Level::WARNING, always,
                              &Test::beginGrantTooLate},
                      LogLine{"Expire", "Expiring background task | tid = (identifier.rawValue)", Level::WARNING,
                              always, &Test::expireGrant},
                      LogLine{"End", "Ending background task | tid = 1", Level::WARNING, always, &Test::endGrant},
                      LogLine{"EndAll", "Ending background tasks | count = 0", Level::WARNING, always,
                              &Test::endGrants}),
    &nameOf);

INSTANTIATE_TEST_SUITE_P(
    Platform, LogLinesTest,
    ::testing::Values(
        LogLine{"Locations", "didUpdateLocation: locations = [", Level::DEBUG, verbose, &Test::locations},
        LogLine{"Visit", "didVisit: visit = ", Level::DEBUG, verbose, &Test::visit},
        LogLine{"Enter", "didEnterRegion | region = home", Level::DEBUG, verbose, &Test::enter},
        LogLine{"Exit", "didExitRegion | region = home", Level::DEBUG, verbose, &Test::exit},
        LogLine{"Failure", "didFailWithError | error = ", Level::DEBUG, verbose, &Test::fail},
        LogLine{"Authorization", "didChangeAuthorization | status = ", Level::DEBUG, verbose, &Test::authorize},
        LogLine{"State", "didDetermineState; state = ", Level::DEBUG, verbose, &Test::determine},
        LogLine{"Monitoring", "didStartMonitoringFor |  region = home", Level::DEBUG, verbose, &Test::monitor},
        LogLine{"MonitoringFailure", "monitoringDidFailFor | region = home", Level::DEBUG, verbose,
                &Test::monitorInVain},
        LogLine{"DeferredUpdates", "didFinishDeferredUpdatesWithError | error = ", Level::DEBUG, verbose,
                &Test::finishDeferred},
        LogLine{"Heading", "didUpdateHeading | newHeading = ", Level::DEBUG, verbose, &Test::turn},
        LogLine{"Beacons", "didRange | beacons.count = ", Level::DEBUG, verbose, &Test::range},
        LogLine{"RangingFailure", "didFailRangingFor | contraint = ", Level::DEBUG, verbose, &Test::rangeInVain}),
    &nameOf);

} // namespace
} // namespace quorvane
