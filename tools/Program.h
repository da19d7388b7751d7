#pragma once

namespace quorvane::tool {

/// The whole program: reads the command line, runs the command, answers the exit status.
int runProgram(int argumentCount, const char* const* arguments);

} // namespace quorvane::tool
