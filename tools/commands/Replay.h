#pragma once

#include "tools/Options.h"

namespace CLI {
class App;
}

namespace quorvane::tool {

/// `quorvane replay`.
void addReplay(CLI::App& program, Command& chosen);

} // namespace quorvane::tool
