#pragma once

#include <string>
#include <vector>

#include <sys/types.h>

namespace quorvane::sandbox::test {

/// A program as a child process, killed at the end. Every wait for a byte of what it says ends after twenty seconds
/// with a `std::runtime_error`.
class Program {
public:
    /// @p command is the program and its arguments.
    explicit Program(std::vector<std::string> command);
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
    static bool readByte(int file, char& byte);
    [[nodiscard]] static std::string readLine(int file);
    [[nodiscard]] static std::string readAll(int file);

    pid_t process = -1;
    int outputEnd = -1;
    int errorEnd = -1;
};

} // namespace quorvane::sandbox::test
