#pragma once

#include "tools/Options.h"

namespace CLI {
class App;
}

namespace quorvane::tool {

/// `places` of @p search.
void addSearchPlaces(CLI::App& search, Command& chosen);

} // namespace quorvane::tool
