#pragma once

namespace quorvane::tool {

struct CommandLine;
class Terminal;

/// The whole program: reads the command line, runs the command, answers the exit status.
int runProgram(int argumentCount, const char* const* arguments);

/// Runs the command, tells a failure on standard error, and writes the JSON document where one was asked for; answers
/// the exit status. Throws a `WrongForm`.
int runCommand(const CommandLine& line, Terminal& terminal);

} // namespace quorvane::tool
