#pragma once

#include <string>

#include "API/Endpoint.h"
#include "API/QVAuthResponse.h"
#include "API/QVAuthTokenResponse.h"

namespace quorvane {

/// Asks the identity service for a code (GET "/authorize").
struct AuthorizeEndpoint : Endpoint<QVAuthResponse> {
    AuthorizeEndpoint(std::string state, std::string userId, std::string clientId, std::string redirectUri,
                      std::string codeChallenge);
};

/// Asks the identity service for tokens (POST "/token", the fields as the JSON body).
struct SendTokenEndpoint : Endpoint<QVAuthTokenResponse> {
    /// For a code.
    SendTokenEndpoint(std::string code, std::string codeVerifier, std::string clientId, std::string redirectUri);
    /// For a refresh token.
    SendTokenEndpoint(std::string clientId, std::string refreshToken);
};

} // namespace quorvane
