#include "Platform/Native/HostApplication.h"

#include <cerrno>
#include <cstdio>
#include <utility>

#include <unistd.h>

namespace quorvane::platform::native {

void writeLine(std::string_view line) {
    std::string whole;
    whole.reserve(line.size() + 1);
    whole.append(line).append(1, '\n');
    flockfile(stdout);
    static_cast<void>(std::fflush(stdout));
    for (std::string_view rest = whole; !rest.empty();) {
        const ssize_t written = write(fileno(stdout), rest.data(), rest.size());
        if (written < 0 && errno != EINTR) {
            break;
        }
        rest.remove_prefix(written < 0 ? 0 : static_cast<std::size_t>(written));
    }
    funlockfile(stdout);
}

HostApplication::HostApplication(AnyCodable::Dictionary theInformation, std::function<void(std::string_view)> theOutput)
    : information(std::move(theInformation)), output(theOutput ? std::move(theOutput) : &writeLine) {}

Application::BackgroundTask HostApplication::beginBackgroundTask(const std::string&, std::function<void()>) {
    return ++lastTask;
}

void HostApplication::endBackgroundTask(BackgroundTask) {}

void HostApplication::standardOutput(std::string_view line) {
    try {
        const std::lock_guard lock(outputMutex);
        output(line);
    } catch (...) {
        // A line that cannot be written is lost: there is no place left to say so.
    }
}

void HostApplication::onMemoryWarning(std::function<void()>) {}

} // namespace quorvane::platform::native
