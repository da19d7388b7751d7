#pragma once

#include "tools/commands/TaskOptions.h"

namespace quorvane::tool {

/// How wide the labels are of what the commands below `tasks` print.
inline constexpr std::size_t taskColumn = 16;

// What the commands below `tasks` do.

AnyCodable::Dictionary claimTask(const TaskOptions& options, const GlobalOptions& global, Terminal& terminal);
AnyCodable::Dictionary showRequirements(const TaskOptions& options, const GlobalOptions& global, Terminal& terminal);
AnyCodable::Dictionary showQuestions(const TaskOptions& options, const GlobalOptions& global, Terminal& terminal);
AnyCodable::Dictionary showNext(const TaskOptions& options, const GlobalOptions& global, Terminal& terminal);
AnyCodable::Dictionary checkEntry(const TaskOptions& options, const GlobalOptions& global, Terminal& terminal);
AnyCodable::Dictionary submitEntry(const TaskOptions& options, const GlobalOptions& global, Terminal& terminal);

} // namespace quorvane::tool
