#include <csignal>
#include <cstdio>
#include <exception>
#include <memory>
#include <string>
#include <utility>
#include <variant>

#include "sandbox/CommandLine.h"
#include "sandbox/Sandbox.h"

namespace {

using namespace quorvane::sandbox;

void printLine(std::FILE* stream, const std::string& text) {
    std::fprintf(stream, "%s\n", text.c_str());
    std::fflush(stream);
}

int run(int count, char** arguments) {
    auto parsed = parseCommandLine(count, arguments);
    if (const auto* exit = std::get_if<Exit>(&parsed)) {
        printLine(exit->status == 0 ? stdout : stderr, exit->text);
        return exit->status;
    }
    auto line = std::get<CommandLine>(std::move(parsed));
    if (!line.isQuiet) {
        line.options.onRequest = [](const RequestRecord& record) { printLine(stderr, record.line()); };
    }

    line.options.onNotice = [](const std::string& sentence) { printLine(stderr, sentence); };

    // Blocked before the first thread starts, so that this thread alone takes them.
    sigset_t ends;
    sigemptyset(&ends);
    sigaddset(&ends, SIGINT);
    sigaddset(&ends, SIGTERM);
    pthread_sigmask(SIG_BLOCK, &ends, nullptr);
    std::signal(SIGPIPE, SIG_IGN);

    auto started = Sandbox::start(std::move(line.options));
    if (const auto* sentence = std::get_if<std::string>(&started)) {
        printLine(stderr, *sentence);
        return 1;
    }
    const auto sandbox = std::get<0>(std::move(started));
    printLine(stdout, "data http://127.0.0.1:" + std::to_string(sandbox->dataPort()) +
                          " identity http://127.0.0.1:" + std::to_string(sandbox->identityPort()));
    int signal = 0;
    sigwait(&ends, &signal);
    return 0;
}

} // namespace

int main(int count, char** arguments) {
    try {
        return run(count, arguments);
    } catch (const std::exception& error) {
        std::fprintf(stderr, "The sandbox cannot run: %s.\n", error.what());
        return 1;
    }
}
