#include <set>

#include <gmock/gmock.h>

#include "API/PKCE.h"
#include "JSON/JSON.h"
#include "support/APITest.h"

namespace quorvane {
namespace {

using ::testing::ElementsAre;
using ::testing::MatchesRegex;

class SignInTest : public APITest {
protected:
    using Outcome = Calls<QVStatus, bool>;

    void signIn(const Outcome& outcome) {
        auth().handleAuthenticateFlow("rider", "access-key", "myApp://callback", api().auth, outcome.record());
    }

    /// The status and the flag of a sign-in that has come to its end.
    [[nodiscard]] std::pair<QVStatus, bool> signedIn() {
        const Outcome outcome;
        signIn(outcome);
        phone->runUntilIdle();
        EXPECT_EQ(outcome.count(), 1U);
        return {outcome.first<0>(), outcome.first<1>()};
    }

    [[nodiscard]] quorvane::testing::RecordedRequest onlyRequest(const std::string& method, const std::string& path) {
        const auto requests = transport().requests(method, path);
        EXPECT_EQ(requests.size(), 1U);
        return requests.at(0);
    }

    static constexpr std::pair<QVStatus, bool> success{QVStatus::SUCCESS, true};
};

std::pair<QVStatus, bool> failed(QVStatus status) {
    return {status, false};
}

TEST_F(SignInTest, AsksForACodeAndThenForTokens) {
    answerSignIn();

    EXPECT_EQ(signedIn(), success);

    EXPECT_THAT(requestLines(), ElementsAre("GET /authorize", "POST /token"));
    EXPECT_EQ(stored("quorvane_access_token"), "Bearer new-access");
}

TEST_F(SignInTest, TheAuthorizeRequestCarriesTheFieldsInItsQuery) {
    answerSignIn();
    (void)signedIn();

    auto query = onlyRequest("GET", "/authorize").query;
    EXPECT_THAT(query["state"], MatchesRegex("[0-9A-F]{8}"));
    EXPECT_EQ(query["code_challenge"].size(), 43U);
    query.erase("state");
    query.erase("code_challenge");
    const std::map<std::string, std::string> expected{
        {"client_id", "access-key"},
        {"code_challenge_method", "S256"},
        {"redirect_uri", "myApp://callback"},
        {"response_type", "code"},
        {"scope", "openid"},
        {"user_id", "rider"},
    };
    EXPECT_EQ(query, expected);
}

TEST_F(SignInTest, TheTokenRequestCarriesTheCodeAndTheVerifierOfTheChallenge) {
    answerSignIn();
    (void)signedIn();

    const auto request = onlyRequest("POST", "/token");
    EXPECT_TRUE(request.query.empty());
    auto fields = json::decode<AnyCodable::Dictionary>(request.request.body);
    const std::string verifier = std::get<std::string>(fields.at("code_verifier").value);
    EXPECT_EQ(pkce::generateChallenge(verifier), onlyRequest("GET", "/authorize").query.at("code_challenge"));
    fields.erase("code_verifier");
    const AnyCodable::Dictionary expected{
        {"client_id", "access-key"},
        {"code", "the-code"},
        {"grant_type", "authorization_code"},
        {"redirect_uri", "myApp://callback"},
    };
    EXPECT_EQ(fields, expected);
}

TEST_F(SignInTest, BothRequestsGoToTheIdentityServiceWithTheStandardHeaders) {
    answerSignIn();
    (void)signedIn();

    for (const auto& request : transport().requests()) {
        EXPECT_EQ(request.authority, "localhost:4001");
        EXPECT_EQ(request.header("Accept"), "application/json");
        EXPECT_EQ(request.header("Content-Type"), "application/json");
        EXPECT_EQ(request.header("X-Quorvane-SDK-Version"), "0.0.2");
        EXPECT_EQ(request.header("Authorization"), std::nullopt);
    }
}

TEST_F(SignInTest, EachSignInHasItsOwnStateAndChallenge) {
    answerSignIn();
    std::set<std::string> states;
    std::set<std::string> challenges;
    for (int i = 0; i < 20; ++i) {
        (void)signedIn();
        states.insert(transport().requests("GET", "/authorize").back().query.at("state"));
        challenges.insert(transport().requests("GET", "/authorize").back().query.at("code_challenge"));
    }

    EXPECT_EQ(states.size(), 20U);
    EXPECT_EQ(challenges.size(), 20U);
}

TEST_F(SignInTest, AnotherStateInTheAnswerEndsItWithoutATokenRequest) {
    transport().answer("GET", "/authorize", Answer::json(R"({"code":"the-code","state":"12345678"})"));

    EXPECT_EQ(signedIn(), failed(QVStatus::SUCCESS));

    EXPECT_THAT(requestLines(), ElementsAre("GET /authorize"));
    EXPECT_EQ(stored("quorvane_access_token"), std::nullopt);
}

TEST_F(SignInTest, AStateThatOnlyBeginsLikeTheOneSentIsAnotherState) {
    transport().answer("GET", "/authorize", [](const quorvane::testing::RecordedRequest& request) {
        return Answer::json(R"({"code":"the-code","state":")" + request.query.at("state") + R"(0"})");
    });

    EXPECT_EQ(signedIn(), failed(QVStatus::SUCCESS));
    EXPECT_THAT(requestLines(), ElementsAre("GET /authorize"));
}

TEST_F(SignInTest, AnAuthorizeAnswerThatCannotBeDecodedIsAServerErrorWhateverItsStatus) {
    for (const Answer& answer : {Answer::with(400, R"({"code":"c","state":"s"})"), Answer::with(401), Answer::with(403),
                                 Answer::with(404), Answer::with(429), Answer::with(500), Answer::with(200),
                                 Answer::json("{"), Answer::json("[]"), Answer::json(R"({"code":1})"),
                                 Answer::failure(Transport::connection), Answer::failure(Transport::timedOut)}) {
        transport().answer("GET", "/authorize", answer);
        transport().forgetRequests();

        EXPECT_EQ(signedIn(), failed(QVStatus::ERROR_SERVER));
        EXPECT_THAT(requestLines(), ElementsAre("GET /authorize"));
    }
}

TEST_F(SignInTest, TheStatusOfAFailedTokenRequestIsTheStatusOfTheSignIn) {
    const std::vector<std::pair<Answer, QVStatus>> cases{
        {Answer::with(400), QVStatus::ERROR_BAD_REQUEST},
        {Answer::with(401), QVStatus::ERROR_UNAUTHORIZED},
        {Answer::with(429), QVStatus::ERROR_RATE_LIMIT},
        {Answer::with(503), QVStatus::ERROR_SERVER},
        {Answer::json("{"), QVStatus::ERROR_SERIALIZATION},
        {Answer::json(R"({"expires_in":3600})"), QVStatus::ERROR_SERIALIZATION},
        {Answer::failure(Transport::truncated), QVStatus::ERROR_NETWORK},
        {Answer::with(200), QVStatus::SUCCESS},
    };
    answerAuthorize();
    for (const auto& [answer, status] : cases) {
        transport().answer("POST", "/token", answer);

        EXPECT_EQ(signedIn(), failed(status));
        EXPECT_EQ(stored("quorvane_access_token"), std::nullopt);
        EXPECT_EQ(stored("quorvane_refresh_token"), std::nullopt);
    }
}

TEST_F(SignInTest, WithoutAnIdentityRouterItIsAServerErrorAtOnce) {
    api().auth = nullptr;
    const Outcome outcome;

    signIn(outcome);

    ASSERT_EQ(outcome.count(), 1U);
    EXPECT_EQ(outcome.first<0>(), QVStatus::ERROR_SERVER);
    EXPECT_FALSE(outcome.first<1>());
    EXPECT_TRUE(requestLines().empty());
}

TEST_F(SignInTest, ItGoesOnWithTheIdentityServiceThatItBeganWith) {
    answerSignIn();
    const Outcome outcome;
    signIn(outcome);

    api().setEndpoints(QVEndpoints(Environment::PRODUCTION));
    phone->runUntilIdle();

    EXPECT_EQ(transport().requests("POST", "/token").at(0).authority, "localhost:4001");
}

TEST_F(SignInTest, ACompletionOfAnOldWorldIsNeverCalled) {
    answerSignIn();
    const Outcome outcome;
    signIn(outcome);

    phone.relaunch();
    phone->runUntilIdle();

    EXPECT_EQ(outcome.count(), 0U);
}

} // namespace
} // namespace quorvane
