#pragma once

#include <string>
#include <variant>

#include "sandbox/Sandbox.h"

namespace quorvane::sandbox {

/// What the program was asked to do.
struct CommandLine {
    SandboxOptions options;
    bool isQuiet = false;
};

/// The program ends at once: with `text`, on standard output when the status is 0, else on standard error.
struct Exit {
    int status = 0;
    std::string text;
};

/// Status 2 for a wrong form, 1 for a track that cannot be read. Reads nothing but that track.
[[nodiscard]] std::variant<CommandLine, Exit> parseCommandLine(int count, const char* const* arguments);

} // namespace quorvane::sandbox
