#include <gmock/gmock.h>

#include "support/APITest.h"
#include "support/TestEndpoint.h"

namespace quorvane {
namespace {

using ::testing::ElementsAre;
using ::testing::IsEmpty;

/// Requests of somebody whose tokens have expired.
class RefreshTest : public APITest {
protected:
    using Reported = Calls<QVStatus, std::optional<json::Dictionary>, std::shared_ptr<QVConfig>>;

    RefreshTest() {
        storeTokens(-1);
        transport().answer("POST", "/token", Answer::json(tokenAnswer()));
        transport().answer("GET", "/test", Answer::json(R"({"apiVersion":"2"})"));
    }

    [[nodiscard]] Reported requested() {
        Reported calls;
        api().request(TestEndpoint(), calls.record());
        phone->runUntilIdle();
        EXPECT_EQ(calls.count(), 1U);
        return calls;
    }
};

TEST_F(RefreshTest, ARequestRefreshesTheTokensFirst) {
    const Reported calls = requested();

    EXPECT_THAT(requestLines(), ElementsAre("POST /token", "GET /test"));
    EXPECT_EQ(calls.first<0>(), QVStatus::SUCCESS);
    EXPECT_EQ(stored("quorvane_access_token"), "Bearer new-access");
    EXPECT_EQ(stored("quorvane_refresh_token"), "new-refresh");
    EXPECT_EQ(preferences().integer("qourvane_access_token_expiry"), now() + 3600);
    EXPECT_EQ(preferences().integer("quorvane_access_token_creation_time"), now());
}

TEST_F(RefreshTest, TheRefreshCarriesTheKeyAndTheRefreshToken) {
    (void)requested();

    const auto request = transport().requests("POST", "/token").at(0);
    EXPECT_EQ(request.authority, "localhost:4001");
    EXPECT_EQ(request.request.body, R"({
  "client_id": "access-key",
  "grant_type": "refresh_token",
  "refresh_token": "old-refresh"
})");
    EXPECT_EQ(request.header("Authorization"), "Bearer old-access");
}

TEST_F(RefreshTest, TheHeadersOfTheRequestAreThoseAfterTheRefresh) {
    (void)requested();

    EXPECT_EQ(transport().requests("GET", "/test").at(0).header("Authorization"), "Bearer new-access");
}

TEST_F(RefreshTest, AtTheVerySecondOfTheExpiryTheOldTokensAreStillUsed) {
    storeTokens(0);

    (void)requested();

    EXPECT_THAT(requestLines(), ElementsAre("GET /test"));
    EXPECT_EQ(transport().requests()[0].header("Authorization"), "Bearer old-access");
}

TEST_F(RefreshTest, ARefreshThatFailsIsTheStatusOfTheRequestAndTheTokensStay) {
    const std::vector<std::pair<Answer, QVStatus>> cases{
        {Answer::with(400), QVStatus::ERROR_BAD_REQUEST},
        {Answer::with(401), QVStatus::ERROR_UNAUTHORIZED},
        {Answer::with(500), QVStatus::ERROR_SERVER},
        {Answer::with(600), QVStatus::ERROR_UNKNOWN},
        {Answer::json("{"), QVStatus::ERROR_SERIALIZATION},
        {Answer::failure(Transport::connection), QVStatus::ERROR_NETWORK},
        {Answer::with(200), QVStatus::ERROR_UNAUTHORIZED},
    };
    for (const auto& [answer, status] : cases) {
        transport().answer("POST", "/token", answer);
        transport().forgetRequests();

        EXPECT_EQ(requested().first<0>(), status);

        EXPECT_THAT(requestLines(), ElementsAre("POST /token"));
        EXPECT_EQ(stored("quorvane_access_token"), "Bearer old-access");
        EXPECT_EQ(stored("quorvane_refresh_token"), "old-refresh");
        EXPECT_EQ(preferences().integer("qourvane_access_token_expiry"), now() - 1);
    }
}

TEST_F(RefreshTest, TwoRequestsAtOnceRefreshTwice) {
    const Reported first;
    const Reported second;

    api().request(TestEndpoint(), first.record());
    api().request(TestEndpoint(), second.record());
    phone->runUntilIdle();

    EXPECT_EQ(transport().requests("POST", "/token").size(), 2U);
    EXPECT_EQ(first.first<0>(), QVStatus::SUCCESS);
    EXPECT_EQ(second.first<0>(), QVStatus::SUCCESS);
}

TEST_F(RefreshTest, AnAccessTokenThatIsMissingIsRefreshedWhenThatIsDue) {
    preferences().remove("quorvane_access_token");

    (void)requested();

    EXPECT_THAT(requestLines(), ElementsAre("POST /token", "GET /test"));
}

TEST_F(RefreshTest, WithoutAnIdentityRouterARequestFailsAtOnceAndTheTokensStay) {
    api().auth = nullptr;
    const Reported calls;

    api().request(TestEndpoint(), calls.record());

    ASSERT_EQ(calls.count(), 1U);
    EXPECT_EQ(calls.first<0>(), QVStatus::ERROR_SERVER);
    EXPECT_THAT(requestLines(), IsEmpty());
    EXPECT_EQ(stored("quorvane_refresh_token"), "old-refresh");
}

TEST_F(RefreshTest, TokensThatExpireWithTimeAreRefreshed) {
    storeTokens(60);
    (void)requested();
    EXPECT_THAT(requestLines(), ElementsAre("GET /test"));

    phone->advance(std::chrono::seconds(61));
    (void)requested();

    EXPECT_THAT(requestLines(), ElementsAre("GET /test", "POST /token", "GET /test"));
}

} // namespace
} // namespace quorvane
