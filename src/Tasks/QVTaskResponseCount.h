#pragma once

#include <cstdint>

#include "JSON/CodingKeys.h"

namespace quorvane {

/// How many responses a question has and how many are wanted.
class QVTaskResponseCount {
public:
    std::int64_t actual = 0;
    std::int64_t wanted = 0;

    static constexpr auto codingKeys = json::keys(json::key("actual", &QVTaskResponseCount::actual),
                                                  json::key("wanted", &QVTaskResponseCount::wanted));
};

} // namespace quorvane
