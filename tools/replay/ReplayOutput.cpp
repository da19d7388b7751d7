#include "tools/replay/ReplayOutput.h"

#include "tools/Terminal.h"

namespace quorvane::tool {

ReplayOutput::ReplayOutput(const std::string& path, Terminal& theTerminal) : terminal(theTerminal) {
    if (!path.empty()) {
        file.emplace(path);
        // What is written at once may as well end at once, be it in the middle of a write that waits for a reader.
        if (file->isStaged()) {
            interruption.emplace();
        }
    }
}

void ReplayOutput::write(std::string_view text) {
    if (file) {
        file->write(text);
    } else {
        terminal.line(text.substr(0, text.size() - 1));
    }
}

void ReplayOutput::finish() {
    if (file) {
        file->finish();
    }
}

} // namespace quorvane::tool
