#include <gmock/gmock.h>

#include "support/APITest.h"

namespace quorvane {
namespace {

using ::testing::ElementsAre;
using ::testing::IsEmpty;

class AuthenticationCheckTest : public APITest {
protected:
    using Outcome = Calls<QVStatus, bool>;

    void expectOutcome(const Outcome& outcome, QVStatus status, bool authenticated) {
        ASSERT_EQ(outcome.count(), 1U);
        EXPECT_EQ(outcome.first<0>(), status);
        EXPECT_EQ(outcome.first<1>(), authenticated);
    }

    [[nodiscard]] Outcome checked() {
        Outcome outcome;
        auth().authenticate(api().auth, outcome.record());
        phone->runUntilIdle();
        return outcome;
    }
};

TEST_F(AuthenticationCheckTest, ValidTokensAreASuccessWithoutARequest) {
    storeTokens(3600);
    const Outcome outcome;

    auth().authenticate(api().auth, outcome.record());

    expectOutcome(outcome, QVStatus::SUCCESS, true);
    EXPECT_THAT(requestLines(), IsEmpty());
    EXPECT_EQ(flag(), std::nullopt);
}

TEST_F(AuthenticationCheckTest, TokensCountAsValidAtTheVerySecondOfTheirExpiry) {
    storeTokens(0);

    expectOutcome(checked(), QVStatus::SUCCESS, true);

    EXPECT_THAT(requestLines(), IsEmpty());
}

TEST_F(AuthenticationCheckTest, ExpiredTokensAreRefreshed) {
    storeTokens(-1);
    answerSignIn();

    expectOutcome(checked(), QVStatus::SUCCESS, true);

    EXPECT_THAT(requestLines(), ElementsAre("POST /token"));
    EXPECT_EQ(stored("quorvane_access_token"), "Bearer new-access");
}

TEST_F(AuthenticationCheckTest, ARefreshThatFailsIsItsOutcome) {
    storeTokens(-1);
    transport().answer("POST", "/token", Answer::with(400));

    expectOutcome(checked(), QVStatus::ERROR_BAD_REQUEST, false);
}

TEST_F(AuthenticationCheckTest, WithoutTokensTheUserIsSignedIn) {
    answerSignIn();

    expectOutcome(checked(), QVStatus::SUCCESS, true);

    EXPECT_THAT(requestLines(), ElementsAre("GET /authorize", "POST /token"));
    EXPECT_EQ(transport().requests()[0].query.at("user_id"), "rider");
    EXPECT_EQ(transport().requests()[0].query.at("client_id"), "access-key");
}

TEST_F(AuthenticationCheckTest, ARefreshTokenThatIsNotDueButHasNoAccessTokenSignsIn) {
    answerSignIn();
    store("quorvane_refresh_token", "old-refresh");
    store("qourvane_access_token_expiry", now() + 100);

    expectOutcome(checked(), QVStatus::SUCCESS, true);

    EXPECT_THAT(requestLines(), ElementsAre("GET /authorize", "POST /token"));
}

TEST_F(AuthenticationCheckTest, WithoutAnIdentityRouterItIsAServerErrorAtOnce) {
    const Outcome outcome;

    auth().authenticate(nullptr, outcome.record());

    expectOutcome(outcome, QVStatus::ERROR_SERVER, false);
}

TEST_F(AuthenticationCheckTest, AnObserverIsToldOfEveryOutcome) {
    const Outcome observed;
    auth().observeOutcomes(observed.record());

    storeTokens(3600);
    (void)checked();
    storeTokens(-1);
    transport().answer("POST", "/token", Answer::with(400));
    (void)checked();
    auth().logout();
    answerSignIn();
    (void)checked();

    ASSERT_EQ(observed.count(), 3U);
    EXPECT_EQ(observed[0], Outcome::Call(QVStatus::SUCCESS, true));
    EXPECT_EQ(observed[1], Outcome::Call(QVStatus::ERROR_BAD_REQUEST, false));
    EXPECT_EQ(observed[2], Outcome::Call(QVStatus::SUCCESS, true));
}

TEST_F(AuthenticationCheckTest, AnObserverMayAddAnother) {
    const Outcome late;
    auth().observeOutcomes([&](QVStatus, bool) { auth().observeOutcomes(late.record()); });
    storeTokens(3600);

    (void)checked();
    EXPECT_EQ(late.count(), 0U);

    (void)checked();
    EXPECT_EQ(late.count(), 1U);
}

} // namespace
} // namespace quorvane
