#include <gmock/gmock.h>

#include "API/QuorvaneAPI.h"
#include "support/APITest.h"
#include "support/TestEndpoint.h"

namespace quorvane {
namespace {

using ::testing::ElementsAre;
using ::testing::IsEmpty;

class QuorvaneAPITest : public APITest {
protected:
    using Reported = Calls<QVStatus, std::optional<json::Dictionary>, std::shared_ptr<QVConfig>>;

    void expectNoKey(const Reported& calls) {
        ASSERT_EQ(calls.count(), 1U);
        EXPECT_EQ(calls.first<0>(), QVStatus::ERROR_PUBLISHABLE_KEY);
        EXPECT_FALSE(calls.first<1>());
        EXPECT_EQ(calls.first<2>(), nullptr);
        EXPECT_THAT(requestLines(), IsEmpty());
    }
};

TEST_F(QuorvaneAPITest, WithoutAnAccessKeyARequestFailsBeforeItReturns) {
    preferences().remove("quorvane_access_key");
    storeTokens(3600);
    const Reported calls;

    api().request(TestEndpoint(), calls.record());

    expectNoKey(calls);
}

TEST_F(QuorvaneAPITest, WithoutEndpointsARequestFailsBeforeItReturns) {
    phone.relaunch();
    const Reported calls;

    api().request(TestEndpoint(), calls.record());

    expectNoKey(calls);
}

TEST_F(QuorvaneAPITest, AnEmptyAccessKeyIsAKey) {
    store("quorvane_access_key", "");
    storeTokens(3600);
    transport().answerOtherwise(Answer::json("{}"));
    const Reported calls;

    api().request(TestEndpoint(), calls.record());
    phone->runUntilIdle();

    EXPECT_EQ(calls.first<0>(), QVStatus::SUCCESS);
}

TEST_F(QuorvaneAPITest, ValidTokensSendTheRequestAtOnceWithTheToken) {
    storeTokens(3600);
    transport().answerOtherwise(Answer::json(R"({"apiVersion":"2"})"));
    const Reported calls;

    api().request(TestEndpoint(), calls.record());

    EXPECT_EQ(calls.count(), 0U);
    EXPECT_THAT(requestLines(), ElementsAre("GET /test"));
    EXPECT_EQ(transport().requests()[0].authority, "localhost:3000");
    EXPECT_EQ(transport().requests()[0].request.headers, api().getHeaders());
    EXPECT_EQ(transport().requests()[0].header("Authorization"), "Bearer old-access");

    phone->runUntilIdle();
    ASSERT_EQ(calls.count(), 1U);
    EXPECT_EQ(calls.first<0>(), QVStatus::SUCCESS);
    EXPECT_EQ(calls.first<2>()->apiVersion, "2");
}

TEST_F(QuorvaneAPITest, AnIdentityRequestIsSentAsItIsWithoutASignIn) {
    transport().answerOtherwise(Answer::json("{}"));
    const Reported calls;

    api().authRequest(TestEndpoint(), calls.record());
    phone->runUntilIdle();

    EXPECT_THAT(requestLines(), ElementsAre("GET /test"));
    EXPECT_EQ(transport().requests()[0].authority, "localhost:4001");
    EXPECT_EQ(transport().requests()[0].request.headers, api().getHeaders());
    ASSERT_EQ(calls.count(), 1U);
    EXPECT_EQ(calls.first<0>(), QVStatus::SUCCESS);
}

TEST_F(QuorvaneAPITest, AnIdentityRequestWithoutEndpointsFailsBeforeItReturns) {
    phone.relaunch();
    const Reported calls;

    api().authRequest(TestEndpoint(), calls.record());

    expectNoKey(calls);
}

TEST_F(QuorvaneAPITest, EndpointsReplaceBothRouters) {
    const auto oldAPI = api().api;
    const auto oldAuth = api().auth;
    QVEndpoints endpoints(Environment::LOCAL);
    endpoints.api.localEndpoint = "http://other:1/base";
    endpoints.auth.localEndpoint = "http://other:2";

    api().setEndpoints(endpoints);

    EXPECT_NE(api().api, oldAPI);
    EXPECT_NE(api().auth, oldAuth);
    EXPECT_EQ(api().api->baseURL.text(), "http://other:1/base");
    EXPECT_EQ(api().auth->baseURL.text(), "http://other:2");
}

TEST_F(QuorvaneAPITest, ThereAreNoRoutersBeforeEndpointsAreSet) {
    phone.relaunch();

    EXPECT_EQ(api().api, nullptr);
    EXPECT_EQ(api().auth, nullptr);
}

TEST_F(QuorvaneAPITest, ACompletionMaySendTheNextRequest) {
    storeTokens(3600);
    transport().answerOtherwise(Answer::json("{}"));
    const Reported second;

    api().request(TestEndpoint(), [&](const auto&...) { api().request(TestEndpoint(), second.record()); });
    phone->runUntilIdle();

    EXPECT_EQ(second.count(), 1U);
    EXPECT_EQ(transport().requests().size(), 2U);
}

using QuorvaneAPIDeathTest = QuorvaneAPITest;

TEST_F(QuorvaneAPIDeathTest, AnEndpointThatIsNoURLStopsTheProcess) {
    QVEndpoints endpoints(Environment::LOCAL);
    endpoints.api.localEndpoint = "no URL";
    EXPECT_DEATH(api().setEndpoints(endpoints), "the endpoint of a service must be a URL");

    QVEndpoints others(Environment::LOCAL);
    others.auth.localEndpoint = "";
    EXPECT_DEATH(api().setEndpoints(others), "the endpoint of a service must be a URL");
}

TEST_F(QuorvaneAPIDeathTest, ARequestWithoutAPlatformStopsTheProcess) {
    EXPECT_DEATH(
        {
            platform::install(nullptr);
            QuorvaneAPI::shared().request(TestEndpoint(), [](const auto&...) {});
        },
        "a platform must be installed");
}

} // namespace
} // namespace quorvane
