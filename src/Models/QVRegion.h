#pragma once

#include <optional>
#include <string>

#include "JSON/CodingKeys.h"

namespace quorvane {

/// A named region: a country, a state, a market area, a postal code.
class QVRegion {
public:
    std::string _id;
    std::string code;
    std::optional<std::string> flag;
    std::string name;
    std::string type;

    static constexpr auto codingKeys = json::keys(
        json::key("id", &QVRegion::_id), json::key("code", &QVRegion::code), json::key("flag", &QVRegion::flag),
        json::key("name", &QVRegion::name), json::key("type", &QVRegion::type));
};

} // namespace quorvane
