#pragma once

#include <string>
#include <vector>

#include <sys/types.h>

namespace quorvane::sandbox::test {

/// A program as a child process, killed at the end. Every wait for a byte of what it says ends after @p patience
/// milliseconds with a `std::runtime_error`.
class Program {
public:
    /// @p command is the program, found as a shell would, and its arguments; @p settings are "NAME=value" and come
    /// before what this process's environment says.
    explicit Program(std::vector<std::string> command, const std::vector<std::string>& settings = {},
                     int patience = 20'000);
    Program(const Program&) = delete;
    Program& operator=(const Program&) = delete;
    ~Program();

    void signal(int number) const;
    /// The exit status; the number of the signal below zero when one ended it.
    int wait();

    [[nodiscard]] std::string readOutputLine() const { return readLine(outputEnd); }
    [[nodiscard]] std::string readErrorLine() const { return readLine(errorEnd); }
    [[nodiscard]] std::string restOfOutput() const { return readAll(outputEnd); }
    [[nodiscard]] std::string restOfErrors() const { return readAll(errorEnd); }

private:
    bool readByte(int file, char& byte) const;
    [[nodiscard]] std::string readLine(int file) const;
    [[nodiscard]] std::string readAll(int file) const;

    pid_t process = -1;
    int outputEnd = -1;
    int errorEnd = -1;
    int patience;
};

} // namespace quorvane::sandbox::test
