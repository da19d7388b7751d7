#pragma once

#include <csignal>

namespace quorvane::tool {

/// The user wants the program to end. The program cleans up and ends with `exitStatus`, as a shell tells it.
struct Interrupted {
    int exitStatus = 0;
};

/// While one lives, SIGINT, SIGTERM and SIGHUP do not kill the program but make `check` throw. One within another
/// changes nothing.
class Interruption {
public:
    Interruption();
    Interruption(const Interruption&) = delete;
    Interruption& operator=(const Interruption&) = delete;
    ~Interruption();

    /// Throws `Interrupted` once a signal came.
    static void check();

private:
    const bool isOutermost;
    struct sigaction before[3] = {};
};

} // namespace quorvane::tool
