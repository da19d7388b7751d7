#pragma once

#include <optional>
#include <string>

#include "JSON/CodingKeys.h"

namespace quorvane {

/// What the service configures remotely. The latest copy is kept in the settings.
class QVConfig {
public:
    std::optional<std::string> apiVersion;

    static constexpr auto codingKeys = json::keys(json::key("apiVersion", &QVConfig::apiVersion));
};

} // namespace quorvane
