#include <gmock/gmock.h>

#include "API/Router.h"
#include "support/APITest.h"
#include "support/TestEndpoint.h"

namespace quorvane {
namespace {

using ::testing::IsEmpty;

class RouterRequestTest : public APITest {
protected:
    /// Sends the call through a router and answers what reached the transport.
    [[nodiscard]] platform::HTTPRequest sent(const TestEndpoint& endpoint, Headers headers = {}) {
        transport().answerOtherwise(Answer::json("{}"));
        Router(*URL::parse("https://api.example.com/v2")).request(endpoint, std::move(headers), [](const auto&...) {});
        return transport().requests().back().request;
    }
};

TEST_F(RouterRequestTest, TheAddressIsTheBaseWithThePathAndTheParameters) {
    TestEndpoint endpoint;
    endpoint.path = "/locations/find";
    endpoint.parameters = {{"rad", std::int64_t{1000}}, {"lat", 46.0}, {"q", "a b"}, {"flag", true}};

    EXPECT_EQ(sent(endpoint).url, "https://api.example.com/v2/locations/find?flag=true&lat=46.0&q=a%20b&rad=1000");
}

TEST_F(RouterRequestTest, WithoutParametersTheAddressHasNoQuery) {
    EXPECT_EQ(sent(TestEndpoint()).url, "https://api.example.com/v2/test");
}

TEST_F(RouterRequestTest, ParametersArriveAsTheyWereSent) {
    TestEndpoint endpoint;
    endpoint.parameters = {{"blank", "a b"},
                           {"plus", "a+b"},
                           {"and", "a&b=c"},
                           {"percent", "100%41"},
                           {"text",
                            "\xC5\xBEi\xC5\xBE"
                            "ek"},
                           {"empty", ""}};

    (void)sent(endpoint);

    const std::map<std::string, std::string> expected{{"blank", "a b"},
                                                      {"plus", "a+b"},
                                                      {"and", "a&b=c"},
                                                      {"percent", "100%41"},
                                                      {"text",
                                                       "\xC5\xBEi\xC5\xBE"
                                                       "ek"},
                                                      {"empty", ""}};
    EXPECT_EQ(transport().requests().back().query, expected);
}

TEST_F(RouterRequestTest, TheMethodIsTheEndpoints) {
    TestEndpoint endpoint;
    for (const auto& [method, text] :
         std::vector<std::pair<RequestMethod, std::string>>{{RequestMethod::GET, "GET"},
                                                            {RequestMethod::POST, "POST"},
                                                            {RequestMethod::PUT, "PUT"},
                                                            {RequestMethod::DELETE, "DELETE"}}) {
        endpoint.method = method;
        EXPECT_EQ(sent(endpoint).method, text);
    }
}

TEST_F(RouterRequestTest, TheBodyIsTheEndpoints) {
    TestEndpoint endpoint;
    endpoint.method = RequestMethod::POST;
    endpoint.body = "{\n  \"a\": 1\n}";

    EXPECT_EQ(sent(endpoint).body, "{\n  \"a\": 1\n}");
}

TEST_F(RouterRequestTest, AnEmptyBodyIsNotSentEvenWithAPost) {
    TestEndpoint endpoint;
    endpoint.method = RequestMethod::POST;

    EXPECT_EQ(sent(endpoint).body, "");
}

TEST_F(RouterRequestTest, EveryHeaderIsSentInItsOrder) {
    const Headers headers{{"B", "2"}, {"A", "1"}, {"B", "3"}};

    EXPECT_EQ(sent(TestEndpoint(), headers).headers, headers);
    EXPECT_THAT(sent(TestEndpoint()).headers, IsEmpty());
}

TEST_F(RouterRequestTest, TheWholeExchangeMayTakeTenSeconds) {
    EXPECT_EQ(sent(TestEndpoint()).timeout, std::chrono::seconds(10));
}

TEST_F(RouterRequestTest, AnAnswerThatDoesNotComeIsANetworkErrorAfterTenSeconds) {
    transport().answer("GET", "/test", Answer::never());
    const Calls<QVStatus, std::optional<json::Dictionary>, std::shared_ptr<QVConfig>> calls;

    api().api->request(TestEndpoint(), {}, calls.record());
    phone->advance(std::chrono::milliseconds(9'999));
    EXPECT_EQ(calls.count(), 0U);
    phone->advance(std::chrono::milliseconds(1));

    ASSERT_EQ(calls.count(), 1U);
    EXPECT_EQ(calls.first<0>(), QVStatus::ERROR_NETWORK);
}

TEST_F(RouterRequestTest, WhyNoAnswerArrivedIsLoggedForDevelopersUnlessTheCallIsSilent) {
    setLogLevel(QVLogLevel::DEBUG);
    TestEndpoint endpoint;
    for (const bool tells : {false, true}) {
        EXPECT_THAT(messages(), IsEmpty());
        transport().answer("GET", "/test", Answer::failure(Transport::connection));
        endpoint.tellsWhyUnanswered = tells;

        api().api->request(endpoint, {}, [](auto&&...) {});
        phone->runUntilIdle();
    }

    ASSERT_EQ(messages().size(), 1U);
    EXPECT_TRUE(messages()[0].starts_with("no answer: "));
}

TEST_F(RouterRequestTest, AHeaderWithALineBreakIsNeverSent) {
    const Calls<QVStatus, std::optional<json::Dictionary>, std::shared_ptr<QVConfig>> calls;
    transport().answerOtherwise(Answer::json("{}"));

    api().api->request(TestEndpoint(), {{"Authorization", "Bearer a\r\nX-Evil: 1"}}, calls.record());
    phone->runUntilIdle();

    ASSERT_EQ(calls.count(), 1U);
    EXPECT_EQ(calls.first<0>(), QVStatus::ERROR_NETWORK);
    EXPECT_THAT(transport().requests(), IsEmpty());
}

} // namespace
} // namespace quorvane
