#include "Tracking/QVTrackingService.h"
#include "Tracking/TrackingTest.h"

namespace quorvane {
namespace {

using ::testing::IsEmpty;
using Type = QVEvent::EventType;
using TrackCalls = Calls<QVStatus, std::shared_ptr<QVTrackingResponse>>;

class TrackTest : public TrackingTest {
protected:
    void sync(const TrackCalls& answers, bool isStopped = false, bool replayed = false) {
        QVTrackingService::shared().track(fixAt(0), isStopped, Source::BACKGROUND_LOCATION, replayed, answers.record());
    }

    void failSyncs() { transport().answer("GET", "/locations/find", Answer::with(500)); }

    static constexpr const char* market = R"([{"id":"market","name":"Market","latitude":46.0,"longitude":14.5}])";
    const TrackCalls calls{};
};

TEST_F(TrackTest, AnswersWithTheEventsAndTheUser) {
    answerPlaces(market);

    sync(calls, true);
    EXPECT_EQ(calls.count(), 0U);
    settle();

    ASSERT_EQ(calls.count(), 1U);
    EXPECT_EQ(calls.first<0>(), QVStatus::SUCCESS);
    ASSERT_EQ(calls.first<1>()->events.size(), 3U);
    EXPECT_EQ(calls.first<1>()->events[0]->type, Type::USER_STOPPED_TRAVELING);
    EXPECT_EQ(calls.first<1>()->events[1]->place->_id, "market");
    EXPECT_EQ(syncs(), 1U);
}

TEST_F(TrackTest, TheUserHoldsTheStoredValuesTheLocationAndTheFlagAndNothingElse) {
    store("quorvane_device_id", "device");
    store("quorvane_internal_user_id", "internal");
    store("quorvane_user_description", "a rider");
    preferences().setDictionary("quorvane_user_metadata", {{"age", 30}});

    sync(calls, true);
    settle();

    const QVUser& user = *calls.first<1>()->user;
    EXPECT_EQ(user.deviceId, "device");
    EXPECT_EQ(user._id, "internal");
    EXPECT_EQ(user._description, "a rider");
    EXPECT_EQ(user.userId, "rider");
    EXPECT_EQ(user.metadata, (AnyCodable::Dictionary{{"age", 30}}));
    EXPECT_EQ(user.location, fixAt(0));
    EXPECT_TRUE(user.stopped);
    EXPECT_FALSE(user.foreground);
    EXPECT_FALSE(user.country || user.dma || user.insights || user.place || user.postalCode || user.state);
    EXPECT_FALSE(user.geofences || user.nearbyPlaceChains || user.segments || user.topChains);
}

TEST_F(TrackTest, ValuesThatAreNotStoredAreAbsent) {
    preferences().remove("quorvane_user_id");

    sync(calls);
    settle();

    const QVUser& user = *calls.first<1>()->user;
    EXPECT_EQ(user.deviceId, std::nullopt);
    EXPECT_EQ(user._id, "");
    EXPECT_EQ(user._description, std::nullopt);
    EXPECT_EQ(user.userId, std::nullopt);
    EXPECT_EQ(user.metadata, std::nullopt);
}

TEST_F(TrackTest, TheDelegateIsToldOfTheLocationAndOfTheEventsBeforeTheAnswer) {
    answerPlaces(market);
    std::size_t toldThen = 0;
    QVTrackingService::shared().track(fixAt(0), false, Source::MANUAL_LOCATION, false,
                                      [&](QVStatus, const auto&) { toldThen = delegate->calls().size(); });
    settle();

    ASSERT_EQ(delegate->calls().size(), 2U);
    EXPECT_EQ(toldThen, 2U);
    EXPECT_EQ(delegate->calls()[0].kind, Kind::locationUpdated);
    EXPECT_EQ(delegate->calls()[0].location, fixAt(0));
    EXPECT_EQ(delegate->calls()[0].user->userId, "rider");
    EXPECT_EQ(delegate->calls()[1].kind, Kind::eventsReceived);
    EXPECT_EQ(delegate->calls()[1].events.size(), 2U);
    EXPECT_EQ(delegate->calls()[1].user, delegate->calls()[0].user);
}

TEST_F(TrackTest, WithoutEventsTheDelegateIsToldOfTheLocationOnly) {
    sync(calls);
    settle();

    ASSERT_EQ(delegate->calls().size(), 1U);
    EXPECT_EQ(delegate->calls()[0].kind, Kind::locationUpdated);
}

TEST_F(TrackTest, WhatASyncFoundIsRememberedBeforeItsAnswer) {
    answerPlaces(market);
    QVTrackingService::EventList again;
    QVTrackingService::shared().track(
        fixAt(0), true, Source::BACKGROUND_LOCATION, false, [&](QVStatus, const auto& response) {
            const auto place = response->events.back()->place;
            again =
                QVTrackingService::shared().getEvents(fixAt(0), true, {QVTrackingService::placeToFence(*place)}, place);
        });
    settle();

    EXPECT_EQ(syncs(), 1U);
    EXPECT_THAT(again, IsEmpty());
}

TEST_F(TrackTest, AFailureIsHandedOnWithoutEventsAndWithoutUserAndNothingIsRemembered) {
    answerPlaces(market);
    sync(calls, true);
    settle();
    delegate->forget();
    failSyncs();

    sync(calls, false);
    settle();

    EXPECT_EQ(std::get<0>(calls[1]), QVStatus::ERROR_SERVER);
    EXPECT_EQ(std::get<1>(calls[1]), nullptr);
    EXPECT_THAT(delegate->calls(), IsEmpty());
    answerPlaces(market);
    sync(calls, false);
    settle();
    ASSERT_EQ(std::get<1>(calls[2])->events.size(), 1U);
    EXPECT_EQ(std::get<1>(calls[2])->events[0]->type, Type::USER_STARTED_TRAVELING);
}

TEST_F(TrackTest, AStopThatFailsIsStoredForAReplay) {
    failSyncs();

    sync(calls, true);
    settle();

    EXPECT_EQ(QVState::getLastFailedStoppedLocation(), fixAt(0));
    ASSERT_EQ(observer.of<observed::FailedStop>().size(), 1U);
    EXPECT_FALSE(observer.of<observed::FailedStop>()[0].isReplayed);
}

TEST_F(TrackTest, AStopThatFailsIsStoredWhateverTheFailure) {
    const std::vector<std::pair<Answer, QVStatus>> failures{
        {Answer::json("[]"), QVStatus::ERROR_SERIALIZATION},
        {Answer::failure(Transport::connection), QVStatus::ERROR_NETWORK},
        {Answer::with(403), QVStatus::ERROR_FORBIDDEN},
        {Answer::with(600), QVStatus::ERROR_UNKNOWN},
    };
    for (const auto& [answer, status] : failures) {
        const TrackCalls answers;
        preferences().remove("quorvane_last_failed_stopped_location");
        transport().answer("GET", "/locations/find", answer);

        sync(answers, true);
        settle();

        ASSERT_EQ(answers.count(), 1U);
        EXPECT_EQ(answers.first<0>(), status);
        EXPECT_EQ(answers.first<1>(), nullptr);
        EXPECT_EQ(QVState::getLastFailedStoppedLocation(), fixAt(0));
    }
}

TEST_F(TrackTest, AStopThatFailsForWantOfAKeyIsStoredToo) {
    preferences().remove("quorvane_access_key");

    sync(calls, true);

    EXPECT_EQ(calls.first<0>(), QVStatus::ERROR_PUBLISHABLE_KEY);
    EXPECT_EQ(QVState::getLastFailedStoppedLocation(), fixAt(0));
}

TEST_F(TrackTest, AStopThatIsNoPlaceOnEarthIsNotStored) {
    failSyncs();

    QVTrackingService::shared().track({{46.0, 0}, 10, 5, noon}, true, Source::MANUAL_LOCATION, false, calls.record());
    settle();

    EXPECT_EQ(calls.first<0>(), QVStatus::ERROR_SERVER);
    EXPECT_EQ(QVState::getLastFailedStoppedLocation(), std::nullopt);
}

TEST_F(TrackTest, AnAnswerWithoutABodyLeavesThePlaceAndItsFence) {
    answerPlaces(market);
    sync(calls);
    settle();
    transport().answer("GET", "/locations/find", Answer::with(204));

    sync(calls);
    settle();

    const auto& events = std::get<1>(calls[1])->events;
    ASSERT_EQ(events.size(), 2U);
    EXPECT_EQ(events[0]->type, Type::USER_EXITED_PLACE);
    EXPECT_EQ(events[1]->type, Type::USER_EXITED_GEOFENCE);
    EXPECT_EQ(events[1]->geofence->externalId, "market");
}

TEST_F(TrackTest, NeitherAMovingLocationNorAReplayedStopThatFailsIsStored) {
    failSyncs();

    sync(calls, false);
    sync(calls, true, true);
    settle();

    EXPECT_EQ(calls.count(), 2U);
    EXPECT_EQ(QVState::getLastFailedStoppedLocation(), std::nullopt);
}

TEST_F(TrackTest, ASuccessfulStopIsNotStored) {
    sync(calls, true);
    settle();

    EXPECT_EQ(QVState::getLastFailedStoppedLocation(), std::nullopt);
}

TEST_F(TrackTest, WithoutAKeyItAnswersAtOnce) {
    preferences().remove("quorvane_access_key");

    sync(calls);

    ASSERT_EQ(calls.count(), 1U);
    EXPECT_EQ(calls.first<0>(), QVStatus::ERROR_PUBLISHABLE_KEY);
    EXPECT_EQ(syncs(), 0U);
}

TEST_F(TrackTest, WhatItRemembersEndsWithTheLaunch) {
    answerPlaces(market);
    sync(calls, true);
    settle();
    phone.relaunch();
    api().setEndpoints(QVEndpoints(Environment::LOCAL));
    answerPlaces(market);

    sync(calls, true);
    settle();

    EXPECT_EQ(std::get<1>(calls[1])->events.size(), 3U);
}

TEST_F(TrackTest, TheObserverIsToldOfEverySync) {
    answerPlaces(market);
    sync(calls, true);
    settle();
    failSyncs();
    sync(calls, true, true);
    settle();

    const auto told = observer.of<observed::Sync>();
    ASSERT_EQ(told.size(), 2U);
    EXPECT_EQ(told[0].status, QVStatus::SUCCESS);
    EXPECT_EQ(told[0].fences, 1U);
    EXPECT_EQ(told[0].place->_id, "market");
    EXPECT_EQ(told[0].events.size(), 3U);
    EXPECT_EQ(told[1].status, QVStatus::ERROR_SERVER);
    EXPECT_TRUE(told[1].replayed);
    EXPECT_THAT(told[1].events, IsEmpty());
}

} // namespace
} // namespace quorvane
