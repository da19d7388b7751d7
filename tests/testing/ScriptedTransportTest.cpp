#include <string>
#include <vector>

#include <gtest/gtest.h>

#include "testing/ScriptedTransport.h"
#include "testing/SimulatedPlatform.h"

namespace quorvane::testing {
namespace {

using namespace std::chrono_literals;
using platform::HTTPRequest;
using platform::HTTPResponse;
using platform::HTTPTransport;
using platform::TransportError;

class ScriptedTransportTest : public ::testing::Test {
protected:
    void send(const std::string& path, const std::string& method = "GET") {
        transport().send(HTTPRequest{.method = method, .url = "http://127.0.0.1" + path, .timeout = 10s},
                         [this](const HTTPTransport::Result& result) { outcomes.push_back(textOf(result)); });
    }

    static std::string textOf(const HTTPTransport::Result& result) {
        if (const auto* response = std::get_if<HTTPResponse>(&result)) {
            return std::to_string(response->status) + ' ' + response->body;
        }
        switch (std::get<TransportError>(result).kind) {
            case TransportError::Kind::invalidRequest:
                return "invalidRequest";
            case TransportError::Kind::connection:
                return "connection: " + std::get<TransportError>(result).message;
            case TransportError::Kind::truncated:
                return "truncated";
            case TransportError::Kind::timedOut:
                return "timedOut";
            case TransportError::Kind::tooLarge:
                break;
        }
        return "tooLarge";
    }

    ScriptedTransport& transport() { return simulated->transport(); }

