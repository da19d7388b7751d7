#pragma once

#include <algorithm>
#include <cstdlib>
#include <filesystem>
#include <map>
#include <mutex>
#include <optional>
#include <thread>

#include <sys/socket.h>

#include "Platform/Native/NativePlatform.h"
#include "Platform/contract/Rig.h"
#include "support/RawServer.h"
#include "support/ScratchDirectory.h"

namespace quorvane::platform::contract {

/// A native platform on a scratch home, and a server on loopback.
class NativeRig : public Rig {
public:
    /// Makes the platform under test.
    using Maker = std::function<std::shared_ptr<NativePlatform>(NativeOptions)>;

    explicit NativeRig(Maker theMaker = &NativePlatform::make) : maker(std::move(theMaker)) { launch(); }

    ~NativeRig() override {
        if (refusing >= 0) {
            close(refusing);
        }
    }

    Platform& platform() override { return *current; }

    bool runUntil(const std::function<bool()>& done) override {
        return current->mainQueue().runUntil(done, std::chrono::seconds(60));
    }

    void pass(std::chrono::nanoseconds time) override {
        const auto end = std::chrono::steady_clock::now() + time;
        current->mainQueue().runUntil([] { return false; }, time);
        // A queue that is closed does not wait.
        std::this_thread::sleep_until(end);
    }

    void relaunch() override {
        current.reset();
        launch();
    }

    std::string serve(std::vector<Answer> answers) override {
        if (answers.front().ending == Answer::Ending::refused) {
            return refusingAddress();
        }
        std::vector<testing::RawAnswer> raw;
        std::transform(answers.begin(), answers.end(), std::back_inserter(raw), &rawAnswer);
        server.emplace(std::move(raw));
        return server->url("");
    }

    std::vector<Received> received() override {
        std::vector<Received> all;
        for (const std::string& request : server->requests()) {
            all.push_back(parsed(request));
        }
        return all;
    }

    void setEnvironment(const std::string& name, const std::string& value) override {
        setenv(name.c_str(), value.c_str(), 1);
    }

    std::vector<std::string> output() override {
        const std::lock_guard lock(mutex);
        return lines;
    }

private:
    void launch() {
        NativeOptions options;
        options.home = scratch.path() + "/home";
        options.information = information();
        options.output = [this](std::string_view line) {
            const std::lock_guard lock(mutex);
            lines.emplace_back(line);
        };
        current = maker(std::move(options));
    }

    /// The address of a port that is taken and not listened on.
    std::string refusingAddress() {
        refusing = socket(AF_INET, SOCK_STREAM | SOCK_CLOEXEC, 0);
        sockaddr_in address{};
        address.sin_family = AF_INET;
        address.sin_addr.s_addr = htonl(INADDR_LOOPBACK);
        socklen_t length = sizeof address;
        auto* const generic = reinterpret_cast<sockaddr*>(&address);
        EXPECT_EQ(bind(refusing, generic, length), 0);
        EXPECT_EQ(getsockname(refusing, generic, &length), 0);
        return "http://127.0.0.1:" + std::to_string(ntohs(address.sin_port));
    }

    static testing::RawAnswer rawAnswer(const Answer& answer) {
        using Then = testing::RawAnswer::Then;
        std::string whole = testing::RawServer::answer(answer.status, answer.body, answer.headers);
        switch (answer.ending) {
            case Answer::Ending::closedAtOnce:
                return {.bytes = "", .then = Then::closes};
            case Answer::Ending::reset:
                return {.bytes = "", .then = Then::resets};
            case Answer::Ending::cutInHeaders:
                return {.bytes = whole.substr(0, whole.find("\r\n\r\n") + 2), .then = Then::closes};
            case Answer::Ending::cutInBody:
                return {.bytes = whole.substr(0, whole.size() - (answer.body.size() + 1) / 2), .then = Then::closes};
            case Answer::Ending::silent:
                return {.bytes = "", .then = Then::hangs};
            default:
                return {.bytes = std::move(whole)};
        }
    }

    static Received parsed(const std::string& request) {
        Received result;
        const std::size_t blankLine = request.find("\r\n\r\n");
        std::size_t start = request.find("\r\n") + 2;
        const std::string first = request.substr(0, start - 2);
        const std::size_t blank = first.find(' ');
        result.method = first.substr(0, blank);
        result.target = first.substr(blank + 1, first.rfind(' ') - blank - 1);
        while (start < blankLine + 2) {
            const std::size_t end = request.find("\r\n", start);
            const std::size_t colon = request.find(':', start);
            const std::size_t value = std::min(request.find_first_not_of(' ', colon + 1), end);
            result.headers.emplace_back(request.substr(start, colon - start), request.substr(value, end - value));
            start = end + 2;
        }
        result.body = request.substr(blankLine + 4);
        return result;
    }

    const Maker maker;
    const testing::ScratchDirectory scratch;
    std::mutex mutex;
    std::vector<std::string> lines;
    std::optional<testing::RawServer> server;
    int refusing = -1;
    std::shared_ptr<NativePlatform> current;
};

} // namespace quorvane::platform::contract
