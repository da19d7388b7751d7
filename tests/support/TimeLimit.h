#pragma once

#include <csignal>

#include <sys/time.h>

namespace quorvane {

/// Kills this process with SIGALRM a third of a second from now. For the child of a death test, to show that a call
/// never returns.
inline void killSoon() {
    std::signal(SIGALRM, SIG_DFL);
    itimerval limit{};
    limit.it_value.tv_usec = 333'000;
    ::setitimer(ITIMER_REAL, &limit, nullptr);
}

} // namespace quorvane
