#include "API/AuthEndpoints.h"

#include "JSON/JSON.h"

namespace quorvane {
namespace {

std::string bodyOf(const AnyCodable::Dictionary& fields) {
    // Only texts stand in it: encoding cannot fail.
    return json::encode(fields, json::Style::pretty);
}

} // namespace

AuthorizeEndpoint::AuthorizeEndpoint(std::string state, std::string userId, std::string clientId,
                                     std::string redirectUri, std::string codeChallenge) {
    path = "/authorize";
    parameters = {
        {"client_id", std::move(clientId)}, {"code_challenge", std::move(codeChallenge)},
        {"code_challenge_method", "S256"},  {"redirect_uri", std::move(redirectUri)},
        {"response_type", "code"},          {"scope", "openid"},
        {"state", std::move(state)},        {"user_id", std::move(userId)},
    };
}

SendTokenEndpoint::SendTokenEndpoint(std::string code, std::string codeVerifier, std::string clientId,
                                     std::string redirectUri) {
    method = RequestMethod::POST;
    path = "/token";
    body = bodyOf({{"client_id", std::move(clientId)},
                   {"code", std::move(code)},
                   {"code_verifier", std::move(codeVerifier)},
                   {"grant_type", "authorization_code"},
                   {"redirect_uri", std::move(redirectUri)}});
}

SendTokenEndpoint::SendTokenEndpoint(std::string clientId, std::string refreshToken) {
    method = RequestMethod::POST;
    path = "/token";
    body = bodyOf({{"client_id", std::move(clientId)},
                   {"grant_type", "refresh_token"},
                   {"refresh_token", std::move(refreshToken)}});
}

} // namespace quorvane
