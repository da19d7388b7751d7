#pragma once

#include <csignal>
#include <cstdlib>
#include <string>
#include <utility>
#include <vector>

#include <gtest/gtest.h>
#include <sys/prctl.h>
#include <sys/wait.h>
#include <unistd.h>

#include "support/ScratchDirectory.h"

namespace quorvane::testing {

/// A program that serves the test as long as this lives. It ends with the test's process, whatever becomes of that.
class ServiceProcess {
public:
    /// Returns when the program has written its first line.
    explicit ServiceProcess(std::vector<std::string> command) {
        int ends[2] = {-1, -1};
        EXPECT_EQ(pipe(ends), 0);
        std::vector<char*> words;
        for (std::string& word : command) {
            words.push_back(word.data());
        }
        words.push_back(nullptr);
        process = fork();
        if (process == 0) {
            prctl(PR_SET_PDEATHSIG, SIGKILL);
            dup2(ends[1], STDOUT_FILENO);
            close(ends[0]);
            close(ends[1]);
            execv(words.front(), words.data());
            _exit(127);
        }
        close(ends[1]);
        output = ends[0];
        for (char c = 0; read(output, &c, 1) == 1 && c != '\n';) {
            line += c;
        }
        EXPECT_FALSE(line.empty()) << command.front() << " says nothing";
    }
    ServiceProcess(const ServiceProcess&) = delete;
    ServiceProcess& operator=(const ServiceProcess&) = delete;
    ~ServiceProcess() {
        kill(process, SIGKILL);
        waitpid(process, nullptr, 0);
        close(output);
    }

    [[nodiscard]] const std::string& firstLine() const { return line; }

private:
    pid_t process = -1;
    int output = -1;
    std::string line;
};

/// A D-Bus of the test's own that counts as the system's one in this process and in those that it starts. Make it
/// before anything asks for the system's bus.
class PrivateBus {
public:
    PrivateBus()
        : daemon({QUORVANE_DBUS_DAEMON, std::string("--config-file=") + QUORVANE_DBUS_CONFIGURATION, "--nofork",
                  "--print-address", "--address=unix:dir=" + scratch.path()}) {
        setenv("DBUS_SYSTEM_BUS_ADDRESS", daemon.firstLine().c_str(), 1);
    }

    [[nodiscard]] const std::string& address() const { return daemon.firstLine(); }

private:
    const ScratchDirectory scratch;
    const ServiceProcess daemon;
};

} // namespace quorvane::testing