    std::shared_ptr<SimulatedPlatform> simulated = SimulatedPlatform::make();
    std::vector<std::string> outcomes;
};

TEST_F(ScriptedTransportTest, WithoutAnyRuleTheRequestFailsAndSaysWhich) {
    send("/v2/config?a=1");
    simulated->runUntilIdle();

    EXPECT_EQ(outcomes, std::vector<std::string>{"connection: No answer is scripted for GET /v2/config."});
}

TEST_F(ScriptedTransportTest, ARuleAnswersItsMethodAndTheEndOfThePath) {
    transport().answer("GET", "/config", ScriptedAnswer::json("{}"));
    transport().answerOtherwise(ScriptedAnswer::with(404));

    for (const char* path : {"/config", "/v2/config", "/config/more", "/conf"}) {
        send(path);
    }
    send("/config", "POST");
    simulated->runUntilIdle();

    EXPECT_EQ(outcomes, (std::vector<std::string>{"200 {}", "200 {}", "404 ", "404 ", "404 "}));
}

TEST_F(ScriptedTransportTest, AnyMethodAndAnyPathAreStars) {
    transport().answer("*", "/a", ScriptedAnswer::with(201));
    transport().answer("PUT", "*", ScriptedAnswer::with(202));

    send("/a", "DELETE");
    send("/b", "PUT");
    simulated->runUntilIdle();

    EXPECT_EQ(outcomes, (std::vector<std::string>{"201 ", "202 "}));
}

TEST_F(ScriptedTransportTest, AnswersForOneRequestMakeASequenceBeforeTheOneThatStays) {
    transport().answer("GET", "/a", ScriptedAnswer::with(200));
    transport().answerOnce("GET", "/a", ScriptedAnswer::with(500));
    transport().answerOnce("GET", "/a", ScriptedAnswer::with(429));

    for (int i = 0; i < 4; ++i) {
        send("/a");
    }
    simulated->runUntilIdle();

    EXPECT_EQ(outcomes, (std::vector<std::string>{"500 ", "429 ", "200 ", "200 "}));
}

TEST_F(ScriptedTransportTest, OfRulesThatStayTheFirstThatFitsAnswersAndTheSameOneIsReplaced) {
    transport().answer("GET", "/find", ScriptedAnswer::with(201));
    transport().answer("GET", "*", ScriptedAnswer::with(202));
    transport().answer("GET", "/find", ScriptedAnswer::with(203));

    send("/find");
    send("/other");
    simulated->runUntilIdle();

    EXPECT_EQ(outcomes, (std::vector<std::string>{"203 ", "202 "}));
}

TEST_F(ScriptedTransportTest, AHandlerSeesTheRequestAndMayChangeTheRules) {
    transport().answer("POST", "/token", [this](const RecordedRequest& request) {
        transport().forgetRules();
        transport().answerOtherwise(ScriptedAnswer::with(418));
        return ScriptedAnswer::json(request.path + " near " + request.query.at("near"));
    });

    send("/token?near=46.05%2C14.5", "POST");
    send("/token", "POST");
    simulated->runUntilIdle();

    EXPECT_EQ(outcomes, (std::vector<std::string>{"200 /token near 46.05,14.5", "418 "}));
}

TEST_F(ScriptedTransportTest, AHandlerKeepsItsStateFromCallToCall) {
    transport().answer("GET", "*",
                       [count = 200](const RecordedRequest&) mutable { return ScriptedAnswer::with(count++); });

    send("/a");
    send("/a");
    simulated->runUntilIdle();

    EXPECT_EQ(outcomes, (std::vector<std::string>{"200 ", "201 "}));
}

TEST_F(ScriptedTransportTest, AnAnswerArrivesAfterItsDelayInVirtualTime) {
    transport().answer("GET", "/slow", ScriptedAnswer::with(200).after(3s));
    send("/slow");

    simulated->advance(2999ms);
    EXPECT_TRUE(outcomes.empty());
    simulated->advance(1ms);

    EXPECT_EQ(outcomes, std::vector<std::string>{"200 "});
}

TEST_F(ScriptedTransportTest, AnAnswerThatComesAfterTheTimeoutIsATimeout) {
    transport().answer("GET", "/slow", ScriptedAnswer::with(200).after(10s + 1ms));
    transport().answer("GET", "/never", ScriptedAnswer::never());
    send("/slow");
    send("/never");

    simulated->advance(9999ms);
    EXPECT_TRUE(outcomes.empty());
    simulated->advance(1h);

    EXPECT_EQ(outcomes, (std::vector<std::string>{"timedOut", "timedOut"}));
    EXPECT_EQ(transport().openCount(), 0U);
}

TEST_F(ScriptedTransportTest, AnAnswerAtTheVeryTimeoutStillCounts) {
    transport().answer("GET", "/slow", ScriptedAnswer::with(200).after(10s));
    send("/slow");

    simulated->advance(10s);

    EXPECT_EQ(outcomes, std::vector<std::string>{"200 "});
}

TEST_F(ScriptedTransportTest, HeldAnswersArriveInOrderWhenDelivered) {
    transport().answer("GET", "*", [](const RecordedRequest& request) { return ScriptedAnswer::json(request.path); });
    transport().holdAnswers(true);
    for (const char* path : {"/1", "/2", "/3"}) {
        send(path);
    }
    simulated->advance(1s);
    EXPECT_TRUE(outcomes.empty());
    EXPECT_EQ(transport().heldCount(), 3U);

    EXPECT_TRUE(transport().deliverNext());
    simulated->runUntilIdle();
    EXPECT_EQ(outcomes, std::vector<std::string>{"200 /1"});

    EXPECT_EQ(transport().deliver(), 2U);
    EXPECT_FALSE(transport().deliverNext());
    simulated->runUntilIdle();
    EXPECT_EQ(outcomes, (std::vector<std::string>{"200 /1", "200 /2", "200 /3"}));
}

TEST_F(ScriptedTransportTest, AHeldAnswerTimesOut) {
    transport().answer("GET", "*", ScriptedAnswer::with(200));
    transport().holdAnswers(true);
    send("/a");

    simulated->advance(10s);

    EXPECT_EQ(outcomes, std::vector<std::string>{"timedOut"});
    EXPECT_EQ(transport().deliver(), 0U);
}

TEST_F(ScriptedTransportTest, EveryKindOfErrorCanBeScripted) {
    using Kind = TransportError::Kind;
    for (const Kind kind : {Kind::invalidRequest, Kind::connection, Kind::truncated, Kind::timedOut, Kind::tooLarge}) {
        transport().answerOnce("GET", "/a", ScriptedAnswer::failure(kind, "as told"));
        send("/a");
    }
    simulated->runUntilIdle();

    EXPECT_EQ(outcomes,
              (std::vector<std::string>{"invalidRequest", "connection: as told", "truncated", "timedOut", "tooLarge"}));
}

TEST_F(ScriptedTransportTest, RequestsAreRecordedInOrderAndCanBeAskedForByPath) {
    transport().answerOtherwise(ScriptedAnswer::with(200));
    send("/v2/config");
    send("/v2/locations/find", "POST");
    send("/v2/config");

    EXPECT_EQ(transport().requests().size(), 3U);
    EXPECT_EQ(transport().requests("GET", "/config").size(), 2U);
    EXPECT_EQ(transport().requests("*", "/find").at(0).line(), "POST /v2/locations/find");
    transport().forgetRequests();
    EXPECT_TRUE(transport().requests().empty());
}

} // namespace
} // namespace quorvane::testing
