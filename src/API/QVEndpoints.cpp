#include "API/QVEndpoints.h"

namespace quorvane {
namespace {

const std::string& choose(const QVEndpoint& endpoint, Environment environment) {
    switch (environment) {
        case Environment::PRODUCTION:
            return endpoint.productionEndpoint;
        case Environment::DEVELOPMENT:
            return endpoint.developmentEndpoint;
        case Environment::LOCAL:
            break;
    }
    return endpoint.localEndpoint;
}

} // namespace

QVEndpoints::QVEndpoints(Environment theEnvironment)
    : api{"https://" QUORVANE_API_HOST "/v2-dev", "http://localhost:3000", "https://" QUORVANE_API_HOST "/v2"},
      auth{"https://" QUORVANE_AUTH_DEVELOPMENT_HOST, "http://localhost:4001",
           "https://" QUORVANE_AUTH_PRODUCTION_HOST},
      environment(theEnvironment) {}

const std::string& QVEndpoints::apiEndpoint() const {
    return choose(api, environment);
}

const std::string& QVEndpoints::authEndpoint() const {
    return choose(auth, environment);
}

} // namespace quorvane
