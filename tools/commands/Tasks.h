#pragma once

#include "tools/Options.h"

namespace CLI {
class App;
}

namespace quorvane::tool {

/// `quorvane tasks claim`, `requirements`, `questions`, `next`, `check` and `answer`.
void addTasks(CLI::App& program, Command& chosen);

} // namespace quorvane::tool
