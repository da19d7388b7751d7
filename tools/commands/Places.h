#pragma once

#include "tools/Options.h"

namespace CLI {
class App;
}

namespace quorvane::tool {

/// `quorvane places add`.
void addPlaces(CLI::App& program, Command& chosen);

} // namespace quorvane::tool
