#pragma once

#include <string>
#include <variant>

#include "tools/Options.h"

namespace quorvane::tool {

/// What was asked for.
struct CommandLine {
    GlobalOptions global;
    Command command;
};

/// What `--help` and `--version` answer.
struct HelpText {
    std::string text;
};

/// Reads the command line. Throws a `WrongForm`.
[[nodiscard]] std::variant<CommandLine, HelpText> parseCommandLine(int argumentCount, const char* const* arguments);

} // namespace quorvane::tool
