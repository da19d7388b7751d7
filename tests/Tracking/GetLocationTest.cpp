#include "Tracking/TrackingTest.h"

namespace quorvane {
namespace {

using ::testing::ElementsAre;
using ::testing::IsEmpty;

class GetLocationTest : public TrackingTest {
protected:
    void ask(const LocationCalls& answers, Accuracy accuracy = Accuracy::MEDIUM) {
        manager().getLocation(accuracy, answers.record());
    }

    void receive(const platform::Location& fix) {
        services().receive(fix);
        settle();
    }

    const LocationCalls calls{};
};

TEST_F(GetLocationTest, TheNextFixAnswers) {
    ask(calls);
    EXPECT_EQ(calls.count(), 0U);
    EXPECT_EQ(precise().requests, 1);

    receive(fixAt(0));
    receive(fixAt(10, 1));

    ASSERT_EQ(calls.count(), 1U);
    EXPECT_EQ(calls.first<0>(), QVStatus::SUCCESS);
    EXPECT_EQ(calls.first<1>(), fixAt(0));
}

TEST_F(GetLocationTest, TheAccuracyAskedForIsThatOfTheCaller) {
    const std::vector<std::pair<Accuracy, double>> expected{
        {Accuracy::NONE, 100}, {Accuracy::LOW, 1000}, {Accuracy::MEDIUM, 100}, {Accuracy::HIGH, -1}};
    for (const auto& [accuracy, metres] : expected) {
        ask(calls, accuracy);
        EXPECT_EQ(precise().desiredAccuracy, metres);
    }
}

TEST_F(GetLocationTest, WithoutPermissionDelegateAndCallerAreToldAtOnce) {
    setStopped(true);
    services().setAuthorization(platform::LocationAuthorization::denied);

    ask(calls);

    ASSERT_EQ(calls.count(), 1U);
    EXPECT_EQ(calls.first<0>(), QVStatus::ERROR_PERMISSIONS);
    EXPECT_EQ(calls.first<1>(), std::nullopt);
    EXPECT_FALSE(calls.first<2>());
    EXPECT_THAT(delegate->errors(), ElementsAre(QVStatus::ERROR_PERMISSIONS));
    EXPECT_EQ(precise().requests, 0);
    advance(30s);
    EXPECT_EQ(calls.count(), 1U);
}

TEST_F(GetLocationTest, WithoutPermissionTheDelegateIsToldBeforeTheCaller) {
    services().setAuthorization(platform::LocationAuthorization::restricted);
    std::size_t errorsThen = 0;

    manager().getLocation(Accuracy::LOW, [&](QVStatus, const auto&, bool) { errorsThen = delegate->errors().size(); });

    EXPECT_EQ(errorsThen, 1U);
}

TEST_F(GetLocationTest, PermissionWhileInUseIsEnough) {
    services().setAuthorization(platform::LocationAuthorization::whenInUse);

    ask(calls);
    receive(fixAt(0));

    ASSERT_EQ(calls.count(), 1U);
    EXPECT_EQ(calls.first<0>(), QVStatus::SUCCESS);
}

TEST_F(GetLocationTest, AnAccuracyOutsideTheEnumerationIsAHundredMetres) {
    setLogLevel(QVLogLevel::DEBUG);
    manager().verbose = true;

    ask(calls, static_cast<Accuracy>(9));

    EXPECT_EQ(precise().desiredAccuracy, 100);
    EXPECT_EQ(messages().at(0), "getLocation | acc = NONE;");
}

TEST_F(GetLocationTest, AfterTwentySecondsWithoutAFixTheCallerIsToldThatThereIsNone) {
    setStopped(true);
    ask(calls);
    advance(20s - 1ns);
    EXPECT_EQ(calls.count(), 0U);

    advance(1ns);

    ASSERT_EQ(calls.count(), 1U);
    EXPECT_EQ(calls.first<0>(), QVStatus::ERROR_LOCATION);
    EXPECT_EQ(calls.first<1>(), std::nullopt);
    EXPECT_TRUE(calls.first<2>());
    EXPECT_THAT(delegate->errors(), IsEmpty());
    EXPECT_TRUE(observer.of<observed::Answer>().at(0).timedOut);
}

TEST_F(GetLocationTest, OneTimeoutFailsAllWhoWait) {
    const LocationCalls later;
    ask(calls);
    advance(15s);
    ask(later);

    advance(5s);

    EXPECT_EQ(calls.count(), 1U);
    ASSERT_EQ(later.count(), 1U);
    EXPECT_EQ(later.first<0>(), QVStatus::ERROR_LOCATION);
    advance(60s);
    EXPECT_EQ(later.count(), 1U);
}

TEST_F(GetLocationTest, CallersAreAnsweredInTheOrderOfTheirAsking) {
    std::vector<int> order;
    for (int i = 0; i < 3; ++i) {
        manager().getLocation(Accuracy::LOW, [&order, i](QVStatus, const auto&, bool) { order.push_back(i); });
    }

    receive(fixAt(0));

    EXPECT_THAT(order, ElementsAre(0, 1, 2));
    EXPECT_EQ(observer.of<observed::Answer>().at(0).callers, 3U);
}

TEST_F(GetLocationTest, WhoAsksInsideAnAnswerIsNotLostAndWaitsForTheNextFix) {
    const LocationCalls next;
    manager().getLocation(Accuracy::LOW, [&](QVStatus, const auto&, bool) { ask(next); });
    ask(calls);

    receive(fixAt(0));
    EXPECT_EQ(calls.count(), 1U);
    EXPECT_EQ(next.count(), 0U);

    receive(fixAt(5, 1));
    ASSERT_EQ(next.count(), 1U);
    EXPECT_EQ(next.first<1>(), fixAt(5, 1));
}

TEST_F(GetLocationTest, ThoseWhoAskedInsideAnAnswerHaveATimeoutOfTheirOwn) {
    const LocationCalls next;
    manager().getLocation(Accuracy::LOW, [&](QVStatus, const auto&, bool) { ask(next); });
    ask(calls);
    receive(fixAt(0));

    advance(20s);

    EXPECT_EQ(next.count(), 1U);
    EXPECT_EQ(next.first<0>(), QVStatus::ERROR_LOCATION);
}

TEST_F(GetLocationTest, AFailureOfThePlatformFailsAllWhoWait) {
    ask(calls);

    services().fail({platform::LocationError::Kind::unknown, "No signal."});
    settle();

    ASSERT_EQ(calls.count(), 1U);
    EXPECT_EQ(calls.first<0>(), QVStatus::ERROR_LOCATION);
    EXPECT_EQ(calls.first<1>(), std::nullopt);
    EXPECT_THAT(delegate->errors(), ElementsAre(QVStatus::ERROR_LOCATION));
}

TEST_F(GetLocationTest, OfAFailureTheDelegateIsToldBeforeTheCallers) {
    std::size_t errorsThen = 0;
    manager().getLocation(Accuracy::LOW, [&](QVStatus, const auto&, bool) { errorsThen = delegate->errors().size(); });

    services().fail({platform::LocationError::Kind::unknown, "No signal."});
    settle();

    EXPECT_EQ(errorsThen, 1U);
}

TEST_F(GetLocationTest, AFixThatIsNoPlaceOnEarthFailsAllWhoWaitWithoutAnError) {
    ask(calls);

    receive({{0, 14.5}, 10, 5, noon});

    ASSERT_EQ(calls.count(), 1U);
    EXPECT_EQ(calls.first<0>(), QVStatus::ERROR_LOCATION);
    EXPECT_THAT(delegate->errors(), IsEmpty());
}

TEST_F(GetLocationTest, EachCallerGetsTheStoppedFlagOfItsOwnMoment) {
    std::vector<bool> flags;
    for (int i = 0; i < 2; ++i) {
        manager().getLocation(Accuracy::LOW, [&](QVStatus, const auto&, bool isStopped) {
            flags.push_back(isStopped);
            setStopped(true);
        });
    }

    advance(20s);

    EXPECT_THAT(flags, ElementsAre(false, true));
}

TEST_F(GetLocationTest, ASecondRequestIsNotAnsweredByTheTimeoutOfTheFirst) {
    ask(calls);
    receive(fixAt(0));
    advance(10s);
    const LocationCalls second;
    ask(second);

    advance(10s);
    EXPECT_EQ(second.count(), 0U);
    advance(10s);

    EXPECT_EQ(second.count(), 1U);
}

TEST_F(GetLocationTest, AnAnswerOfAnyKindEndsTheTimeoutsOfAllWhoWereAnswered) {
    const std::vector<std::function<void()>> answers{
        [] {
            manager().didFail({platform::LocationError::Kind::unknown, "No signal."});
        },
        [] {
            manager().handleLocation(platform::Location{{0, 14.5}, 10, 5, noon}, Source::BACKGROUND_LOCATION);
        },
        [this] { advance(10s); },
    };
    for (const auto& answer : answers) {
        const LocationCalls first;
        ask(first);
        advance(10s);
        ask(first);
        answer();
        ASSERT_EQ(first.count(), 2U);
        const LocationCalls later;
        ask(later);

        advance(20s - 1ns);
        EXPECT_EQ(later.count(), 0U);
        advance(1ns);
        EXPECT_EQ(later.count(), 1U);
    }
}

TEST_F(GetLocationTest, TellsWhatItDoesWhileVerbose) {
    setLogLevel(QVLogLevel::DEBUG);
    manager().verbose = true;

    ask(calls, Accuracy::HIGH);
    EXPECT_THAT(messages(), ElementsAre("getLocation | acc = HIGH;", "Requesting location"));

    phone->application().clearOutput();
    advance(20s);
    EXPECT_THAT(messages(), ElementsAre("Calling completion handlers | handlers.count = 1; status = ERROR_LOCATION; "
                                        "location = nil"));
}

TEST_F(GetLocationTest, ACallerOfAnEndedWorldIsNeverAnswered) {
    ask(calls);

    phone.relaunch();
    advance(60s);

    EXPECT_EQ(calls.count(), 0U);
}

} // namespace
} // namespace quorvane
