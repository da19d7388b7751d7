#pragma once

#include <string>

#include "sandbox/Message.h"
#include "sandbox/TokenStore.h"

namespace quorvane::sandbox {

/// Signs users in: GET /authorize and POST /token. Any client and any user are welcome; the form of every parameter
/// and the proof are verified. Safe from any thread.
class IdentityService {
public:
    IdentityService(TokenStore& theTokens, TokenStore::Now theNow);

    /// Answers {"code", "state"}.
    Answer authorize(const Request& request);
    /// Answers the six fields of a token response; "expires_in" is a text of decimal digits.
    Answer token(const Request& request);

private:
    [[nodiscard]] std::string identityToken(const Grant& grant) const;

    TokenStore& tokens;
    TokenStore::Now now;
    /// Signs identity tokens; a new one each time the service starts.
    std::string key;
};

} // namespace quorvane::sandbox
