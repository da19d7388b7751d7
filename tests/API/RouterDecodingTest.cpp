#include <gmock/gmock.h>

#include "API/JSONResponseList.h"
#include "API/Router.h"
#include "Search/SearchEndpoints.h"
#include "support/APITest.h"
#include "support/TestEndpoint.h"

namespace quorvane {
namespace {

using ::testing::ElementsAre;
using ::testing::IsEmpty;
using ::testing::StartsWith;

struct EmptyEndpoint : Endpoint<EmptyResponse> {
    EmptyEndpoint() { path = "/test"; }
};

class RouterDecodingTest : public APITest {
protected:
    RouterDecodingTest() { setLogLevel(QVLogLevel::ERROR); }

    template <class Call>
    [[nodiscard]] auto answered(const Call& endpoint, const std::string& body) {
        transport().answerOtherwise(Answer::json(body));
        Calls<QVStatus, std::optional<json::Dictionary>, std::shared_ptr<typename Call::ModelClass>> calls;
        api().api->request(endpoint, {}, calls.record());
        phone->runUntilIdle();
        EXPECT_EQ(calls.count(), 1U);
        return calls;
    }

    [[nodiscard]] auto answered(const std::string& body) { return answered(TestEndpoint(), body); }
};

TEST_F(RouterDecodingTest, ABodyIsHandedOverAsDictionaryAndModel) {
    const auto calls = answered(R"({"apiVersion":"2.4","more":3})");

    EXPECT_EQ(calls.first<0>(), QVStatus::SUCCESS);
    ASSERT_TRUE(calls.first<1>());
    EXPECT_EQ(calls.first<1>()->size(), 2U);
    EXPECT_EQ(calls.first<1>()->value("more"), AnyCodable(3));
    ASSERT_NE(calls.first<2>(), nullptr);
    EXPECT_EQ(calls.first<2>()->apiVersion, "2.4");
    EXPECT_THAT(messages(), IsEmpty());
}

TEST_F(RouterDecodingTest, AnAnswerWithoutABodyIsASuccessWithoutResults) {
    const auto calls = answered("");

    EXPECT_EQ(calls.first<0>(), QVStatus::SUCCESS);
    EXPECT_FALSE(calls.first<1>());
    EXPECT_EQ(calls.first<2>(), nullptr);
    EXPECT_THAT(messages(), IsEmpty());
}

TEST_F(RouterDecodingTest, AMismatchIsLoggedWithExactBlanksAndBreaksAndKeepsTheDictionary) {
    const auto calls = answered(R"({"apiVersion":2})");

    EXPECT_EQ(calls.first<0>(), QVStatus::ERROR_SERIALIZATION);
    ASSERT_TRUE(calls.first<1>());
    EXPECT_EQ(calls.first<1>()->value("apiVersion"), AnyCodable(2));
    EXPECT_EQ(calls.first<2>(), nullptr);
    EXPECT_THAT(messages(), ElementsAre("    an error occurred decoding response:\n"
                                        "        type 'text' mismatch: expected a text, found 2\n"
                                        "        codingPath: apiVersion"));
}

TEST_F(RouterDecodingTest, AMismatchDeepInAListNamesItsPath) {
    const SearchTasksEndpoint tasks(std::nullopt, std::nullopt, std::nullopt, "c", std::nullopt);
    const auto calls = answered(tasks, R"({"count":2,"data":[{"questions":[]},{"questions":[{},{"order":"x"}]}]})");

    EXPECT_EQ(calls.first<0>(), QVStatus::ERROR_SERIALIZATION);
    EXPECT_TRUE(calls.first<1>());
    ASSERT_EQ(messages().size(), 1U);
    EXPECT_TRUE(messages()[0].ends_with("\n        codingPath: data[1].questions[1].order")) << messages()[0];
}

TEST_F(RouterDecodingTest, ATextOutsideAnEnumerationIsLoggedAsAnotherError) {
    const SearchTasksEndpoint tasks(std::nullopt, std::nullopt, std::nullopt, "c", std::nullopt);
    const auto calls = answered(tasks, R"({"count":1,"data":[{"questions":[{"type":"slider"}]}]})");

    EXPECT_EQ(calls.first<0>(), QVStatus::ERROR_SERIALIZATION);
    EXPECT_TRUE(calls.first<1>());
    EXPECT_EQ(calls.first<2>(), nullptr);
    EXPECT_THAT(
        messages(),
        ElementsAre(R"(Error in response: data[0].questions[0].type: expected a question type, found "slider")"));
}

TEST_F(RouterDecodingTest, AMalformedBodyIsASerializationErrorWithoutADictionary) {
    for (const std::string body : {"{", "not json", "{\"apiVersion\":\"1\"} trailing", "\xFF", " ", "<html></html>"}) {
        phone->application().clearOutput();
        const auto calls = answered(body);

        EXPECT_EQ(calls.first<0>(), QVStatus::ERROR_SERIALIZATION) << body;
        EXPECT_FALSE(calls.first<1>()) << body;
        EXPECT_EQ(calls.first<2>(), nullptr) << body;
        EXPECT_THAT(messages(), ElementsAre(StartsWith("Error in"))) << body;
    }
}

TEST_F(RouterDecodingTest, AJSONBodyThatIsNoObjectIsASerializationErrorWithoutADictionary) {
    for (const std::string body : {"[]", "[{\"apiVersion\":\"1\"}]", "1", "\"text\"", "null", "true"}) {
        const auto calls = answered(body);
        EXPECT_EQ(calls.first<0>(), QVStatus::ERROR_SERIALIZATION) << body;
        EXPECT_FALSE(calls.first<1>()) << body;
        EXPECT_EQ(calls.first<2>(), nullptr) << body;

        EXPECT_EQ(answered(EmptyEndpoint(), body).first<0>(), QVStatus::ERROR_SERIALIZATION) << body;
    }
}

TEST_F(RouterDecodingTest, TextAndNoneDecodeNothing) {
    for (const ResponseFormat format : {ResponseFormat::TEXT, ResponseFormat::NONE}) {
        TestEndpoint endpoint;
        endpoint.format = format;
        for (const std::string body : {R"({"apiVersion":"1"})", "no json at all"}) {
            const auto calls = answered(endpoint, body);
            EXPECT_EQ(calls.first<0>(), QVStatus::SUCCESS);
            EXPECT_FALSE(calls.first<1>());
            EXPECT_EQ(calls.first<2>(), nullptr);
        }
    }
    EXPECT_THAT(messages(), IsEmpty());
}

TEST_F(RouterDecodingTest, AnyObjectIsAnEmptyResponse) {
    const auto calls = answered(EmptyEndpoint(), R"({"a":[null]})");

    EXPECT_EQ(calls.first<0>(), QVStatus::SUCCESS);
    EXPECT_TRUE(calls.first<1>());
    EXPECT_NE(calls.first<2>(), nullptr);
}

TEST_F(RouterDecodingTest, TheDictionaryOutlivesTheAnswer) {
    const std::optional<json::Dictionary> kept = answered(R"({"apiVersion":"2.4"})").first<1>();
    (void)answered(R"({"apiVersion":"another"})");

    ASSERT_TRUE(kept);
    EXPECT_EQ(kept->value("apiVersion"), AnyCodable("2.4"));
}

TEST_F(RouterDecodingTest, TheListEnvelopeStatesItsOwnCount) {
    const SearchPlacesEndpoint places(std::nullopt, std::nullopt, std::nullopt, std::nullopt, std::nullopt,
                                      std::nullopt, 0);
    const auto calls = answered(places, R"({"count":7,"data":[{"id":"p1"},{"id":"p2"}]})");

    ASSERT_NE(calls.first<2>(), nullptr);
    EXPECT_EQ(calls.first<2>()->count, 7);
    EXPECT_EQ(calls.first<2>()->data.size(), 2U);
}

} // namespace
} // namespace quorvane
