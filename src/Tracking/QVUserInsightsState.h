#pragma once

#include "JSON/CodingKeys.h"

namespace quorvane {

/// What the service believes the user to be doing.
class QVUserInsightsState {
public:
    bool commuting = false;
    bool home = false;
    bool office = false;
    bool traveling = false;

    static constexpr auto codingKeys = json::keys(
        json::key("commuting", &QVUserInsightsState::commuting), json::key("home", &QVUserInsightsState::home),
        json::key("office", &QVUserInsightsState::office), json::key("traveling", &QVUserInsightsState::traveling));
};

} // namespace quorvane
