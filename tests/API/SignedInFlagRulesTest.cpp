#include "Core/SignedInFlag.h"
#include "support/APITest.h"
#include "support/TestEndpoint.h"

namespace quorvane {
namespace {

/// What sign-ins, refreshes and requests do to the signed-in flag, which is the tracking flag too.
class SignedInFlagRulesTest : public APITest {
protected:
    SignedInFlagRulesTest() { transport().holdAnswers(true); }

    void setFlag(bool value) { preferences().setBoolean("quorvane_background_tracking", value); }

    void request() {
        transport().answer("GET", "/test", Answer::json("{}"));
        api().request(TestEndpoint(), [](const auto&...) {});
    }

    /// Lets the oldest request have its answer.
    void answerNext() {
        ASSERT_TRUE(transport().deliverNext());
        phone->runUntilIdle();
    }
};

TEST_F(SignedInFlagRulesTest, ASignInTurnsItOffAndStoredTokensTurnItOn) {
    answerSignIn();
    setFlag(true);

    request();
    EXPECT_EQ(flag(), false);

    answerNext();
    EXPECT_EQ(flag(), false);

    answerNext();
    EXPECT_EQ(flag(), true);
    EXPECT_EQ(stored("quorvane_access_token"), "Bearer new-access");

    answerNext();
    EXPECT_EQ(flag(), true);
}

TEST_F(SignedInFlagRulesTest, ASignInThatFailsLeavesItOff) {
    setFlag(true);
    answerAuthorize();
    transport().answer("POST", "/token", Answer::with(500));

    request();
    answerNext();
    answerNext();

    EXPECT_EQ(flag(), false);
}

TEST_F(SignedInFlagRulesTest, AnotherStateLeavesItOff) {
    setFlag(true);
    transport().answer("GET", "/authorize", Answer::json(R"({"code":"c","state":"another"})"));

    request();
    answerNext();

    EXPECT_EQ(flag(), false);
}

TEST_F(SignedInFlagRulesTest, ASignInWithoutARouterTurnsItOff) {
    setFlag(true);
    api().auth = nullptr;

    request();

    EXPECT_EQ(flag(), false);
}

TEST_F(SignedInFlagRulesTest, ARequestWithValidTokensDoesNotTouchIt) {
    storeTokens(100);

    request();
    answerNext();
    EXPECT_EQ(flag(), std::nullopt);

    setFlag(false);
    request();
    answerNext();
    EXPECT_EQ(flag(), false);
}

TEST_F(SignedInFlagRulesTest, ARequestWithARefreshTokenThatIsNotDueTurnsItOn) {
    setFlag(false);
    store("quorvane_refresh_token", "old-refresh");
    store("qourvane_access_token_expiry", now() + 100);

    request();

    EXPECT_EQ(flag(), true);
}

TEST_F(SignedInFlagRulesTest, ARefreshTurnsItOffAndThenBackToWhatItWas) {
    transport().answer("POST", "/token", Answer::json(tokenAnswer()));
    for (const bool before : {true, false}) {
        storeTokens(-1);
        setFlag(before);

        request();
        EXPECT_EQ(flag(), false);
        answerNext();
        EXPECT_EQ(flag(), before);
        answerNext();
        EXPECT_EQ(flag(), before);
    }
}

TEST_F(SignedInFlagRulesTest, ARefreshThatFailsPutsItBackToo) {
    for (const Answer& answer : {Answer::with(400), Answer::json("{"), Answer::failure(Transport::truncated)}) {
        storeTokens(-1);
        setFlag(true);
        transport().answer("POST", "/token", answer);

        request();
        EXPECT_EQ(flag(), false);
        answerNext();
        EXPECT_EQ(flag(), true);
    }
}

TEST_F(SignedInFlagRulesTest, ARefreshWithoutARouterPutsItBackAtOnce) {
    storeTokens(-1);
    setFlag(true);
    api().auth = nullptr;

    request();

    EXPECT_EQ(flag(), true);
}

TEST_F(SignedInFlagRulesTest, OfTwoRefreshesAtOnceTheLastPutsItBack) {
    storeTokens(-1);
    setFlag(true);
    transport().answer("POST", "/token", Answer::json(tokenAnswer()));

    request();
    request();
    EXPECT_EQ(flag(), false);

    answerNext();
    EXPECT_EQ(flag(), false);

    answerNext();
    EXPECT_EQ(flag(), true);
}

TEST_F(SignedInFlagRulesTest, WhatTrackingWritesDuringARefreshStays) {
    transport().answer("POST", "/token", Answer::json(tokenAnswer()));
    for (const bool written : {true, false}) {
        storeTokens(-1);
        setFlag(!written);

        request();
        SignedInFlag::shared().set(written);
        answerNext();

        EXPECT_EQ(flag(), written);
        answerNext();
    }
}

TEST_F(SignedInFlagRulesTest, ASignInDuringARefreshDecidesWhatItIsAfterwards) {
    storeTokens(-1);
    setFlag(false);
    transport().answer("POST", "/token", Answer::json(tokenAnswer()));
    request();

    answerAuthorize();
    auth().handleAuthenticateFlow("rider", "access-key", "myApp://callback", api().auth, [](QVStatus, bool) {});
    transport().deliver();
    phone->runUntilIdle();
    transport().deliver();
    phone->runUntilIdle();

    EXPECT_EQ(flag(), true);
}

TEST_F(SignedInFlagRulesTest, TheAuthenticationCheckRefreshesByTheSameRule) {
    storeTokens(-1);
    setFlag(true);
    transport().answer("POST", "/token", Answer::json(tokenAnswer()));

    auth().authenticate(api().auth, [](QVStatus, bool) {});
    EXPECT_EQ(flag(), false);
    answerNext();

    EXPECT_EQ(flag(), true);
}

TEST_F(SignedInFlagRulesTest, TheFlagIsPutBackBeforeTheCompletionIsCalled) {
    storeTokens(-1);
    setFlag(true);
    transport().answer("POST", "/token", Answer::json(tokenAnswer()));
    std::optional<bool> seen;

    auth().authenticate(api().auth, [&](QVStatus, bool) { seen = flag(); });
    answerNext();

    EXPECT_EQ(seen, true);
}

TEST_F(SignedInFlagRulesTest, AProcessKilledDuringARefreshLeavesItOff) {
    storeTokens(-1);
    setFlag(true);
    transport().answer("POST", "/token", Answer::json(tokenAnswer()));
    request();

    phone.relaunchAfterKill();
    phone->runUntilIdle();

    EXPECT_EQ(flag(), false);
}

TEST_F(SignedInFlagRulesTest, ARefreshThatThePlatformIsTakenAwayFromLeavesTheFlagAndTheTokensAsTheyWere) {
    storeTokens(-1);
    setFlag(true);
    transport().answer("POST", "/token", Answer::json(tokenAnswer()));
    const auto tokens = stored("quorvane_access_token");
    request();
    EXPECT_EQ(flag(), false);

    phone.relaunch();
    phone->runUntilIdle();

    EXPECT_EQ(flag(), true);
    EXPECT_EQ(stored("quorvane_access_token"), tokens);
}

TEST_F(SignedInFlagRulesTest, AProcessKilledDuringASignInLeavesItOff) {
    answerSignIn();
    setFlag(true);
    request();
    answerNext();

    phone.relaunchAfterKill();
    phone->runUntilIdle();

    EXPECT_EQ(flag(), false);
    EXPECT_EQ(stored("quorvane_access_token"), std::nullopt);
}

TEST_F(SignedInFlagRulesTest, SigningOutDoesNotTouchIt) {
    setFlag(true);

    auth().logout();

    EXPECT_EQ(flag(), true);
}

} // namespace
} // namespace quorvane
