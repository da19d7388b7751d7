#include <gtest/gtest.h>

#include "Tracking/QVUser.h"
#include "testing/SimulatedClock.h"
#include "tools/Failure.h"
#include "tools/demo/TrackedRide.h"
#include "tools/demo/TrackingReasons.h"
#include "tools/demo/TrackingStep.h"

namespace quorvane::tool {
namespace {

using namespace std::chrono_literals;
using Rule = SyncDecision::Rule;
using Type = QVEventType;

/// A ride that hears what a test makes up.
class DemoTrackedRideTest : public ::testing::Test {
protected:
    static constexpr platform::Date noon = testing::SimulatedClock::start;

    static std::shared_ptr<QVPlace> place(const std::string& name) {
        auto made = std::make_shared<QVPlace>();
        made->name = name;
        return made;
    }

    static std::shared_ptr<QVEvent> event(Type type, const std::shared_ptr<QVPlace>& at = nullptr,
                                          const std::string& fence = {}) {
        auto made = std::make_shared<QVEvent>();
        made->type = type;
        made->place = at;
        made->geofence = fence.empty() ? nullptr : std::make_shared<QVGeofence>("", fence);
        return made;
    }

    void fix(platform::Date now, bool before, bool after, QVLocationSource source = {}, SyncDecision decision = {}) {
        observed::Fix one;
        one.source = source;
        one.stoppedBefore = before;
        one.stoppedAfter = after;
        one.sync = decision;
        ride.observed(now, one);
    }

    void request(std::uint64_t id, platform::Date now) {
        ride.happened(now, testing::phone::Request{id, "GET", "", 0});
    }

    void answer(std::uint64_t id, platform::Date now, std::optional<int> status,
                const std::string& target = "/v2/locations/find?lat=1") {
        ride.happened(now, testing::phone::Response{id, "GET", target, status});
    }

    void sync(QVStatus status, const std::shared_ptr<QVPlace>& at = nullptr,
              const std::vector<std::shared_ptr<QVEvent>>& events = {}) {
        observed::Sync one;
        one.status = status;
        one.place = at;
        one.events = events;
        ride.observed(noon, one);
    }

