#pragma once

#include <optional>
#include <string>

#include "JSON/CodingKeys.h"

namespace quorvane {

/// The campaign, the client and the user that own a task, question, answer, response, place or reward.
class QVOwners {
public:
    std::optional<std::string> campaign;
    std::optional<std::string> client;
    std::optional<std::string> user;

    static constexpr auto codingKeys =
        json::keys(json::key("campaign", &QVOwners::campaign), json::key("client", &QVOwners::client),
                   json::key("user", &QVOwners::user));
};

} // namespace quorvane
