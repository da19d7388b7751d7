#include "API/QVAccessInfo.h"
#include "API/QVAuthResponse.h"
#include "API/QVAuthTokenResponse.h"
#include "JSON/ModelCoding.h"
#include "Platform/Clock.h"
#include "Platform/Platform.h"

namespace quorvane {

AuthState QVAccessInfo::state() const {
    if (!accessToken || !refreshToken || !expiry) {
        return AuthState::UNAUTHENTICATED;
    }
    const std::int64_t now = platform::roundedSecondsSince1970(platform::current().clock().now());
    return *expiry < now ? AuthState::EXPIRED : AuthState::AUTHENTICATED;
}

} // namespace quorvane

QV_JSON_MODEL(quorvane::QVAccessInfo);
QV_JSON_MODEL(quorvane::QVAuthResponse);
QV_JSON_MODEL(quorvane::QVAuthTokenResponse);
