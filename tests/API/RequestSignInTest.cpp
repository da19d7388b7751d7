#include <gmock/gmock.h>

#include "support/APITest.h"
#include "support/TestEndpoint.h"

namespace quorvane {
namespace {

using ::testing::ElementsAre;
using ::testing::IsEmpty;

/// Requests of somebody who is not signed in.
class RequestSignInTest : public APITest {
protected:
    using Reported = Calls<QVStatus, std::optional<json::Dictionary>, std::shared_ptr<QVConfig>>;

    RequestSignInTest() {
        answerSignIn();
        transport().answer("GET", "/test", Answer::json(R"({"apiVersion":"2"})"));
    }

    [[nodiscard]] Reported requested() {
        Reported calls;
        api().request(TestEndpoint(), calls.record());
        phone->runUntilIdle();
        EXPECT_EQ(calls.count(), 1U);
        return calls;
    }

    /// The request has failed with @p status and was not sent.
    void expectNotSent(const Reported& calls, QVStatus status) {
        EXPECT_EQ(calls.first<0>(), status);
        EXPECT_FALSE(calls.first<1>());
        EXPECT_EQ(calls.first<2>(), nullptr);
        EXPECT_THAT(transport().requests("GET", "/test"), IsEmpty());
        EXPECT_EQ(transport().openCount(), 0U);
    }
};

TEST_F(RequestSignInTest, ARequestSignsInFirst) {
    const Reported calls = requested();

    EXPECT_THAT(requestLines(), ElementsAre("GET /authorize", "POST /token", "GET /test"));
    EXPECT_EQ(calls.first<0>(), QVStatus::SUCCESS);
    EXPECT_EQ(calls.first<2>()->apiVersion, "2");
}

TEST_F(RequestSignInTest, TheSignInIsForTheStoredUserAndKey) {
    (void)requested();

    const auto query = transport().requests("GET", "/authorize").at(0).query;
    EXPECT_EQ(query.at("client_id"), "access-key");
    EXPECT_EQ(query.at("user_id"), "rider");
    EXPECT_EQ(query.at("redirect_uri"), "myApp://callback");
}

TEST_F(RequestSignInTest, WithoutAStoredUserTheSignInIsForTheEmptyOne) {
    preferences().remove("quorvane_user_id");

    (void)requested();

    EXPECT_EQ(transport().requests("GET", "/authorize").at(0).query.at("user_id"), "");
}

TEST_F(RequestSignInTest, TheHeadersAreThoseAfterTheSignIn) {
    (void)requested();

    EXPECT_EQ(transport().requests("GET", "/test").at(0).header("Authorization"), "Bearer new-access");
}

TEST_F(RequestSignInTest, ASignInThatFailsIsTheStatusOfTheRequestWhichIsNotSent) {
    transport().answer("POST", "/token", Answer::with(403));

    expectNotSent(requested(), QVStatus::ERROR_FORBIDDEN);
}

TEST_F(RequestSignInTest, AnAuthorizeCallThatFailsIsAServerError) {
    transport().answer("GET", "/authorize", Answer::with(401));

    expectNotSent(requested(), QVStatus::ERROR_SERVER);
}

TEST_F(RequestSignInTest, AnotherStateThanTheOneSentIsUnauthorized) {
    transport().answer("GET", "/authorize", Answer::json(R"({"code":"c","state":"another"})"));

    expectNotSent(requested(), QVStatus::ERROR_UNAUTHORIZED);
}

TEST_F(RequestSignInTest, ATokenAnswerWithoutABodyIsUnauthorized) {
    transport().answer("POST", "/token", Answer::with(204));

    expectNotSent(requested(), QVStatus::ERROR_UNAUTHORIZED);
}

TEST_F(RequestSignInTest, ALostTokenAnswerIsANetworkError) {
    transport().answer("POST", "/token", Answer::failure(Transport::truncated));

    expectNotSent(requested(), QVStatus::ERROR_NETWORK);
}

TEST_F(RequestSignInTest, WithoutAnIdentityRouterARequestFailsAtOnce) {
    api().auth = nullptr;
    const Reported calls;

    api().request(TestEndpoint(), calls.record());

    ASSERT_EQ(calls.count(), 1U);
    expectNotSent(calls, QVStatus::ERROR_SERVER);
}

TEST_F(RequestSignInTest, TwoRequestsAtOnceSignInTwice) {
    const Reported first;
    const Reported second;

    api().request(TestEndpoint(), first.record());
    api().request(TestEndpoint(), second.record());
    phone->runUntilIdle();

    EXPECT_EQ(first.first<0>(), QVStatus::SUCCESS);
    EXPECT_EQ(second.first<0>(), QVStatus::SUCCESS);
    EXPECT_EQ(transport().requests("GET", "/authorize").size(), 2U);
    EXPECT_EQ(transport().requests("POST", "/token").size(), 2U);
    EXPECT_EQ(transport().requests("GET", "/test").size(), 2U);
}

TEST_F(RequestSignInTest, ARequestAfterTheSignInNeedsNone) {
    (void)requested();
    transport().forgetRequests();

    (void)requested();

    EXPECT_THAT(requestLines(), ElementsAre("GET /test"));
}

TEST_F(RequestSignInTest, ARefreshTokenThatIsNotDueSendsTheRequestAsItIs) {
    store("quorvane_refresh_token", "old-refresh");
    store("qourvane_access_token_expiry", now() + 100);

    const Reported calls = requested();

    EXPECT_THAT(requestLines(), ElementsAre("GET /test"));
    EXPECT_EQ(transport().requests()[0].header("Authorization"), std::nullopt);
    EXPECT_EQ(calls.first<0>(), QVStatus::SUCCESS);
    EXPECT_EQ(flag(), true);
}

TEST_F(RequestSignInTest, AnAccessTokenWithoutARefreshTokenSignsInAnew) {
    store("quorvane_access_token", "Bearer old-access");
    store("qourvane_access_token_expiry", now() + 100);

    (void)requested();

    EXPECT_THAT(requestLines(), ElementsAre("GET /authorize", "POST /token", "GET /test"));
}

} // namespace
} // namespace quorvane
