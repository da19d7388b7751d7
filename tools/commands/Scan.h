#pragma once

#include "tools/Options.h"

namespace CLI {
class App;
}

namespace quorvane::tool {

/// `quorvane scan`.
void addScan(CLI::App& program, Command& chosen);

} // namespace quorvane::tool
