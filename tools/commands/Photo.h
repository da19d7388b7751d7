#pragma once

#include "tools/Options.h"

namespace CLI {
class App;
}

namespace quorvane::tool {

/// `quorvane photo`.
void addPhoto(CLI::App& program, Command& chosen);

} // namespace quorvane::tool
