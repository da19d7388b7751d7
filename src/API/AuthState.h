#pragma once

#include "JSON/RawValues.h"

namespace quorvane {

/// What the stored tokens are good for. Named `QVAuthService::AuthState` by hosts.
enum class AuthState : int { AUTHENTICATED = 0, EXPIRED, UNAUTHENTICATED };

template <>
inline constexpr auto json::rawValues<AuthState> =
    json::IntegerRange<AuthState>{AuthState::AUTHENTICATED, AuthState::UNAUTHENTICATED};

} // namespace quorvane
