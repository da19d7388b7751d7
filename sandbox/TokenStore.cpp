#include "sandbox/TokenStore.h"

#include <algorithm>
#include <utility>

#include "sandbox/Message.h"
#include "sandbox/Secrets.h"

namespace quorvane::sandbox {
namespace {

std::int64_t milliseconds(std::chrono::system_clock::duration time) {
    return std::chrono::duration_cast<std::chrono::milliseconds>(time).count();
}

[[noreturn]] void refuse(const std::string& description) {
    throw Refusal(400, "invalid_grant", description);
}

} // namespace

TokenStore::TokenStore(Database& theDatabase, Lifetimes theLifetimes, Now theNow)
    : database(theDatabase), lifetimes(theLifetimes), clock(std::move(theNow)) {}

std::int64_t TokenStore::now() const {
    return milliseconds(clock().time_since_epoch());
}

std::string TokenStore::issueCode(const Grant& grant, const std::string& redirect, const std::string& challenge) {
    std::string code = randomToken();
    Transaction transaction(database);
    forgetExpired();
    database.prepare("INSERT INTO codes VALUES (?, ?, ?, ?, ?, ?)")
        .bind(code)
        .bind(grant.client)
        .bind(grant.user)
        .bind(redirect)
        .bind(challenge)
        .bind(now() + milliseconds(lifetimes.code))
        .run();
    transaction.commit();
    return code;
}

TokenPair TokenStore::redeem(const std::string& client, const std::string& code, const std::string& redirect,
                             const std::string& verifier) {
    Transaction transaction(database);
    Statement found =
        database.prepare("DELETE FROM codes WHERE code = ? RETURNING client, user, redirect, challenge, expiry");
    found.bind(code);
    if (!found.step()) {
        refuse("The code is not known or was used already.");
    }
    const Grant grant{found.text(0), found.text(1)};
    const std::string expectedRedirect = found.text(2);
    const std::string challenge = found.text(3);
    const std::int64_t expiry = found.integer(4);
    found.run();

    const char* problem = nullptr;
    if (expiry <= now()) {
        problem = "The code has expired.";
    } else if (grant.client != client) {
        problem = "The code belongs to another client.";
    } else if (expectedRedirect != redirect) {
        problem = "The redirect URI is not the one of the authorize request.";
    } else if (challengeFor(verifier) != challenge) {
        problem = "The code verifier does not match the code challenge.";
    }
    if (problem != nullptr) {
        transaction.commit();
        refuse(problem);
    }
    TokenPair pair = issuePair(grant);
    transaction.commit();
    return pair;
}

TokenPair TokenStore::refresh(const std::string& client, const std::string& token) {
    Transaction transaction(database);
    Statement found = database.prepare("SELECT client, user, expiry FROM refresh_tokens WHERE token = ?");
    found.bind(token);
    if (!found.step()) {
        refuse("The refresh token is not known or was used already.");
    }
    const Grant grant{found.text(0), found.text(1)};
    const std::int64_t expiry = found.integer(2);
    found.run();
    if (expiry <= now()) {
        refuse("The refresh token has expired or was used already.");
    }
    if (grant.client != client) {
        refuse("The refresh token belongs to another client.");
    }
    database.prepare("UPDATE refresh_tokens SET expiry = min(expiry, ?) WHERE token = ?")
        .bind(now() + milliseconds(lifetimes.refreshGrace))
        .bind(token)
        .run();
    TokenPair pair = issuePair(grant);
    transaction.commit();
    return pair;
}

std::optional<Grant> TokenStore::grantOf(const std::string& accessToken) {
    const Transaction transaction(database);
    Statement found = database.prepare("SELECT client, user FROM access_tokens WHERE token = ? AND expiry > ?");
    found.bind(accessToken).bind(now());
    return found.step() ? std::optional(Grant{found.text(0), found.text(1)}) : std::nullopt;
}

void TokenStore::expire(const std::string& accessToken) {
    Transaction transaction(database);
    database.prepare("DELETE FROM access_tokens WHERE token = ?").bind(accessToken).run();
    transaction.commit();
}

void TokenStore::expireAll() {
    Transaction transaction(database);
    database.execute("DELETE FROM access_tokens");
    transaction.commit();
}

TokenPair TokenStore::issuePair(const Grant& grant) {
    forgetExpired();
    TokenPair pair{.access = randomToken(), .refresh = randomToken(), .grant = grant};
    const auto store = [&](std::string_view sql, const std::string& token, std::chrono::seconds lifetime) {
        database.prepare(sql)
            .bind(token)
            .bind(grant.client)
            .bind(grant.user)
            .bind(now() + milliseconds(lifetime))
            .run();
    };
    store("INSERT INTO access_tokens VALUES (?, ?, ?, ?)", pair.access, lifetimes.accessToken);
    store("INSERT INTO refresh_tokens VALUES (?, ?, ?, ?)", pair.refresh, lifetimes.refreshToken);
    return pair;
}

void TokenStore::forgetExpired() {
    for (const char* sql : {"DELETE FROM codes WHERE expiry <= ?", "DELETE FROM access_tokens WHERE expiry <= ?",
                            "DELETE FROM refresh_tokens WHERE expiry <= ?"}) {
        database.prepare(sql).bind(now()).run();
    }
}

} // namespace quorvane::sandbox
