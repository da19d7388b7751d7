#pragma once

#include "tools/Options.h"

namespace CLI {
class App;
}

namespace quorvane::tool {

/// `quorvane demo`.
void addDemo(CLI::App& program, Command& chosen);

} // namespace quorvane::tool
