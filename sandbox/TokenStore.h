#pragma once

#include <chrono>
#include <cstdint>
#include <functional>
#include <optional>
#include <string>

#include "sandbox/Database.h"

namespace quorvane::sandbox {

/// How long what the identity service hands out stays good. At the very end of its time it is good no longer.
struct Lifetimes {
    std::chrono::seconds code{60};
    std::chrono::seconds accessToken{3600};
    std::chrono::seconds refreshToken{std::chrono::hours(24 * 30)};
    /// How long a refresh token that was used goes on working, for a client that refreshes twice at once.
    std::chrono::seconds refreshGrace{30};
};

/// Who signs in, and with which application.
struct Grant {
    std::string client;
    std::string user;
};

struct TokenPair {
    std::string access;
    std::string refresh;
    Grant grant;
};

/// The codes and tokens that were handed out. Safe from any thread. Each operation that refuses throws a `Refusal`
/// (400 "invalid_grant").
class TokenStore {
public:
    using Now = std::function<std::chrono::system_clock::time_point()>;

    TokenStore(Database& theDatabase, Lifetimes theLifetimes, Now theNow);

    /// A new code for one sign-in, bound to the challenge and the redirect URI.
    std::string issueCode(const Grant& grant, const std::string& redirect, const std::string& challenge);

    /// Tokens for a code. Whoever presents a code uses it up, with success or without.
    TokenPair redeem(const std::string& client, const std::string& code, const std::string& redirect,
                     const std::string& verifier);

    /// New tokens for a refresh token, which then has its grace left to live.
    TokenPair refresh(const std::string& client, const std::string& token);

    /// Whom a valid access token was given to; none for any other.
    [[nodiscard]] std::optional<Grant> grantOf(const std::string& accessToken);
    void expire(const std::string& accessToken);
    void expireAll();

    [[nodiscard]] const Lifetimes& times() const { return lifetimes; }

private:
    [[nodiscard]] std::int64_t now() const;
    TokenPair issuePair(const Grant& grant);
    void forgetExpired();

    Database& database;
    Lifetimes lifetimes;
    Now clock;
};

} // namespace quorvane::sandbox
