#pragma once

#include <string>

#include "testing/ScriptedTransport.h"

namespace quorvane {

/// What the token endpoint answers.
inline std::string tokenAnswer(const std::string& accessToken = "new-access", const std::string& expiresIn = "3600",
                               const std::string& refreshToken = "new-refresh") {
    return R"({"access_token":")" + accessToken + R"(","expires_in":")" + expiresIn +
           R"(","id_token":"i","refresh_token":")" + refreshToken + R"(","session_state":"s","token_type":"Bearer"})";
}

/// Lets the authorize endpoint hand out a code to whoever asks.
inline void answerAuthorize(quorvane::testing::ScriptedTransport& transport) {
    transport.answer("GET", "/authorize", [](const quorvane::testing::RecordedRequest& request) {
        return quorvane::testing::ScriptedAnswer::json(R"({"code":"the-code","state":")" + request.query.at("state") +
                                                       R"("})");
    });
}

/// Lets the identity service sign in whoever asks.
inline void answerSignIn(quorvane::testing::ScriptedTransport& transport) {
    answerAuthorize(transport);
    transport.answer("POST", "/token", quorvane::testing::ScriptedAnswer::json(tokenAnswer()));
}

} // namespace quorvane
