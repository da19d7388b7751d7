#pragma once

#include <cstdint>

#include "JSON/CodingKeys.h"

#pragma push_macro("max")
#pragma push_macro("min")
#undef max
#undef min

namespace quorvane {

/// How long a task takes, in minutes.
class QVEstimatedTime {
public:
    std::int64_t max = 0;
    std::int64_t min = 0;

    static constexpr auto codingKeys =
        json::keys(json::key("max", &QVEstimatedTime::max), json::key("min", &QVEstimatedTime::min));
};

} // namespace quorvane

#pragma pop_macro("min")
#pragma pop_macro("max")
