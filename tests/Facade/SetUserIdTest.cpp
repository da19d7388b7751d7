#include <cstdlib>

#include <gmock/gmock.h>

#include "Facade/Quorvane.h"
#include "support/APITest.h"
#include "support/TimeLimit.h"

namespace quorvane {
namespace {

using ::testing::ElementsAre;
using ::testing::IsEmpty;

class SetUserIdTest : public APITest {
protected:
    SetUserIdTest() { setLogLevel(QVLogLevel::INFO); }
};

TEST_F(SetUserIdTest, DoesNothingWithoutAKey) {
    preferences().remove("quorvane_access_key");
    preferences().remove("quorvane_user_id");

    Quorvane::setUserId("rider");
    phone->runUntilIdle();

    EXPECT_EQ(stored("quorvane_user_id"), std::nullopt);
    EXPECT_THAT(requestLines(), IsEmpty());
}

TEST_F(SetUserIdTest, StoresTheUserAndSignsIn) {
    answerSignIn();

    Quorvane::setUserId("rider");

    EXPECT_EQ(Quorvane::getUserId(), "rider");
    EXPECT_THAT(messages(), ElementsAre("QuorvaneSDK -> authenticated"));
    EXPECT_THAT(requestLines(), ElementsAre("GET /authorize", "POST /token"));
    EXPECT_TRUE(Quorvane::isAuthenticated());
}

TEST_F(SetUserIdTest, ValidTokensNeedNoRequest) {
    storeTokens(100);

    Quorvane::setUserId("rider");

    EXPECT_THAT(messages(), ElementsAre("QuorvaneSDK -> authenticated"));
    EXPECT_THAT(requestLines(), IsEmpty());
}

TEST_F(SetUserIdTest, TheOutcomeIsLoggedAsInformation) {
    answerAuthorize();
    transport().answerOnce("POST", "/token", Answer::with(500));
    transport().answer("POST", "/token", Answer::json(tokenAnswer()));
    setLogLevel(QVLogLevel::WARNING);
    Quorvane::setUserId("rider");
    EXPECT_THAT(messages(), IsEmpty());

    transport().answerOnce("POST", "/token", Answer::with(500));
    auth().logout();
    setLogLevel(QVLogLevel::INFO);
    Quorvane::setUserId("rider");
    EXPECT_THAT(messages(), ElementsAre("QuorvaneSDK -> unauthenticated", "QuorvaneSDK -> authenticated"));
}

TEST_F(SetUserIdTest, ASignInThatFailsIsTriedAgainAtOnce) {
    answerAuthorize();
    transport().answerOnce("POST", "/token", Answer::with(500));
    transport().answerOnce("POST", "/token", Answer::with(429));
    transport().answer("POST", "/token", Answer::json(tokenAnswer()));

    Quorvane::setUserId("rider");

    EXPECT_THAT(messages(), ElementsAre("QuorvaneSDK -> unauthenticated", "QuorvaneSDK -> unauthenticated",
                                        "QuorvaneSDK -> authenticated"));
    EXPECT_EQ(transport().requests("GET", "/authorize").size(), 3U);
    EXPECT_EQ(phone->clock().now(), quorvane::testing::SimulatedClock::start);
    EXPECT_EQ(Quorvane::getUserId(), "rider");
}

TEST_F(SetUserIdTest, AnotherStateInTheAnswerIsTriedAgainToo) {
    transport().answerOnce("GET", "/authorize", Answer::json(R"({"code":"c","state":"another"})"));
    answerSignIn();

    Quorvane::setUserId("rider");

    EXPECT_THAT(messages(), ElementsAre("QuorvaneSDK -> unauthenticated", "QuorvaneSDK -> authenticated"));
}

TEST_F(SetUserIdTest, ARefreshThatFailsForgetsTheTokensAndSignsIn) {
    storeTokens(-1);
    transport().answerOnce("POST", "/token", Answer::with(400));
    answerSignIn();

    Quorvane::setUserId("rider");

    EXPECT_THAT(messages(), ElementsAre("QuorvaneSDK -> unauthenticated", "QuorvaneSDK -> authenticated"));
    EXPECT_THAT(requestLines(), ElementsAre("POST /token", "GET /authorize", "POST /token"));
}

TEST_F(SetUserIdTest, AFailedAttemptSignsOut) {
    storeTokens(-1);
    transport().answer("POST", "/token", Answer::with(400));
    transport().answer("GET", "/authorize", Answer::never());

    Quorvane::setUserId("rider");
    phone->runUntilIdle();

    EXPECT_EQ(stored("quorvane_access_token"), std::nullopt);
    EXPECT_EQ(stored("quorvane_refresh_token"), std::nullopt);
    EXPECT_EQ(preferences().integer("qourvane_access_token_expiry"), std::nullopt);
    EXPECT_EQ(preferences().integer("quorvane_access_token_creation_time"), std::nullopt);
}

TEST_F(SetUserIdTest, WhileSignInFailsTheQueueNeverBecomesIdle) {
    transport().answer("GET", "/authorize", Answer::with(500));

    Quorvane::setUserId("rider");

    EXPECT_FALSE(phone->runUntilIdle(3000));
    EXPECT_GT(transport().requests().size(), 500U);
    EXPECT_EQ(phone->clock().now(), quorvane::testing::SimulatedClock::start);
}

TEST_F(SetUserIdTest, AttemptsThatFailAtOnceDoNotNest) {
    api().auth = nullptr;

    Quorvane::setUserId("rider");

    EXPECT_FALSE(phone->runUntilIdle(100));
}

TEST_F(SetUserIdTest, TheAttemptsEndWithThePlatform) {
    transport().answer("GET", "/authorize", Answer::with(500));
    Quorvane::setUserId("rider");
    phone->runUntilIdle(100);

    phone.relaunch();

    EXPECT_TRUE(phone->runUntilIdle());
    EXPECT_THAT(requestLines(), IsEmpty());
}

using SetUserIdDeathTest = SetUserIdTest;

TEST_F(SetUserIdDeathTest, AnotherUserThanTheStoredOneNeverReturns) {
    EXPECT_EXIT(
        {
            killSoon();
            Quorvane::setUserId("walker");
            std::_Exit(0);
        },
        ::testing::KilledBySignal(SIGALRM), "");
}

TEST_F(SetUserIdDeathTest, InitializingOnAnotherDeviceThanTheStoredUsersNeverReturns) {
    EXPECT_EXIT(
        {
            killSoon();
            Quorvane::initialize("UVZMT0NM-key");
            std::_Exit(0);
        },
        ::testing::KilledBySignal(SIGALRM), "");
}

} // namespace
} // namespace quorvane
