#include <gtest/gtest.h>

#include "API/QVEndpoints.h"
#include "API/QuorvaneAPI.h"

namespace quorvane {
namespace {

TEST(QVEndpoints, EnvironmentsAreNumberedFromLocalToProduction) {
    EXPECT_EQ(static_cast<int>(QuorvaneAPI::Environment::LOCAL), 0);
    EXPECT_EQ(static_cast<int>(QuorvaneAPI::Environment::DEVELOPMENT), 1);
    EXPECT_EQ(static_cast<int>(QuorvaneAPI::Environment::PRODUCTION), 2);
    EXPECT_FALSE(json::fromRawValue<Environment>(3));
}

TEST(QVEndpoints, LocalServicesStandOnTwoPortsOfThisMachine) {
    const QVEndpoints endpoints(Environment::LOCAL);

    EXPECT_EQ(endpoints.environment, Environment::LOCAL);
    EXPECT_EQ(endpoints.apiEndpoint(), "http://localhost:3000");
    EXPECT_EQ(endpoints.authEndpoint(), "http://localhost:4001");
}

TEST(QVEndpoints, TheDataServicesOfDevelopmentAndProductionShareAHostAndDifferInThePath) {
    const std::string development = QVEndpoints(Environment::DEVELOPMENT).apiEndpoint();
    const std::string production = QVEndpoints(Environment::PRODUCTION).apiEndpoint();

    EXPECT_TRUE(development.starts_with("https://"));
    EXPECT_TRUE(production.starts_with("https://"));
    EXPECT_TRUE(production.ends_with("/v2"));
    EXPECT_EQ(development, production + "-dev");
}

TEST(QVEndpoints, TheIdentityServicesOfDevelopmentAndProductionAreTwoHostsWithoutAPath) {
    const std::string development = QVEndpoints(Environment::DEVELOPMENT).authEndpoint();
    const std::string production = QVEndpoints(Environment::PRODUCTION).authEndpoint();

    EXPECT_NE(development, production);
    for (const std::string& endpoint : {development, production}) {
        EXPECT_TRUE(endpoint.starts_with("https://"));
        EXPECT_EQ(endpoint.find('/', std::string("https://").size()), std::string::npos);
    }
}

TEST(QVEndpoints, EveryEndpointParses) {
    for (const Environment environment : {Environment::LOCAL, Environment::DEVELOPMENT, Environment::PRODUCTION}) {
        EXPECT_TRUE(URL::parse(QVEndpoints(environment).apiEndpoint()));
        EXPECT_TRUE(URL::parse(QVEndpoints(environment).authEndpoint()));
    }
}

TEST(QVEndpoints, TheEnvironmentChoosesAmongTheTextsThatAreSet) {
    QVEndpoints endpoints(Environment::LOCAL);
    endpoints.api = {"http://development", "http://local", "http://production"};
    endpoints.auth = {"http://auth-development", "http://auth-local", "http://auth-production"};

    EXPECT_EQ(endpoints.apiEndpoint(), "http://local");
    endpoints.environment = Environment::DEVELOPMENT;
    EXPECT_EQ(endpoints.apiEndpoint(), "http://development");
    EXPECT_EQ(endpoints.authEndpoint(), "http://auth-development");
    endpoints.environment = Environment::PRODUCTION;
    EXPECT_EQ(endpoints.apiEndpoint(), "http://production");
    EXPECT_EQ(endpoints.authEndpoint(), "http://auth-production");
}

} // namespace
} // namespace quorvane
