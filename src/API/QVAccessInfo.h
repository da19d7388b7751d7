#pragma once

#include <cstdint>
#include <optional>
#include <string>

#include "API/AuthState.h"
#include "JSON/CodingKeys.h"

namespace quorvane {

/// The stored tokens.
class QVAccessInfo {
public:
    std::optional<std::string> accessToken;
    std::optional<std::string> refreshToken;
    /// Seconds since 1970 at which the access token expires.
    std::optional<std::int64_t> expiry;

    /// `UNAUTHENTICATED` when one of the three is missing, `EXPIRED` when the expiry lies before the current second,
    /// else `AUTHENTICATED`: at the very second of the expiry the tokens still count, although a refresh is due then.
    [[nodiscard]] AuthState state() const;

    static constexpr auto codingKeys =
        json::keys(json::key("accessToken", &QVAccessInfo::accessToken),
                   json::key("refreshToken", &QVAccessInfo::refreshToken), json::key("expiry", &QVAccessInfo::expiry));
};

} // namespace quorvane
