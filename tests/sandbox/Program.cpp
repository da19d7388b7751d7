#include "sandbox/Program.h"

#include <array>
#include <csignal>
#include <stdexcept>
#include <tuple>

#include <fcntl.h>
#include <poll.h>
#include <spawn.h>
#include <sys/wait.h>
#include <unistd.h>

namespace quorvane::sandbox::test {
Program::Program(std::vector<std::string> command) {
    std::array<int, 2> output{};
    std::array<int, 2> errors{};
    if (::pipe2(output.data(), O_CLOEXEC) != 0 || ::pipe2(errors.data(), O_CLOEXEC) != 0) {
        throw std::runtime_error("there is no pipe");
    }
    posix_spawn_file_actions_t actions;
    posix_spawn_file_actions_init(&actions);
    posix_spawn_file_actions_adddup2(&actions, output[1], STDOUT_FILENO);
    posix_spawn_file_actions_adddup2(&actions, errors[1], STDERR_FILENO);
    std::vector<char*> arguments;
    for (std::string& argument : command) {
        arguments.push_back(argument.data());
    }
    arguments.push_back(nullptr);
    const int problem = ::posix_spawn(&process, arguments.front(), &actions, nullptr, arguments.data(), environ);
    posix_spawn_file_actions_destroy(&actions);
    ::close(output[1]);
    ::close(errors[1]);
    outputEnd = output[0];
    errorEnd = errors[0];
    if (problem != 0) {
        process = -1;
        throw std::runtime_error(command.front() + " cannot be started");
    }
}

Program::~Program() {
    if (process > 0) {
        signal(SIGKILL);
        std::ignore = wait();
    }
    ::close(outputEnd);
    ::close(errorEnd);
}

void Program::signal(int number) const {
    ::kill(process, number);
}

int Program::wait() {
    int status = 0;
    ::waitpid(process, &status, 0);
    process = -1;
    return WIFEXITED(status) ? WEXITSTATUS(status) : -WTERMSIG(status);
}

bool Program::readByte(int file, char& byte) {
    constexpr int patience = 20'000;
    pollfd wait{.fd = file, .events = POLLIN, .revents = 0};
    if (::poll(&wait, 1, patience) != 1) {
        throw std::runtime_error("the program says nothing");
    }
    return ::read(file, &byte, 1) == 1;
}

std::string Program::readLine(int file) {
    std::string line;
    for (char byte = 0; readByte(file, byte) && byte != '\n';) {
        line += byte;
    }
    return line;
}

std::string Program::readAll(int file) {
    std::string text;
    for (char byte = 0; readByte(file, byte);) {
        text += byte;
    }
    return text;
}

} // namespace quorvane::sandbox::test
