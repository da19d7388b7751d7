#include "sandbox/Access.h"

#include <string>
#include <string_view>

namespace quorvane::sandbox {

Grant authorize(const Request& request, TokenStore& tokens) {
    constexpr std::string_view scheme = "Bearer ";
    if (request.authorization.empty()) {
        throw Refusal(401, "missing_token", "The header \"Authorization\" is missing.");
    }
    if (!request.authorization.starts_with(scheme)) {
        throw Refusal(401, "invalid_token", "The header \"Authorization\" must be \"Bearer\", a blank and a token.");
    }
    const std::string token = request.authorization.substr(scheme.size());
    if (request.expireCredential) {
        tokens.expire(token);
    }
    auto grant = tokens.grantOf(token);
    if (!grant) {
        throw Refusal(401, "invalid_token", "The access token is not known or has expired.");
    }
    return std::move(*grant);
}

} // namespace quorvane::sandbox
