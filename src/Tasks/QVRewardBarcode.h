#pragma once

#include <optional>
#include <string>

#include "JSON/CodingKeys.h"

namespace quorvane {

/// The code that a reward is redeemed with.
class QVRewardBarcode {
public:
    std::optional<std::string> alternateText;
    std::optional<std::string> instructions;
    std::optional<bool> isUnique;
    std::optional<std::string> rewardKey;
    std::optional<std::string> state;
    std::optional<std::string> type;
    std::optional<std::string> value;

    static constexpr auto codingKeys = json::keys(
        json::key("alternateText", &QVRewardBarcode::alternateText),
        json::key("instructions", &QVRewardBarcode::instructions), json::key("isUnique", &QVRewardBarcode::isUnique),
        json::key("rewardKey", &QVRewardBarcode::rewardKey), json::key("state", &QVRewardBarcode::state),
        json::key("type", &QVRewardBarcode::type), json::key("value", &QVRewardBarcode::value));
};

} // namespace quorvane
