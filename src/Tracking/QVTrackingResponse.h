#pragma once

#include <memory>
#include <vector>

#include "JSON/CodingKeys.h"
#include "Tracking/QVEvent.h"
#include "Tracking/QVUser.h"

namespace quorvane {

/// The outcome of a sync.
class QVTrackingResponse {
public:
    std::vector<std::shared_ptr<QVEvent>> events;
    std::shared_ptr<QVUser> user;

    static constexpr auto codingKeys =
        json::keys(json::key("events", &QVTrackingResponse::events), json::key("user", &QVTrackingResponse::user));
};

} // namespace quorvane
