#pragma once

#include <string>

#include "JSON/CodingKeys.h"

namespace quorvane {

/// What "/authorize" answers.
class QVAuthResponse {
public:
    std::string code;
    std::string state;

    static constexpr auto codingKeys =
        json::keys(json::key("code", &QVAuthResponse::code), json::key("state", &QVAuthResponse::state));
};

} // namespace quorvane
