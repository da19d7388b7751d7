#include "tools/ProgramTest.h"

#include <csignal>
#include <cstdlib>
#include <fstream>
#include <sstream>
#include <variant>

#include <fcntl.h>
#include <poll.h>
#include <spawn.h>
#include <sys/syscall.h>
#include <sys/wait.h>
#include <unistd.h>

#include "JSON/JSON.h"

namespace quorvane::tool {
namespace {

namespace fs = std::filesystem;

/// A run that takes longer than this hangs.
constexpr int limit = 120'000;

std::string textOf(const std::string& path) {
    std::ifstream file(path, std::ios::binary);
    std::ostringstream content;
    content << file.rdbuf();
    return content.str();
}

fs::path makeScratch() {
    std::string name = (fs::path(::testing::TempDir()) / "quorvane-tool-XXXXXX").string();
    return mkdtemp(name.data()) == nullptr ? fs::path() : fs::path(name);
}

/// This process's variables, but for those that would lead the program somewhere else, and @p more.
std::vector<std::string> variables(const std::vector<std::pair<std::string, std::string>>& more) {
    std::vector<std::string> all;
    for (char** variable = environ; *variable != nullptr; ++variable) {
        const std::string text = *variable;
        const std::string name = text.substr(0, text.find('='));
        if (!name.starts_with("XDG_") && name != "HOME" && name != "TMPDIR" && name != "NO_COLOR" && name != "TERM") {
            all.push_back(text);
        }
    }
    for (const auto& [name, value] : more) {
        all.push_back(name + "=" + value);
    }
    return all;
}

std::vector<char*> pointersTo(std::vector<std::string>& texts) {
    std::vector<char*> pointers;
    pointers.reserve(texts.size() + 1);
    for (std::string& text : texts) {
        pointers.push_back(text.data());
    }
    pointers.push_back(nullptr);
    return pointers;
}

template <class Value>
Value valueIn(const AnyCodable::Dictionary& document, const std::string& key) {
    const auto entry = document.find(key);
    const Value* const value = entry == document.end() ? nullptr : std::get_if<Value>(&entry->second.value);
    EXPECT_NE(value, nullptr) << "under " << key << " in " << json::writeExactly(document);
    return value == nullptr ? Value() : *value;
}

} // namespace

AnyCodable::Dictionary Ended::document() const {
    EXPECT_EQ(output.find('\n'), output.size() - 1) << output;
    try {
        const AnyCodable value = json::readExactly(output);
        return objectIn(value);
    } catch (const json::DecodingError& error) {
        ADD_FAILURE() << error.what() << " in " << output;
    }
    return {};
}

ProgramTest::ProgramTest()
    : scratch(makeScratch()), home(scratch / "home"), temporary(scratch / "tmp"), userHome(scratch / "user") {
    fs::create_directories(temporary);
    fs::create_directories(userHome);
}

ProgramTest::~ProgramTest() {
    service.reset();
    std::error_code ignored;
    fs::remove_all(scratch, ignored);
}

void ProgramTest::TearDown() {
    EXPECT_TRUE(fs::is_empty(userHome)) << "the program wrote into the user's own home";
    EXPECT_TRUE(fs::is_empty(temporary)) << "the program left a temporary file";
}

void ProgramTest::serve(const std::vector<std::string>& faults, sandbox::SandboxOptions options) {
    for (const std::string& text : faults) {
        auto fault = sandbox::Fault::parse(text);
        ASSERT_TRUE(std::holds_alternative<sandbox::Fault>(fault)) << std::get<std::string>(fault);
        options.faults.push_back(std::get<sandbox::Fault>(fault));
    }
    auto started = sandbox::Sandbox::start(std::move(options));
    ASSERT_TRUE(std::holds_alternative<std::unique_ptr<sandbox::Sandbox>>(started)) << std::get<std::string>(started);
    service = std::get<std::unique_ptr<sandbox::Sandbox>>(std::move(started));
}

Ended ProgramTest::run(Arguments arguments) {
    arguments.insert(arguments.end(), {"--home", home.string()});
    if (service) {
        arguments.insert(arguments.end(), {"--data-port", std::to_string(service->dataPort()), "--identity-port",
                                           std::to_string(service->identityPort())});
    }
    return runPlain(arguments);
}

std::string ProgramTest::makeFile(const std::string& name, const std::string& content) const {
    const fs::path path = scratch / name;
    std::ofstream(path, std::ios::binary) << content;
    return path.string();
}

void ProgramTest::makeCachesAFile() const {
    fs::remove_all(home / "caches");
    fs::create_directories(home);
    std::ofstream(home / "caches") << "no folder";
}

Ended ProgramTest::runPlain(const Arguments& arguments) {
    return finish(start(arguments));
}

ProgramTest::Running ProgramTest::start(const Arguments& arguments, const Streams& streams) {
    const std::string number = std::to_string(++runs);
    Running running{0, streams.output.empty() ? (scratch / ("output" + number)).string() : streams.output,
                    streams.errors.empty() ? (scratch / ("errors" + number)).string() : streams.errors};
    std::vector<std::string> words = {QUORVANE_PROGRAM};
    words.insert(words.end(), arguments.begin(), arguments.end());
    std::vector<std::pair<std::string, std::string>> own = {{"HOME", userHome}, {"TMPDIR", temporary}};
    own.insert(own.end(), environment.begin(), environment.end());
    std::vector<std::string> all = variables(own);

    const std::string input = streams.input.empty() ? "/dev/null" : streams.input;
    posix_spawn_file_actions_t files{};
    posix_spawn_file_actions_init(&files);
    constexpr int flags = O_WRONLY | O_CREAT | O_NOCTTY;
    posix_spawn_file_actions_addopen(&files, STDIN_FILENO, input.c_str(), O_RDONLY, 0);
    posix_spawn_file_actions_addopen(&files, STDOUT_FILENO, running.output.c_str(), flags, 0600);
    posix_spawn_file_actions_addopen(&files, STDERR_FILENO, running.errors.c_str(), flags, 0600);
    const int error = posix_spawn(&running.process, QUORVANE_PROGRAM, &files, nullptr, pointersTo(words).data(),
                                  pointersTo(all).data());
    posix_spawn_file_actions_destroy(&files);
    EXPECT_EQ(error, 0) << "cannot start " << QUORVANE_PROGRAM;
    return running;
}

Ended ProgramTest::finish(const Running& running) {
    Ended ended;
    const int watched = static_cast<int>(syscall(SYS_pidfd_open, running.process, 0));
    pollfd ending{watched, POLLIN, 0};
    const bool endedByItself = watched >= 0 && poll(&ending, 1, limit) == 1;
    EXPECT_TRUE(endedByItself) << "the program does not end";
    if (!endedByItself) {
        kill(running.process, SIGKILL);
    }
    int state = 0;
    waitpid(running.process, &state, 0);
    close(watched);
    ended.exitStatus = WIFEXITED(state) ? WEXITSTATUS(state) : -1;
    if (std::filesystem::is_regular_file(running.output)) {
        ended.output = textOf(running.output);
    }
    if (std::filesystem::is_regular_file(running.errors)) {
        ended.errors = textOf(running.errors);
    }
    return ended;
}

std::size_t ProgramTest::requestsFor(const std::string& path) const {
    std::size_t count = 0;
    for (const auto& request : service->requests()) {
        count += request.path() == path ? 1 : 0;
    }
    return count;
}

std::string textIn(const AnyCodable::Dictionary& document, const std::string& key) {
    return valueIn<std::string>(document, key);
}

AnyCodable::List listIn(const AnyCodable::Dictionary& document, const std::string& key) {
    return valueIn<AnyCodable::List>(document, key);
}

AnyCodable::Dictionary objectIn(const AnyCodable::Dictionary& document, const std::string& key) {
    return valueIn<AnyCodable::Dictionary>(document, key);
}

AnyCodable::Dictionary objectIn(const AnyCodable& value) {
    return valueIn<AnyCodable::Dictionary>({{"value", value}}, "value");
}

double numberIn(const AnyCodable::Dictionary& document, const std::string& key) {
    const auto entry = document.find(key);
    if (entry != document.end() && std::holds_alternative<std::int64_t>(entry->second.value)) {
        return static_cast<double>(std::get<std::int64_t>(entry->second.value));
    }
    return valueIn<double>(document, key);
}

std::vector<std::string> linesOf(const std::string& text) {
    std::vector<std::string> lines;
    std::istringstream stream(text);
    for (std::string line; std::getline(stream, line);) {
        lines.push_back(line);
    }
    return lines;
}

} // namespace quorvane::tool
