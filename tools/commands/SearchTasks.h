#pragma once

#include "tools/Options.h"

namespace CLI {
class App;
}

namespace quorvane::tool {

/// `tasks` of @p search.
void addSearchTasks(CLI::App& search, Command& chosen);

} // namespace quorvane::tool
