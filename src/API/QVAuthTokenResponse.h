#pragma once

#include <string>

#include "JSON/CodingKeys.h"

namespace quorvane {

/// What "/token" answers.
class QVAuthTokenResponse {
public:
    std::string accessToken;
    /// Seconds, as a decimal number in a text.
    std::string expiresIn;
    std::string idToken;
    std::string refreshToken;
    std::string sessionState;
    /// For example "Bearer".
    std::string tokenType;

    static constexpr auto codingKeys = json::keys(json::key("access_token", &QVAuthTokenResponse::accessToken),
                                                  json::key("expires_in", &QVAuthTokenResponse::expiresIn),
                                                  json::key("id_token", &QVAuthTokenResponse::idToken),
                                                  json::key("refresh_token", &QVAuthTokenResponse::refreshToken),
                                                  json::key("session_state", &QVAuthTokenResponse::sessionState),
                                                  json::key("token_type", &QVAuthTokenResponse::tokenType));
};

} // namespace quorvane
