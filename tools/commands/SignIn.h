#pragma once

#include "tools/Options.h"

namespace CLI {
class App;
}

namespace quorvane::tool {

/// `quorvane sign-in`.
void addSignIn(CLI::App& program, Command& chosen);

} // namespace quorvane::tool
