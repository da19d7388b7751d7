#include "tools/replay/ReplayOutput.h"

#include <cerrno>
#include <cstring>
#include <utility>

#include "tools/Failure.h"
#include "tools/InputFile.h"
#include "tools/Terminal.h"

namespace quorvane::tool {

ReplayOutput::ReplayOutput(std::string thePath, Terminal& theTerminal)
    : path(std::move(thePath)), terminal(theTerminal) {
    if (!path.empty()) {
        errno = 0;
        file.open(path, std::ios::binary | std::ios::trunc);
        if (!file) {
            fail();
        }
    }
}

void ReplayOutput::write(std::string_view text) {
    if (path.empty()) {
        terminal.line(text.substr(0, text.size() - 1));
    } else {
        file.write(text.data(), static_cast<std::streamsize>(text.size()));
    }
}

void ReplayOutput::finish() {
    if (!path.empty()) {
        errno = 0;
        file.close();
        if (!file) {
            fail();
        }
    }
}

void ReplayOutput::fail() const {
    throw Failure(nameOfFile(path) + ": " + (errno == 0 ? "cannot be written" : std::strerror(errno)));
}

} // namespace quorvane::tool
