#include "API/QVAuthService.h"

#include <charconv>
#include <cstdint>
#include <limits>
#include <string_view>

#include "API/AuthEndpoints.h"
#include "API/PKCE.h"
#include "API/StandardHeaders.h"
#include "Core/PreferenceKeys.h"
#include "Core/SignedInFlag.h"
#include "Platform/Clock.h"
#include "Platform/PreferencesStore.h"
#include "Platform/SecureRandom.h"

namespace quorvane {
namespace {

constexpr std::size_t stateLength = 8;

/// A decimal number of seconds; 0 for any other text.
std::int64_t secondsIn(const std::string& text) {
    std::string_view digits = text;
    if (digits.starts_with('+') && !digits.starts_with("+-")) {
        digits.remove_prefix(1);
    }
    const char* const end = digits.data() + digits.size();
    std::int64_t seconds = 0;
    const auto [last, error] = std::from_chars(digits.data(), end, seconds);
    return error == std::errc() && last == end ? seconds : 0;
}

std::int64_t addSaturated(std::int64_t now, std::int64_t seconds) {
    using Limits = std::numeric_limits<std::int64_t>;
    if (seconds > 0 && now > Limits::max() - seconds) {
        return Limits::max();
    }
    return seconds < 0 && now < Limits::min() - seconds ? Limits::min() : now + seconds;
}

/// Whether a request can carry them: a header has no line break and no zero byte.
bool canBeSent(const QVAuthTokenResponse& tokens) {
    constexpr std::string_view breaks("\r\n\0", 3);
    return tokens.tokenType.find_first_of(breaks) == std::string::npos &&
           tokens.accessToken.find_first_of(breaks) == std::string::npos;
}

} // namespace

QVAuthService::QVAuthService(platform::Platform& thePlatform) : platform(thePlatform) {}

void QVAuthService::authenticate(const std::shared_ptr<Router>& router, Completion completion) {
    const QVAccessInfo info = accessInfo();
    if (info.state() == AuthState::AUTHENTICATED) {
        reporting(std::move(completion))(QVStatus::SUCCESS, true);
        return;
    }
    const platform::PreferencesStore& preferences = platform.preferences();
    const std::string clientId = preferences.string(preference::accessKey).value_or("");
    if (info.refreshToken && needsRefresh()) {
        handleRefreshFlow(clientId, *info.refreshToken, router, std::move(completion));
    } else {
        handleAuthenticateFlow(preferences.string(preference::userId).value_or(""), clientId, redirectUri, router,
                               std::move(completion));
    }
}

void QVAuthService::handleAuthenticateFlow(const std::string& userId, const std::string& clientId,
                                           const std::string& redirect, const std::shared_ptr<Router>& router,
                                           Completion completion) {
    SignedInFlag::shared().set(false);
    const std::string verifier = pkce::generateVerifier();
    const std::string state = platform.random().uuid().substr(0, stateLength);
    Completion done = reporting(std::move(completion));
    if (!router) {
        done(QVStatus::ERROR_SERVER, false);
        return;
    }
    router->request(
        AuthorizeEndpoint(state, userId, clientId, redirect, pkce::generateChallenge(verifier)), standardHeaders(),
        [this, router, state, verifier, clientId, redirect, done = std::move(done)](
            QVStatus, const auto&, const std::shared_ptr<QVAuthResponse>& answer) {
            // Only a success carries a model, so that an error status of this call reads as the service's failure.
            if (!answer) {
                done(QVStatus::ERROR_SERVER, false);
                return;
            }
            if (answer->state != state) {
                done(QVStatus::SUCCESS, false);
                return;
            }
            router->request(
                SendTokenEndpoint(answer->code, verifier, clientId, redirect), standardHeaders(),
                [this, done](QVStatus status, const auto&, const std::shared_ptr<QVAuthTokenResponse>& tokens) {
                    const bool isStored = setTokenResponse(tokens.get());
                    if (isStored) {
                        SignedInFlag::shared().set(true);
                    }
                    done(tokens && !isStored ? QVStatus::ERROR_SERIALIZATION : status, isStored);
                });
        });
}

void QVAuthService::handleRefreshFlow(const std::string& clientId, const std::string& refreshToken,
                                      const std::shared_ptr<Router>& router, Completion completion) {
    Completion done = reporting(std::move(completion));
    SignedInFlag::shared().beginRefresh();
    if (!router) {
        SignedInFlag::shared().endRefresh();
        done(QVStatus::ERROR_SERVER, false);
        return;
    }
    router->request(SendTokenEndpoint(clientId, refreshToken), standardHeaders(),
                    [this, done = std::move(done)](QVStatus status, const auto&,
                                                   const std::shared_ptr<QVAuthTokenResponse>& tokens) {
                        const bool isStored = setTokenResponse(tokens.get());
                        SignedInFlag::shared().endRefresh();
                        done(tokens && !isStored ? QVStatus::ERROR_SERIALIZATION : status, isStored);
                    });
}

bool QVAuthService::needsRefresh() const {
    const std::int64_t expiry = platform.preferences().integer(preference::accessTokenExpiry).value_or(0);
    return expiry <= platform::roundedSecondsSince1970(platform.clock().now());
}

QVAccessInfo QVAuthService::accessInfo() const {
    const platform::PreferencesStore& preferences = platform.preferences();
    QVAccessInfo info;
    info.accessToken = preferences.string(preference::accessToken);
    info.refreshToken = preferences.string(preference::refreshToken);
    info.expiry = preferences.integer(preference::accessTokenExpiry).value_or(0);
    return info;
}

void QVAuthService::logout() {
    platform::PreferencesStore& preferences = platform.preferences();
    preferences.remove(preference::accessToken);
    preferences.remove(preference::accessTokenCreationTime);
    preferences.remove(preference::accessTokenExpiry);
    preferences.remove(preference::refreshToken);
}

bool QVAuthService::setTokenResponse(const QVAuthTokenResponse* answer) {
    if (answer == nullptr || !canBeSent(*answer)) {
        return false;
    }
    const QVAuthTokenResponse& tokens = *answer;
    const std::int64_t now = platform::roundedSecondsSince1970(platform.clock().now());
    platform::PreferencesStore& preferences = platform.preferences();
    // The process may end between any two of them. The old refresh token is of no use any more, so the new one is
    // first; the expiry is last, so that nothing but the new access token is ever taken for a fresh one.
    preferences.setString(preference::refreshToken, tokens.refreshToken);
    preferences.setString(preference::accessToken, tokens.tokenType + " " + tokens.accessToken);
    preferences.setInteger(preference::accessTokenCreationTime, now);
    preferences.setInteger(preference::accessTokenExpiry, addSaturated(now, secondsIn(tokens.expiresIn)));
    preferences.synchronize();
    return true;
}

void QVAuthService::observeOutcomes(Completion observer) {
    observers.push_back(std::move(observer));
}

QVAuthService::Completion QVAuthService::reporting(Completion completion) {
    return [this, completion = std::move(completion)](QVStatus status, bool authenticated) {
        for (const Completion& observer : std::vector<Completion>(observers)) {
            observer(status, authenticated);
        }
        completion(status, authenticated);
    };
}

} // namespace quorvane
