#include "Tracking/TrackingTest.h"

namespace quorvane {
namespace {

using ::testing::ElementsAre;
using ::testing::IsEmpty;

/// What the platform tells, and which fix it makes of it.
class DelegateCallbacksTest : public TrackingTest {
protected:
    DelegateCallbacksTest() {
        setSent(1s);
        track(*QuorvaneTrackingOptions::RESPONSIVE());
        settle();
        observer.all.clear();
    }

    [[nodiscard]] std::vector<Source> sources() {
        settle();
        std::vector<Source> result;
        for (const observed::Fix& fix : fixes()) {
            result.push_back(fix.source);
        }
        return result;
    }

    [[nodiscard]] static platform::Visit visit(platform::Date departure = platform::distantFuture) {
        return {fixAt(0).coordinate, 25, noon - 600s, departure};
    }

    /// The line that @p call logs while the manager is verbose.
    template <class Call>
    [[nodiscard]] std::string lineOf(Call call) {
        manager().verbose = true;
        setLogLevel(QVLogLevel::DEBUG);
        settle();
        phone->application().clearOutput();
        call(static_cast<platform::LocationManagerDelegate&>(manager()));
        const auto lines = messages();
        return lines.empty() ? "" : lines.front();
    }

    const platform::CircularRegion home{"home", {46.0, 14.5}, 200};
    const platform::LocationError error{platform::LocationError::Kind::unknown, "No signal."};
};

TEST_F(DelegateCallbacksTest, OfSeveralLocationsTheLastOneCounts) {
    manager().didUpdateLocations({fixAt(0), fixAt(5), fixAt(10)});

    EXPECT_THAT(sources(), ElementsAre(Source::BACKGROUND_LOCATION));
    EXPECT_EQ(fixes()[0].location, fixAt(10));
}

TEST_F(DelegateCallbacksTest, NoLocationsAreNoFix) {
    manager().didUpdateLocations({});

    EXPECT_THAT(sources(), IsEmpty());
}

TEST_F(DelegateCallbacksTest, AFixThatSomebodyWaitsForIsAForegroundOne) {
    const LocationCalls calls;
    manager().getLocation(Accuracy::LOW, calls.record());
    services().receive(fixAt(0));

    EXPECT_THAT(sources(), ElementsAre(Source::FOREGROUND_LOCATION));
}

TEST_F(DelegateCallbacksTest, AVisitWithoutADepartureIsAnArrival) {
    services().setLastLocation(fixAt(0));
    services().visit(visit());

    EXPECT_THAT(sources(), ElementsAre(Source::VISIT_ARRIVAL));
    EXPECT_EQ(fixes()[0].location, fixAt(0));
    EXPECT_TRUE(stopped());
}

TEST_F(DelegateCallbacksTest, AVisitWithADepartureIsADeparture) {
    services().setLastLocation(fixAt(0));
    services().visit(visit(noon));

    EXPECT_THAT(sources(), ElementsAre(Source::VISIT_DEPARTURE));
}

TEST_F(DelegateCallbacksTest, CrossingsOfRegionsAreFixesAtTheCurrentLocation) {
    services().setLastLocation(fixAt(0));
    const auto hosts = services().make();
    hosts->startMonitoring(home);
    services().enter("home");
    services().exit("home");

    EXPECT_THAT(sources(), ElementsAre(Source::GEOFENCE_ENTER, Source::GEOFENCE_EXIT));
}

TEST_F(DelegateCallbacksTest, WithoutACurrentLocationVisitsAndCrossingsAreNoFixes) {
    manager().didVisit(visit());
    manager().didEnterRegion(home);
    manager().didExitRegion(home);

    EXPECT_THAT(sources(), IsEmpty());
}

TEST_F(DelegateCallbacksTest, SignificantChangesAreBackgroundFixes) {
    services().receiveSignificantChange(fixAt(0));

    EXPECT_THAT(sources(), ElementsAre(Source::BACKGROUND_LOCATION));
}

TEST_F(DelegateCallbacksTest, TheCoarseManagerHasNoDelegate) {
    services().receive(fixAt(0));

    EXPECT_TRUE(lowPower().updates);
    EXPECT_THAT(sources(), IsEmpty());
}

TEST_F(DelegateCallbacksTest, AFailureIsToldToTheDelegate) {
    manager().didFail(error);

    EXPECT_THAT(delegate->errors(), ElementsAre(QVStatus::ERROR_LOCATION));
    ASSERT_EQ(observer.of<observed::Failure>().size(), 1U);
    EXPECT_EQ(observer.of<observed::Failure>()[0].error, error);
}

TEST_F(DelegateCallbacksTest, EachCallIsLoggedWhileVerbose) {
    using Delegate = platform::LocationManagerDelegate;
    const std::string point = "46.0,14.5 +/- 10.0 m at 2026-03-01 12:00:00 +0000";
    const std::string circle = "home (46.0,14.5 +/- 200.0 m)";

    EXPECT_EQ(lineOf([](Delegate& to) {
                  to.didUpdateLocations({fixAt(0), fixAt(0)});
              }),
              "didUpdateLocation: locations = [" + point + ", " + point + "]");
    EXPECT_EQ(lineOf([](Delegate& to) { to.didVisit(visit()); }),
              "didVisit: visit = 46.0,14.5 +/- 25.0 m from 2026-03-01 11:50:00 +0000 to now;");
    EXPECT_EQ(lineOf([](Delegate& to) { to.didVisit(visit(noon)); }),
              "didVisit: visit = 46.0,14.5 +/- 25.0 m from 2026-03-01 11:50:00 +0000 to 2026-03-01 12:00:00 +0000;");
    EXPECT_EQ(lineOf([&](Delegate& to) { to.didEnterRegion(home); }), "didEnterRegion | region = " + circle + ";");
    EXPECT_EQ(lineOf([&](Delegate& to) { to.didExitRegion(home); }), "didExitRegion | region = " + circle + ";");
    EXPECT_EQ(lineOf([&](Delegate& to) { to.didFail(error); }), "didFailWithError | error = No signal.");
}

TEST_F(DelegateCallbacksTest, SomeCallsAreOnlyLogged) {
    using Delegate = platform::LocationManagerDelegate;
    using Status = platform::LocationAuthorization;
    using State = platform::RegionState;
    const std::string circle = "home (46.0,14.5 +/- 200.0 m)";
    const auto statusLine = [this](Status status) {
        return lineOf([status](Delegate& to) { to.didChangeAuthorization(status); });
    };
    const auto stateLine = [this](State state) {
        return lineOf([&](Delegate& to) { to.didDetermineState(home, state); });
    };

    EXPECT_EQ(statusLine(Status::notDetermined), "didChangeAuthorization | status = notDetermined");
    EXPECT_EQ(statusLine(Status::restricted), "didChangeAuthorization | status = restricted");
    EXPECT_EQ(statusLine(Status::denied), "didChangeAuthorization | status = denied");
    EXPECT_EQ(statusLine(Status::always), "didChangeAuthorization | status = always");
    EXPECT_EQ(statusLine(Status::whenInUse), "didChangeAuthorization | status = whenInUse");
    EXPECT_EQ(stateLine(State::unknown), "didDetermineState; state = unknown");
    EXPECT_EQ(stateLine(State::inside), "didDetermineState; state = inside");
    EXPECT_EQ(stateLine(State::outside), "didDetermineState; state = outside");
    EXPECT_EQ(lineOf([&](Delegate& to) { to.didStartMonitoring(home); }),
              "didStartMonitoringFor |  region = " + circle);
    EXPECT_EQ(lineOf([&](Delegate& to) { to.monitoringDidFail(home, error); }),
              "monitoringDidFailFor | region = " + circle);
    EXPECT_EQ(lineOf([&](Delegate& to) { to.didFinishDeferredUpdates(error); }),
              "didFinishDeferredUpdatesWithError | error = No signal.");
    EXPECT_EQ(lineOf([](Delegate& to) { to.didFinishDeferredUpdates(std::nullopt); }),
              "didFinishDeferredUpdatesWithError | error = nil");
    EXPECT_EQ(lineOf([](Delegate& to) { to.didUpdateHeading(270); }), "didUpdateHeading | newHeading = 270.0");
    EXPECT_EQ(lineOf([](Delegate& to) { to.didRangeBeacons(3); }), "didRange | beacons.count = 3");
    EXPECT_EQ(lineOf([&](Delegate& to) { to.didFailRanging("uuid", error); }), "didFailRangingFor | contraint = uuid");
    EXPECT_THAT(observer.all, IsEmpty());
    EXPECT_THAT(delegate->errors(), IsEmpty());
}

TEST_F(DelegateCallbacksTest, NothingIsLoggedOtherwise) {
    setLogLevel(QVLogLevel::DEBUG);

    manager().didChangeAuthorization(platform::LocationAuthorization::denied);
    manager().didStartMonitoring(home);
    manager().didVisit(visit());
    manager().didFail(error);

    EXPECT_THAT(messages(), IsEmpty());
}

} // namespace
} // namespace quorvane
