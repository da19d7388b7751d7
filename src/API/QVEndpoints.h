#pragma once

#include <string>

#include "API/Environment.h"

namespace quorvane {

/// The base URLs of one service, without a slash at the end.
class QVEndpoint {
public:
    std::string developmentEndpoint;
    std::string localEndpoint;
    std::string productionEndpoint;
};

/// The base URLs of the data service and the identity service, and the environment that chooses among them. The hosts
/// of development and production are options of the build (QUORVANE_API_HOST and others); the local services stand on
/// ports 3000 and 4001 of this machine.
class QVEndpoints {
public:
    explicit QVEndpoints(Environment environment);

    [[nodiscard]] const std::string& apiEndpoint() const;
    [[nodiscard]] const std::string& authEndpoint() const;

    QVEndpoint api;
    QVEndpoint auth;
    Environment environment;
};

} // namespace quorvane
