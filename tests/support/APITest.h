#pragma once

#include <string>

#include "API/QVAuthService.h"
#include "API/QVEndpoints.h"
#include "API/QuorvaneAPI.h"
#include "support/Calls.h"
#include "support/IdentityAnswers.h"
#include "support/SimulatedTest.h"

namespace quorvane {

/// A test with a configured key and the endpoints of the local services; nobody is signed in.
class APITest : public SimulatedTest {
protected:
    APITest() {
        store("quorvane_access_key", "access-key");
        store("quorvane_user_id", "rider");
        api().setEndpoints(QVEndpoints(Environment::LOCAL));
    }

    [[nodiscard]] static QuorvaneAPI& api() { return QuorvaneAPI::shared(); }
    [[nodiscard]] static QVAuthService& auth() { return QVAuthService::shared(); }

    /// Stores tokens that expire @p seconds from now; negative: that have expired.
    void storeTokens(std::int64_t seconds) {
        store("quorvane_access_token", "Bearer old-access");
        store("quorvane_refresh_token", "old-refresh");
        store("qourvane_access_token_expiry", now() + seconds);
    }

    void answerSignIn() { quorvane::answerSignIn(transport()); }
    void answerAuthorize() { quorvane::answerAuthorize(transport()); }

    /// The signed-in flag as it is stored.
    [[nodiscard]] std::optional<bool> flag() { return preferences().boolean("quorvane_background_tracking"); }

    [[nodiscard]] std::optional<std::string> stored(std::string_view key) { return preferences().string(key); }
};

} // namespace quorvane
