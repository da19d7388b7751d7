#pragma once

#include <cstdint>
#include <memory>
#include <vector>

#include "JSON/CodingKeys.h"

namespace quorvane {

/// The envelope of a list answer.
template <class T>
class JSONResponseList {
public:
    /// What the answer states; not recomputed from the list.
    std::int64_t count = 0;
    std::vector<std::shared_ptr<T>> data;

    static constexpr auto codingKeys =
        json::keys(json::key("count", &JSONResponseList::count), json::key("data", &JSONResponseList::data));
};

/// The model of calls whose answer is not read: any JSON object.
class EmptyResponse {
public:
    static constexpr auto codingKeys = json::keys();
};

} // namespace quorvane
