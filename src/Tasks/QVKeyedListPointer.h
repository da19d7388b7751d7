#pragma once

#include <string>

#include "JSON/CodingKeys.h"

namespace quorvane {

/// The keys of a question's neighbours in its task's list of questions.
class QVKeyedListPointer {
public:
    std::string nextKey;
    std::string previousKey;

    static constexpr auto codingKeys = json::keys(json::key("nextKey", &QVKeyedListPointer::nextKey),
                                                  json::key("previousKey", &QVKeyedListPointer::previousKey));
};

} // namespace quorvane