    TrackedRide ride;
};

TEST_F(DemoTrackedRideTest, ASyncHasTheAnswerToItsOwnSearchOnly) {
    answer(1, noon, 200);
    answer(2, noon, 401, "/token");
    sync(QVStatus::SUCCESS);
    sync(QVStatus::ERROR_PUBLISHABLE_KEY);
    answer(3, noon, std::nullopt);
    sync(QVStatus::ERROR_NETWORK);

    ASSERT_EQ(ride.syncs().size(), 3U);
    EXPECT_EQ(ride.syncs()[0].answer, 200);
    EXPECT_EQ(ride.syncs()[1].answer, std::nullopt);
    EXPECT_EQ(ride.syncs()[2].answer, std::nullopt);
}

TEST_F(DemoTrackedRideTest, APlaceThatIsLeftIsTheOneThatWasThereBefore) {
    const auto mill = place("Mill");
    const auto inn = place("Inn");
    sync(QVStatus::SUCCESS, mill,
         {event(Type::USER_ENTERED_PLACE, mill), event(Type::USER_ENTERED_GEOFENCE, mill, "Mill")});
    sync(QVStatus::ERROR_SERVER);
    sync(QVStatus::SUCCESS, inn, {event(Type::USER_ENTERED_PLACE, inn), event(Type::USER_EXITED_PLACE, inn)});
    sync(QVStatus::SUCCESS, nullptr, {event(Type::USER_EXITED_PLACE), event(Type::USER_STARTED_TRAVELING)});

    const auto& syncs = ride.syncs();
    EXPECT_EQ(syncs[0].events[0].name, "Mill");
    EXPECT_EQ(syncs[0].events[1].name, "Mill");
    EXPECT_TRUE(syncs[1].events.empty());
    EXPECT_EQ(syncs[2].place, "Inn");
    EXPECT_EQ(syncs[2].events[0].name, "Inn");
    EXPECT_EQ(syncs[2].events[1].name, "Mill") << "a failed sync has not made it forgotten";
    EXPECT_EQ(syncs[3].events[0].name, "Inn");
    EXPECT_EQ(syncs[3].events[1].name, "");
    EXPECT_EQ(ride.eventCount(), 6U);
}

TEST_F(DemoTrackedRideTest, AStopLastsFromTheFixThatBeginsItToTheOneThatEndsIt) {
    fix(noon, false, false);
    fix(noon + 30s, false, true);
    fix(noon + 60s, true, true);
    fix(noon + 90s, true, false);
    fix(noon + 120s, false, true);

    ASSERT_EQ(ride.stops().size(), 2U);
    EXPECT_EQ(ride.stops()[0].begin, noon + 30s);
    EXPECT_EQ(ride.stops()[0].end, noon + 90s);
    EXPECT_EQ(ride.stops()[1].end, std::nullopt);
    EXPECT_EQ(ride.fixCount(), 5U);
}

TEST_F(DemoTrackedRideTest, FixesAreCountedByRuleAndOnlySentOnesByWhatForcedThem) {
    fix(noon, false, false, {}, {Rule::send, SyncDecision::Force::neverSent});
    fix(noon, false, false, {}, {Rule::cantExit});
    fix(noon, false, false, {}, {Rule::cantExit});
    fix(noon, false, false, {}, {Rule::send});

    EXPECT_EQ(ride.decided(Rule::send), 2U);
    EXPECT_EQ(ride.decided(Rule::cantExit), 2U);
    EXPECT_EQ(ride.decided(Rule::rateLimit), 0U);
    EXPECT_EQ(ride.forced(SyncDecision::Force::neverSent), 1U);
    EXPECT_EQ(ride.forced(SyncDecision::Force::none), 1U);
}

TEST_F(DemoTrackedRideTest, AFixIsTheTimersWhereTheTimerAskedAndGotOne) {
    constexpr auto background = QVLocationSource::BACKGROUND_LOCATION;
    ride.observed(noon, observed::LocationRequest{true, std::nullopt});
    fix(noon, false, false, background);
    fix(noon, false, false, background);
    ride.observed(noon, observed::LocationRequest{true, std::nullopt});
    ride.observed(noon, observed::Failure{});
    fix(noon, false, false, background);
    ride.observed(noon, observed::LocationRequest{false, std::nullopt});
    fix(noon, false, false, background);

    EXPECT_EQ(ride.timerFixCount(), 1U);
    EXPECT_EQ(ride.fixes().at(background), 4U);
}

TEST_F(DemoTrackedRideTest, TimeThatWentByDuringRequestsIsAddedUp) {
    request(1, noon);
    request(2, noon + 1s);
    answer(1, noon + 2s, 200);
    answer(2, noon + 2s, 200);
    answer(3, noon + 9s, 200);

    EXPECT_EQ(ride.timeInFlight(), 3s);
    const AnyCodable::Dictionary document = ride.document();
    EXPECT_EQ(document.at("secondsInFlight"), AnyCodable(3.0));
}

TEST_F(DemoTrackedRideTest, TheDelegateOfTheApplicationIsCounted) {
    ride.delegate()->onClientLocationUpdated({}, false, QVLocationSource::UNKNOWN);
    ride.delegate()->onLocationUpdated({}, nullptr);
    ride.delegate()->onLocationUpdated({}, nullptr);

    EXPECT_EQ(ride.calls(testing::RecordingDelegate::Kind::clientLocationUpdated), 1U);
    EXPECT_EQ(ride.calls(testing::RecordingDelegate::Kind::locationUpdated), 2U);
    EXPECT_EQ(ride.calls(testing::RecordingDelegate::Kind::eventsReceived), 0U);
}

/// A preset with one sync of two requests.
class DemoRequestsTest : public ::testing::Test {
protected:
    DemoRequestsTest() {
        preset.summary.usage.requests = 2;
        preset.ride.observed({}, observed::Sync{});
    }

    void expectFailure(const std::vector<std::string>& targets, const std::string& sentence) {
        std::vector<sandbox::RequestRecord> arrived;
        for (const std::string& target : targets) {
            arrived.push_back({.target = target});
        }
        try {
            requireRequests(preset, arrived);
            EXPECT_EQ("", sentence);
        } catch (const Failure& failure) {
            EXPECT_EQ(failure.what(), sentence);
        }
    }

    TrackedPreset preset;
};

TEST_F(DemoRequestsTest, ASearchForEachSyncAndWhatElseThePhoneSentIsRight) {
    expectFailure({"/token", "/locations/find?lat=1"}, "");
}

TEST_F(DemoRequestsTest, ASyncThatTheServiceHasNotSeenIsAFailure) {
    expectFailure({"/token", "/config"},
                  "the service has seen 2 requests, 0 of them searches, while the phone sent 2 for 1 sync");
}

TEST_F(DemoRequestsTest, ARequestThatIsMissingOrTooManyIsAFailure) {
    expectFailure({"/locations/find"},
                  "the service has seen 1 request, 1 of them searches, while the phone sent 2 for 1 sync");
    expectFailure({"/token", "/locations/find", "/config"},
                  "the service has seen 3 requests, 1 of them searches, while the phone sent 2 for 1 sync");
}

} // namespace
} // namespace quorvane::tool
