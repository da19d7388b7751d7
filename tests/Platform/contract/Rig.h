#pragma once

#include <chrono>
#include <functional>
#include <memory>
#include <string>
#include <utility>
#include <vector>

#include <gtest/gtest.h>

#include "JSON/AnyCodable.h"
#include "Platform/Platform.h"

namespace quorvane::platform::contract {

/// How a server deals with one request.
struct Answer {
    enum class Ending {
        /// The whole answer is sent.
        whole,
        /// Nothing listens at the address: the connection is refused.
        refused,
        /// The request is read, and the connection closed without a byte.
        closedAtOnce,
        /// The request is read, and the connection reset.
        reset,
        /// The header block stops before its blank line, then the connection is closed.
        cutInHeaders,
        /// Half of the body is sent, then the connection is closed.
        cutInBody,
        /// The request is read and never answered.
        silent,
    };
    int status = 200;
    std::vector<std::pair<std::string, std::string>> headers;
    std::string body;
    Ending ending = Ending::whole;
};

/// A request as the server saw it.
struct Received {
    std::string method;
    /// Path and query, as sent.
    std::string target;
    std::vector<std::pair<std::string, std::string>> headers;
    std::string body;
};

/// One implementation of the platform, fresh and empty, with the world around it in the suite's hands. Everything is
/// called on the thread that made the rig, which is the main thread of the platform.
class Rig {
public:
    Rig() = default;
    Rig(const Rig&) = delete;
    Rig& operator=(const Rig&) = delete;
    virtual ~Rig() = default;

    /// Its application's information dictionary is `information()`.
    [[nodiscard]] virtual Platform& platform() = 0;

    /// Runs the main queue until @p done holds, time passing as it must; gives up after a generous while. Whether
    /// @p done holds then.
    virtual bool runUntil(const std::function<bool()>& done) = 0;

    /// Lets at least @p time pass, running what falls due on the main queue.
    virtual void pass(std::chrono::nanoseconds time) = 0;

    /// The application ends and starts again on what it has stored: `platform()` is another one from now on.
    virtual void relaunch() = 0;

    /// Starts a server, once a rig. The n-th request gets the n-th answer, and the last answer repeats. Answers the
    /// address without a slash at its end.
    virtual std::string serve(std::vector<Answer> answers) = 0;

    /// What has reached the server, in the order of arrival.
    [[nodiscard]] virtual std::vector<Received> received() = 0;

    /// Sets a variable of the environment that the platform's device answers for.
    virtual void setEnvironment(const std::string& name, const std::string& value) = 0;

    /// The lines that the platform has written to its output, without their breaks.
    [[nodiscard]] virtual std::vector<std::string> output() = 0;
};

using RigMaker = std::unique_ptr<Rig> (*)();

inline AnyCodable::Dictionary information() {
    return {{"UIBackgroundModes", AnyCodable::List{"location", "fetch"}}, {"CFBundleName", "Rider"}};
}

/// What every contract suite stands on.
class Contract : public ::testing::TestWithParam<RigMaker> {
protected:
    [[nodiscard]] Platform& platform() { return rig->platform(); }

    std::unique_ptr<Rig> rig = GetParam()();
};

} // namespace quorvane::platform::contract
