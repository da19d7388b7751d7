#include "API/QuorvaneAPI.h"

#include "API/QVAuthService.h"
#include "API/QVEndpoints.h"
#include "API/StandardHeaders.h"
#include "Core/Configured.h"
#include "Core/PreferenceKeys.h"
#include "Core/SignedInFlag.h"
#include "Platform/Precondition.h"
#include "Platform/PreferencesStore.h"

namespace quorvane {
namespace {

std::shared_ptr<Router> routerFor(const std::string& endpoint) {
    std::optional<URL> url = URL::parse(endpoint);
    QV_PRECONDITION(url.has_value(), "the endpoint of a service must be a URL");
    return std::make_shared<Router>(std::move(*url));
}

} // namespace

QuorvaneAPI::QuorvaneAPI(platform::Platform& thePlatform) : platform(thePlatform) {}

void QuorvaneAPI::setEndpoints(const QVEndpoints& endpoints) {
    api = routerFor(endpoints.apiEndpoint());
    auth = routerFor(endpoints.authEndpoint());
}

Headers QuorvaneAPI::getHeaders() const {
    return standardHeaders();
}

QVAccessInfo QuorvaneAPI::getAccessInfo() const {
    return QVAuthService::shared().accessInfo();
}

bool QuorvaneAPI::isSignedIn() const {
    return isConfigured() && api && getAccessInfo().state() == AuthState::AUTHENTICATED;
}

void QuorvaneAPI::signIn(const std::function<void()>& send, std::function<void(QVStatus)> fail) {
    if (!isConfigured() || !api) {
        fail(QVStatus::ERROR_PUBLISHABLE_KEY);
        return;
    }
    const QVAccessInfo info = getAccessInfo();
    const platform::PreferencesStore& preferences = platform.preferences();
    const std::string userId = preferences.string(preference::userId).value_or("");
    const std::string clientId = preferences.string(preference::accessKey).value_or("");
    QVAuthService& service = QVAuthService::shared();
    auto proceed = [send, fail = std::move(fail)](QVStatus status, bool authenticated) {
        if (authenticated) {
            send();
        } else {
            fail(status == QVStatus::SUCCESS ? QVStatus::ERROR_UNAUTHORIZED : status);
        }
    };
    if (!info.refreshToken) {
        service.handleAuthenticateFlow(userId, clientId, QVAuthService::redirectUri, auth, std::move(proceed));
    } else if (service.needsRefresh()) {
        service.handleRefreshFlow(clientId, *info.refreshToken, auth, std::move(proceed));
    } else {
        SignedInFlag::shared().set(true);
        send();
    }
}

} // namespace quorvane
