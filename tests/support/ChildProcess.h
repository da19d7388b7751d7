#pragma once

#include <csignal>
#include <cstdio>

#include <grp.h>
#include <gtest/gtest.h>
#include <sys/wait.h>
#include <unistd.h>

namespace quorvane::testing {

/// A copy of this process that does one piece of work and ends. Expectations that fail in it are printed and make it
/// fail; the work must not start threads.
class ChildProcess {
public:
    template <class Work>
    explicit ChildProcess(Work work) {
        static_cast<void>(std::fflush(nullptr));
        process = fork();
        if (process == 0) {
            work();
            static_cast<void>(std::fflush(nullptr));
            _exit(::testing::Test::HasFailure() ? 1 : 0);
        }
        EXPECT_GT(process, 0);
    }
    ChildProcess(const ChildProcess&) = delete;
    ChildProcess& operator=(const ChildProcess&) = delete;
    ~ChildProcess() {
        if (process > 0) {
            kill();
        }
    }

    /// Waits for its end; whether all went well in it.
    bool succeeds() {
        const int status = wait();
        return WIFEXITED(status) && WEXITSTATUS(status) == 0;
    }

    /// Kills it wherever it is; whether that was what ended it.
    bool kill() {
        ::kill(process, SIGKILL);
        const int status = wait();
        return WIFSIGNALED(status) && WTERMSIG(status) == SIGKILL;
    }

private:
    int wait() {
        int status = 0;
        EXPECT_EQ(waitpid(process, &status, 0), process);
        process = -1;
        return status;
    }

    pid_t process = -1;
};

/// The user that a privileged process becomes to be refused like any other: nobody.
constexpr unsigned int unprivilegedUser = 65534;

/// Gives up the rights of the superuser, whom no permission stops, in a child process.
inline void giveUpPrivileges() {
    if (geteuid() == 0) {
        EXPECT_EQ(setgroups(0, nullptr), 0);
        EXPECT_EQ(setgid(unprivilegedUser), 0);
        EXPECT_EQ(setuid(unprivilegedUser), 0);
    }
}

} // namespace quorvane::testing
