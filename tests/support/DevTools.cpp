#include "support/DevTools.h"

#include <array>
#include <csignal>
#include <stdexcept>
#include <string_view>
#include <utility>

#include <fcntl.h>
#include <poll.h>
#include <spawn.h>
#include <sys/wait.h>
#include <unistd.h>

#include "JSON/JSON.h"

namespace quorvane::testing {
namespace {

using Object = AnyCodable::Dictionary;

constexpr int patience = 120'000;

std::vector<char*> pointersTo(std::vector<std::string>& texts) {
    std::vector<char*> pointers;
    for (std::string& text : texts) {
        pointers.push_back(text.data());
    }
    pointers.push_back(nullptr);
    return pointers;
}

/// Of two entries with one name the first counts.
std::vector<std::string> environmentWith(std::vector<std::string> settings) {
    for (char** entry = environ; *entry != nullptr; ++entry) {
        settings.emplace_back(*entry);
    }
    return settings;
}

/// A pipe whose ends are none of those that a child is given by number.
std::array<int, 2> makePipe() {
    constexpr int lowest = 10;
    std::array<int, 2> low{};
    if (::pipe2(low.data(), O_CLOEXEC) != 0) {
        throw std::runtime_error("there is no pipe");
    }
    const std::array<int, 2> ends{::fcntl(low[0], F_DUPFD_CLOEXEC, lowest), ::fcntl(low[1], F_DUPFD_CLOEXEC, lowest)};
    ::close(low[0]);
    ::close(low[1]);
    return ends;
}

} // namespace

DevTools::DevTools(std::vector<std::string> command, const std::vector<std::string>& settings) {
    constexpr int browserReads = 3;
    constexpr int browserWrites = 4;
    const auto toBrowser = makePipe();
    const auto fromBrowser = makePipe();
    posix_spawn_file_actions_t actions;
    posix_spawn_file_actions_init(&actions);
    posix_spawn_file_actions_addopen(&actions, STDOUT_FILENO, "/dev/null", O_WRONLY, 0);
    posix_spawn_file_actions_addopen(&actions, STDERR_FILENO, "/dev/null", O_WRONLY, 0);
    posix_spawn_file_actions_adddup2(&actions, toBrowser[0], browserReads);
    posix_spawn_file_actions_adddup2(&actions, fromBrowser[1], browserWrites);
    command.emplace_back("--remote-debugging-pipe");
    std::vector<std::string> environment = environmentWith(settings);
    const int problem = ::posix_spawnp(&process, command.front().c_str(), &actions, nullptr, pointersTo(command).data(),
                                       pointersTo(environment).data());
    posix_spawn_file_actions_destroy(&actions);
    ::close(toBrowser[0]);
    ::close(fromBrowser[1]);
    requests = toBrowser[1];
    answers = fromBrowser[0];
    if (problem != 0) {
        process = -1;
        ::close(requests);
        ::close(answers);
        throw std::runtime_error(command.front() + " cannot be started; is it installed?");
    }
}

DevTools::~DevTools() {
    if (process > 0) {
        ::kill(process, SIGKILL);
        waitForEnd();
    }
    ::close(requests);
    ::close(answers);
}

void DevTools::waitForEnd() {
    ::waitpid(process, nullptr, 0);
    process = -1;
}

AnyCodable::Dictionary DevTools::call(const std::string& method, Object parameters) {
    const std::int64_t number = ++lastNumber;
    Object message{{"id", number}, {"method", AnyCodable(method)}, {"params", std::move(parameters)}};
    if (!session.empty()) {
        message.emplace("sessionId", AnyCodable(session));
    }
    std::string text = json::writeExactly(message);
    text += '\0';
    for (std::string_view rest = text; !rest.empty();) {
        const auto count = ::write(requests, rest.data(), rest.size());
        if (count <= 0) {
            throw std::runtime_error("the browser has ended");
        }
        rest.remove_prefix(static_cast<std::size_t>(count));
    }
    while (true) {
        Object answer = nextMessage();
        if (!answer.contains("id")) {
            events.push_back(std::move(answer));
        } else if (answer.at("id") == AnyCodable(number)) {
            if (answer.contains("error")) {
                throw std::runtime_error(method + ": " + json::writeExactly(answer.at("error")));
            }
            return std::get<Object>(answer.at("result").value);
        }
    }
}

std::vector<AnyCodable::Dictionary> DevTools::takeEvents() {
    return std::exchange(events, {});
}

AnyCodable::Dictionary DevTools::nextMessage() {
    auto end = pending.find('\0');
    while (end == std::string::npos) {
        pollfd wait{.fd = answers, .events = POLLIN, .revents = 0};
        std::array<char, 65536> bytes{};
        const auto count = ::poll(&wait, 1, patience) == 1 ? ::read(answers, bytes.data(), bytes.size()) : -1;
        if (count <= 0) {
            throw std::runtime_error("the browser does not answer");
        }
        pending.append(bytes.data(), static_cast<std::size_t>(count));
        end = pending.find('\0');
    }
    AnyCodable message = json::readExactly(pending.substr(0, end));
    pending.erase(0, end + 1);
    return std::get<Object>(std::move(message.value));
}

} // namespace quorvane::testing
