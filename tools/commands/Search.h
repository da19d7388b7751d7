#pragma once

#include "tools/Options.h"

namespace CLI {
class App;
}

namespace quorvane::tool {

/// `quorvane search places` and `quorvane search tasks`.
void addSearch(CLI::App& program, Command& chosen);

} // namespace quorvane::tool
