#include "tools/Interruption.h"

#include <array>

namespace quorvane::tool {
namespace {

constexpr std::array<int, 3> signals{SIGINT, SIGTERM, SIGHUP};

volatile std::sig_atomic_t arrived = 0;
int living = 0;

extern "C" void rememberSignal(int number) {
    arrived = number;
}

} // namespace

Interruption::Interruption() : isOutermost(living++ == 0) {
    if (!isOutermost) {
        return;
    }
    arrived = 0;
    struct sigaction action = {};
    action.sa_handler = rememberSignal;
    action.sa_flags = SA_RESTART;
    for (std::size_t i = 0; i < signals.size(); ++i) {
        sigaction(signals[i], nullptr, &before[i]);
        // Whoever started the program with a signal ignored, as nohup does, means it.
        if (before[i].sa_handler != SIG_IGN) {
            sigaction(signals[i], &action, nullptr);
        }
    }
}

Interruption::~Interruption() {
    --living;
    for (std::size_t i = 0; isOutermost && i < signals.size(); ++i) {
        sigaction(signals[i], &before[i], nullptr);
    }
}

void Interruption::check() {
    if (arrived != 0) {
        throw Interrupted{128 + arrived};
    }
}

} // namespace quorvane::tool
