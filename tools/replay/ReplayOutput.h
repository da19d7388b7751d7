#pragma once

#include <fstream>
#include <string>
#include <string_view>

namespace quorvane::tool {

class Terminal;

/// Where a replay writes to: a file, or the terminal where none is named.
class ReplayOutput {
public:
    /// Throws a `Failure` when the file cannot be written.
    ReplayOutput(std::string thePath, Terminal& theTerminal);

    /// @p text ends with a line break.
    void write(std::string_view text);
    /// Makes sure that everything arrived. Throws a `Failure`.
    void finish();

private:
    [[noreturn]] void fail() const;

    const std::string path;
    Terminal& terminal;
    std::ofstream file;
};

} // namespace quorvane::tool
