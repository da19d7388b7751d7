#include <gmock/gmock.h>

#include "Core/QVSettings.h"
#include "Facade/Quorvane.h"
#include "Tracking/QVLocationManager.h"
#include "support/IdentityAnswers.h"
#include "support/SimulatedTest.h"

namespace quorvane {
namespace {

using ::testing::ElementsAre;
using ::testing::IsEmpty;

class InitializeTest : public SimulatedTest {
protected:
    InitializeTest() { answerSignIn(transport()); }

    [[nodiscard]] std::optional<std::string> stored(std::string_view key) { return preferences().string(key); }

    void holdSignIn() { transport().holdAnswers(true); }

    /// Whether the location manager's coarse updates run, which they do while there is an update timer.
    [[nodiscard]] bool keepsItselfRunning() {
        static_cast<void>(QVLocationManager::shared());
        return phone->locationManagers().managers().at(1).updates;
    }

    /// The environment that @p key chooses.
    [[nodiscard]] QuorvaneAPI::Environment environmentOf(const std::string& key) {
        Quorvane::initialize(key);
        return Quorvane::environment().value();
    }
};

TEST_F(InitializeTest, StoresTheKeyAndTheAccessKeyAndTheDevice) {
    Quorvane::initialize("UVZGQUtF-access");

    EXPECT_EQ(stored("quorvane_publishable_key"), "UVZGQUtF-access");
    EXPECT_EQ(stored("quorvane_access_key"), "access");
    EXPECT_EQ(stored("quorvane_device_id"), "5E1F0E57-0000-4000-8000-000000000001");
    EXPECT_EQ(stored("quorvane_user_id"), "5E1F0E57-0000-4000-8000-000000000001");
}

TEST_F(InitializeTest, AKeyOfNineCharactersLeavesAnEmptyAccessKeyThatCounts) {
    Quorvane::initialize("123456789");

    EXPECT_EQ(stored("quorvane_access_key"), "");
    EXPECT_TRUE(Quorvane::getUserId());
}

TEST_F(InitializeTest, AShorterKeyLeavesAnEmptyAccessKeyToo) {
    Quorvane::initialize("1234");
    EXPECT_EQ(stored("quorvane_access_key"), "");

    Quorvane::initialize("");
    EXPECT_EQ(stored("quorvane_access_key"), "");
    EXPECT_EQ(stored("quorvane_publishable_key"), "");
}

TEST_F(InitializeTest, NineCharactersAreCountedAndNotNineBytes) {
    Quorvane::initialize("\xC5\xBE\xC5\xBE\xC5\xBE\xC5\xBE\xC5\xBE\xC5\xBE\xC5\xBE\xC5\xBE\xC5\xBE\xC5\xA1key");

    EXPECT_EQ(stored("quorvane_access_key"), "\xC5\xA1key");
}

TEST_F(InitializeTest, TheFirstNineCharactersChooseTheEnvironment) {
    EXPECT_EQ(environmentOf("UVZSRUFM-key"), QuorvaneAPI::Environment::PRODUCTION);
    EXPECT_EQ(environmentOf("UVZGQUtF-key"), QuorvaneAPI::Environment::DEVELOPMENT);
    EXPECT_EQ(environmentOf("UVZMT0NM-key"), QuorvaneAPI::Environment::LOCAL);
    EXPECT_EQ(environmentOf("UVZSRUFMkey"), QuorvaneAPI::Environment::LOCAL);
    EXPECT_EQ(environmentOf("UVZSRUFM"), QuorvaneAPI::Environment::LOCAL);
    EXPECT_EQ(environmentOf("UVZGQUtF"), QuorvaneAPI::Environment::LOCAL);
    EXPECT_EQ(environmentOf("uvzsrufm-key"), QuorvaneAPI::Environment::LOCAL);
    EXPECT_EQ(environmentOf(" UVZSRUFM-key"), QuorvaneAPI::Environment::LOCAL);
    EXPECT_EQ(environmentOf(""), QuorvaneAPI::Environment::LOCAL);
    EXPECT_EQ(environmentOf("UVZSRUFM-"), QuorvaneAPI::Environment::PRODUCTION);
}

TEST_F(InitializeTest, ThereAreNoEndpointsAndNoEnvironmentBefore) {
    EXPECT_FALSE(Quorvane::endpoints());
    EXPECT_FALSE(Quorvane::environment());
}

TEST_F(InitializeTest, BuildsTheEndpointsAndTheRouters) {
    Quorvane::initialize("UVZMT0NM-key");

    ASSERT_TRUE(Quorvane::endpoints());
    EXPECT_EQ(Quorvane::endpoints()->environment, QuorvaneAPI::Environment::LOCAL);
    EXPECT_EQ(QuorvaneAPI::shared().api->baseURL.text(), "http://localhost:3000");
    EXPECT_EQ(QuorvaneAPI::shared().auth->baseURL.text(), "http://localhost:4001");
}

TEST_F(InitializeTest, SignsTheUserInUnderTheDevice) {
    Quorvane::initialize("UVZMT0NM-key");
    EXPECT_FALSE(Quorvane::isAuthenticated());
    phone->runUntilIdle();

    EXPECT_THAT(requestLines(), ElementsAre("GET /authorize", "POST /token"));
    EXPECT_EQ(transport().requests()[0].query.at("client_id"), "key");
    EXPECT_EQ(transport().requests()[0].query.at("user_id"), "5E1F0E57-0000-4000-8000-000000000001");
    EXPECT_TRUE(Quorvane::isAuthenticated());
}

TEST_F(InitializeTest, ADeviceWithoutAnIdentifierIsTheEmptyUser) {
    phone->device().setIdentifierForVendor(std::nullopt);

    Quorvane::initialize("UVZMT0NM-key");

    EXPECT_EQ(stored("quorvane_device_id"), "");
    EXPECT_EQ(Quorvane::getUserId(), "");
}

TEST_F(InitializeTest, OnAFirstRunTheConfigurationIsNotFetched) {
    Quorvane::initialize("UVZMT0NM-key");
    phone->runUntilIdle();

    EXPECT_THAT(transport().requests("GET", "/config"), IsEmpty());
}

TEST_F(InitializeTest, FromTheSecondRunOnTheConfigurationIsFetched) {
    Quorvane::initialize("UVZMT0NM-key");
    phone->runUntilIdle();
    phone.relaunch();
    transport().answer("GET", "/config", Answer::json(R"({"apiVersion":"2.4"})"));

    Quorvane::initialize("UVZMT0NM-key");
    phone->runUntilIdle();

    EXPECT_THAT(requestLines(), ElementsAre("GET /config"));
    EXPECT_EQ(stored("quorvane_config"), R"({"apiVersion":"2.4"})");
}

TEST_F(InitializeTest, ResumesTheTrackingOfAnEarlierRun) {
    QVSettings::setTrackingOptions(*QuorvaneTrackingOptions::CONTINUOUS());
    Quorvane::initialize("UVZMT0NM-key");
    phone->runUntilIdle();
    phone.relaunch();
    QVLocationManager::shared().verbose = true;
    transport().answer("GET", "/config", Answer::json("{}"));
    EXPECT_FALSE(keepsItselfRunning());

    Quorvane::initialize("UVZMT0NM-key");

    EXPECT_FALSE(keepsItselfRunning());
    phone->runUntilIdle();
    EXPECT_TRUE(keepsItselfRunning());
    EXPECT_FALSE(QVLocationManager::shared().verbose);
}

TEST_F(InitializeTest, DoesNotTrackWhereNobodyTracked) {
    QVSettings::setTrackingOptions(*QuorvaneTrackingOptions::CONTINUOUS());
    holdSignIn();

    Quorvane::initialize("UVZMT0NM-key");
    phone->runUntilIdle();

    EXPECT_FALSE(keepsItselfRunning());
}

TEST_F(InitializeTest, LogsThatItBegins) {
    setLogLevel(QVLogLevel::DEBUG);

    Quorvane::initialize("UVZMT0NM-key");

    EXPECT_THAT(messages(), ElementsAre("initializing", "QuorvaneSDK -> authenticated"));
}

TEST_F(InitializeTest, MayBeCalledAgainWithAnotherKey) {
    Quorvane::initialize("UVZMT0NM-one");
    phone->runUntilIdle();
    transport().answer("GET", "/config", Answer::json("{}"));

    Quorvane::initialize("UVZSRUFM-two");
    phone->runUntilIdle();

    EXPECT_EQ(stored("quorvane_publishable_key"), "UVZSRUFM-two");
    EXPECT_EQ(stored("quorvane_access_key"), "two");
    EXPECT_EQ(Quorvane::environment(), QuorvaneAPI::Environment::PRODUCTION);
    EXPECT_EQ(QuorvaneAPI::shared().api->baseURL.text(), Quorvane::endpoints()->apiEndpoint());
    EXPECT_EQ(transport().requests("GET", "/config").size(), 1U);
}

TEST_F(InitializeTest, AKeyOfAnEarlierRunStillCountsBeforeTheNextInitialize) {
    EXPECT_FALSE(Quorvane::getUserId());
    Quorvane::initialize("UVZMT0NM-key");
    phone->runUntilIdle();

    phone.relaunch();

    EXPECT_EQ(Quorvane::getUserId(), "5E1F0E57-0000-4000-8000-000000000001");
    EXPECT_TRUE(Quorvane::isAuthenticated());
    EXPECT_FALSE(Quorvane::endpoints());
}

} // namespace
} // namespace quorvane
