#pragma once

#include <optional>
#include <string>
#include <string_view>

#include "tools/Interruption.h"
#include "tools/OutputFile.h"

namespace quorvane::tool {

class Terminal;

/// Where a replay writes to: a file, or the terminal where none is named. While a file waits for its name, a signal
/// makes `Interruption::check` throw, so that nothing half written stays.
class ReplayOutput {
public:
    /// Throws a `Failure` when the file cannot be written.
    ReplayOutput(const std::string& path, Terminal& theTerminal);

    /// @p text ends with a line break.
    void write(std::string_view text);
    /// Makes sure that everything arrived. Throws a `Failure`.
    void finish();

private:
    Terminal& terminal;
    std::optional<OutputFile> file;
    std::optional<Interruption> interruption;
};

} // namespace quorvane::tool
