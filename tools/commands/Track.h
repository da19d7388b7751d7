#pragma once

#include "tools/Options.h"

namespace CLI {
class App;
}

namespace quorvane::tool {

/// `quorvane track`.
void addTrack(CLI::App& program, Command& chosen);

} // namespace quorvane::tool
