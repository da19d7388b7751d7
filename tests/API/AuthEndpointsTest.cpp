#include <gtest/gtest.h>

#include "API/AuthEndpoints.h"

namespace quorvane {
namespace {

TEST(AuthEndpoints, AuthorizeSendsItsFieldsInTheQuery) {
    const AuthorizeEndpoint endpoint("STATE123", "rider", "access-key", "myApp://callback", "the-challenge");

    EXPECT_EQ(endpoint.method, RequestMethod::GET);
    EXPECT_EQ(endpoint.path, "/authorize");
    EXPECT_EQ(endpoint.format, ResponseFormat::JSON);
    EXPECT_EQ(endpoint.body, "");
    const std::map<std::string, ParameterValue> expected{
        {"client_id", "access-key"},
        {"code_challenge", "the-challenge"},
        {"code_challenge_method", "S256"},
        {"redirect_uri", "myApp://callback"},
        {"response_type", "code"},
        {"scope", "openid"},
        {"state", "STATE123"},
        {"user_id", "rider"},
    };
    EXPECT_EQ(endpoint.parameters, expected);
}

TEST(AuthEndpoints, ACodeIsExchangedWithAPrettyJSONBody) {
    const SendTokenEndpoint endpoint("the-code", "the-verifier", "access-key", "myApp://callback");

    EXPECT_EQ(endpoint.method, RequestMethod::POST);
    EXPECT_EQ(endpoint.path, "/token");
    EXPECT_EQ(endpoint.format, ResponseFormat::JSON);
    EXPECT_TRUE(endpoint.parameters.empty());
    EXPECT_EQ(endpoint.body, R"({
  "client_id": "access-key",
  "code": "the-code",
  "code_verifier": "the-verifier",
  "grant_type": "authorization_code",
  "redirect_uri": "myApp://callback"
})");
}

TEST(AuthEndpoints, TokensAreRefreshedWithAPrettyJSONBody) {
    const SendTokenEndpoint endpoint("access-key", "the \"refresh\" token");

    EXPECT_EQ(endpoint.method, RequestMethod::POST);
    EXPECT_EQ(endpoint.path, "/token");
    EXPECT_TRUE(endpoint.parameters.empty());
    EXPECT_EQ(endpoint.body, R"({
  "client_id": "access-key",
  "grant_type": "refresh_token",
  "refresh_token": "the \"refresh\" token"
})");
}

} // namespace
} // namespace quorvane
