#pragma once

#include <cstdint>
#include <optional>

#include "JSON/CodingKeys.h"

namespace quorvane {

/// A number inside the interval earns the score. An absent bound leaves its side open.
class QVScoreInterval {
public:
    std::optional<std::int64_t> lowerBound;
    std::optional<std::int64_t> upperBound;
    std::int64_t score = 0;

    static constexpr auto codingKeys =
        json::keys(json::key("lowerBound", &QVScoreInterval::lowerBound),
                   json::key("upperBound", &QVScoreInterval::upperBound), json::key("score", &QVScoreInterval::score));
};

} // namespace quorvane
