#pragma once

#include <string>
#include <vector>

#include <sys/types.h>

#include "JSON/AnyCodable.h"

namespace quorvane::testing {

/// A browser as a child process, driven by the DevTools protocol over two pipes: no port is needed. Killed at the end.
class DevTools {
public:
    /// @p command is the browser with its arguments; it gets "--remote-debugging-pipe" besides. @p settings are
    /// "NAME=value" and stand before what this process's environment says.
    DevTools(std::vector<std::string> command, const std::vector<std::string>& settings);
    DevTools(const DevTools&) = delete;
    DevTools& operator=(const DevTools&) = delete;
    ~DevTools();

    /// What a method answers. Throws a `std::runtime_error` with the browser's sentence when it refuses, and when no
    /// answer comes within two minutes.
    AnyCodable::Dictionary call(const std::string& method, AnyCodable::Dictionary parameters = {});
    /// From now on methods are called in this session.
    void use(std::string theSession) { session = std::move(theSession); }
    /// What the browser has told since the last call.
    [[nodiscard]] std::vector<AnyCodable::Dictionary> takeEvents();
    /// Waits until the browser has ended by itself.
    void waitForEnd();

private:
    [[nodiscard]] AnyCodable::Dictionary nextMessage();

    pid_t process = -1;
    int requests = -1;
    int answers = -1;
    std::int64_t lastNumber = 0;
    std::string session;
    std::string pending;
    std::vector<AnyCodable::Dictionary> events;
};

} // namespace quorvane::testing
