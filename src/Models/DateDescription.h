#pragma once

#include <string>

#include "JSON/Date.h"

namespace quorvane {

/// "2024-05-01 12:00:00 +0000": a moment as descriptions and log lines show it, in UTC, cut to whole seconds.
[[nodiscard]] std::string descriptionOf(json::Date date);

} // namespace quorvane
