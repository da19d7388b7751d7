#pragma once

#include "tools/commands/TaskOptions.h"

namespace quorvane::tool {

// What the commands below `tasks` do.

AnyCodable::Dictionary claimTask(const TaskOptions& options, const GlobalOptions& global, Terminal& terminal);
AnyCodable::Dictionary showRequirements(const TaskOptions& options, const GlobalOptions& global, Terminal& terminal);
AnyCodable::Dictionary showQuestions(const TaskOptions& options, const GlobalOptions& global, Terminal& terminal);
AnyCodable::Dictionary showNext(const TaskOptions& options, const GlobalOptions& global, Terminal& terminal);
AnyCodable::Dictionary checkEntry(const TaskOptions& options, const GlobalOptions& global, Terminal& terminal);
AnyCodable::Dictionary submitEntry(const TaskOptions& options, const GlobalOptions& global, Terminal& terminal);

} // namespace quorvane::tool
