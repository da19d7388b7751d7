#pragma once

#include "tools/Options.h"

namespace CLI {
class App;
}

namespace quorvane::tool {

/// `quorvane rewards`.
void addRewards(CLI::App& program, Command& chosen);

} // namespace quorvane::tool
