#include <csignal>

#include "tools/commands/Program.h"

int main(int argc, char** argv) {
    // A reader that goes away shows as a failed write, so that everything is still cleaned up.
    std::signal(SIGPIPE, SIG_IGN);
    return quorvane::tool::runProgram(argc, argv);
}
