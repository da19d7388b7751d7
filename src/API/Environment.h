#pragma once

#include "JSON/RawValues.h"

namespace quorvane {

/// Which installation of the services is called: on this machine, for development, or the real one. Named
/// `QuorvaneAPI::Environment` by hosts.
enum class Environment : int { LOCAL = 0, DEVELOPMENT, PRODUCTION };

template <>
inline constexpr auto json::rawValues<Environment> =
    json::IntegerRange<Environment>{Environment::LOCAL, Environment::PRODUCTION};

} // namespace quorvane
