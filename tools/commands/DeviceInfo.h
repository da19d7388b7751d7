#pragma once

#include "tools/Options.h"

namespace CLI {
class App;
}

namespace quorvane::tool {

/// `quorvane device`.
void addDeviceInfo(CLI::App& program, Command& chosen);

} // namespace quorvane::tool
