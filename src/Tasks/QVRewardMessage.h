#pragma once

#include <optional>
#include <string>

#include "JSON/CodingKeys.h"

namespace quorvane {

/// What a user is told with a reward.
class QVRewardMessage {
public:
    std::optional<std::string> header;
    std::optional<std::string> body;

    static constexpr auto codingKeys =
        json::keys(json::key("header", &QVRewardMessage::header), json::key("body", &QVRewardMessage::body));
};

} // namespace quorvane
