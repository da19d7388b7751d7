#pragma once

#include <functional>
#include <memory>
#include <string>
#include <vector>

#include "API/AuthState.h"
#include "API/QVAccessInfo.h"
#include "API/Router.h"
#include "Core/QVStatus.h"
#include "Core/SharedService.h"
#include "Platform/Platform.h"

namespace quorvane {

class QVAuthTokenResponse;

/// Signs the user in to the identity service, without a user interface: an authorization code with a PKCE proof, and a
/// refresh of the tokens when they have expired. Nothing is cached: the state is read from the preferences each time.
/// Main thread only.
class QVAuthService : public SharedService<QVAuthService> {
public:
    using AuthState = quorvane::AuthState;
    /// A status and whether the user is signed in now.
    using Completion = std::function<void(QVStatus, bool)>;

    static constexpr const char* redirectUri = "myApp://callback";

    explicit QVAuthService(platform::Platform& platform);

    /// Makes sure that the user is signed in. Valid tokens: (`SUCCESS`, true) at once, without a request. A refresh
    /// token and a refresh due: a refresh. Otherwise a sign-in. @p router is the identity service's; without one a
    /// refresh or a sign-in answers (`ERROR_SERVER`, false) at once.
    void authenticate(const std::shared_ptr<Router>& router, Completion completion);

    /// Signs in and stores the tokens. (`SUCCESS`, true), or the reason why not and false: `ERROR_SERVER` when the
    /// authorize call gave no answer that could be decoded, whatever its status; `SUCCESS` when the answer's state is
    /// not the one that was sent, in which case no token is asked for; `ERROR_SERIALIZATION` when no header could carry
    /// the token that came; the token call's status otherwise.
    void handleAuthenticateFlow(const std::string& userId, const std::string& clientId, const std::string& redirect,
                                const std::shared_ptr<Router>& router, Completion completion);

    /// Asks for new tokens and stores them. When that fails: the call's status and false; the old tokens stay.
    void handleRefreshFlow(const std::string& clientId, const std::string& refreshToken,
                           const std::shared_ptr<Router>& router, Completion completion);

    /// Whether the stored expiry (0 when there is none) is this second or before.
    [[nodiscard]] bool needsRefresh() const;

    /// The stored tokens.
    [[nodiscard]] QVAccessInfo accessInfo() const;

    /// Forgets the tokens.
    void logout();

    /// Calls @p observer after each sign-in and refresh and each check of `authenticate`, with its outcome, for the
    /// life of the service.
    void observeOutcomes(Completion observer);

private:
    [[nodiscard]] Completion reporting(Completion completion);
    /// False, and nothing is stored, for none and for tokens that no request could carry.
    bool setTokenResponse(const QVAuthTokenResponse* answer);

    platform::Platform& platform;
    std::vector<Completion> observers;
};

} // namespace quorvane
