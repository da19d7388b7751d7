#pragma once

#include <cstdint>
#include <functional>
#include <optional>
#include <string>

#include "Core/Enumerations.h"
#include "JSON/AnyCodable.h"

namespace quorvane::tool {

class Terminal;

/// What stands beside every command.
struct GlobalOptions {
    std::string key = "LOCALKEY-demo";
    /// Where preferences and caches live. Empty: the user's own.
    std::string home;
    /// For this run only.
    std::optional<QVLogLevel> logLevel;
    /// Where the services of the local environment stand, when it is not on their own ports.
    std::optional<std::uint16_t> dataPort;
    std::optional<std::uint16_t> identityPort;
    /// One JSON document is all that is written to standard output.
    bool json = false;
};

/// Does what a command is there for, tells it on the terminal line by line, and answers the same as the members of
/// one JSON object. Throws a `Failure`, or a `WrongForm` when the options do not go together.
using Command = std::function<AnyCodable::Dictionary(const GlobalOptions&, Terminal&)>;

} // namespace quorvane::tool
