#include <gtest/gtest.h>

#include "API/JSONResponseList.h"
#include "API/QVAccessInfo.h"
#include "API/QVAuthResponse.h"
#include "API/QVAuthTokenResponse.h"
#include "JSON/JSON.h"
#include "Models/QVConfig.h"

namespace quorvane {
namespace {

TEST(AuthModels, AnAuthorizeAnswerHasACodeAndAState) {
    const std::string text = R"({"code":"c","state":"s"})";
    const auto model = json::decode<QVAuthResponse>(text);

    EXPECT_EQ(model.code, "c");
    EXPECT_EQ(model.state, "s");
    EXPECT_EQ(json::encode(model), text);
}

TEST(AuthModels, ATokenAnswerHasSixTexts) {
    const std::string text = R"({"access_token":"a","expires_in":"3600","id_token":"i",)"
                             R"("refresh_token":"r","session_state":"s","token_type":"Bearer"})";
    const auto model = json::decode<QVAuthTokenResponse>(text);

    EXPECT_EQ(model.accessToken, "a");
    EXPECT_EQ(model.expiresIn, "3600");
    EXPECT_EQ(model.idToken, "i");
    EXPECT_EQ(model.refreshToken, "r");
    EXPECT_EQ(model.sessionState, "s");
    EXPECT_EQ(model.tokenType, "Bearer");
    EXPECT_EQ(json::encode(model), text);
}

TEST(AuthModels, AnExpiryThatIsANumberIsNoTokenAnswer) {
    EXPECT_THROW((void)json::decode<QVAuthTokenResponse>(R"({"expires_in":3600})"), json::DecodingError);
}

TEST(AuthModels, AccessInformationIsCodedUnderItsFieldNames) {
    const std::string text = R"({"accessToken":"a","refreshToken":"r","expiry":1700000000})";
    const auto model = json::decode<QVAccessInfo>(text);

    EXPECT_EQ(model.accessToken, "a");
    EXPECT_EQ(model.refreshToken, "r");
    EXPECT_EQ(model.expiry, 1700000000);
    EXPECT_EQ(json::encode(model), text);
}

TEST(AuthModels, TheConfigurationHoldsTheVersionOfTheService) {
    EXPECT_EQ(json::decode<QVConfig>(R"({"apiVersion":"2.4","more":[1]})").apiVersion, "2.4");
    EXPECT_EQ(json::decode<QVConfig>("{}").apiVersion, std::nullopt);
    EXPECT_EQ(json::encode(QVConfig{"2.4"}), R"({"apiVersion":"2.4"})");
}

TEST(AuthModels, AnEmptyResponseIsAnyObjectAndNothingElse) {
    EXPECT_NO_THROW((void)json::decode<EmptyResponse>("{}"));
    EXPECT_NO_THROW((void)json::decode<EmptyResponse>(R"({"a":[1,null,{"b":2}]})"));
    EXPECT_THROW((void)json::decode<EmptyResponse>("[]"), json::DecodingError);
    EXPECT_THROW((void)json::decode<EmptyResponse>("1"), json::DecodingError);
}

} // namespace
} // namespace quorvane
