#include <gmock/gmock.h>

#include "API/QVConfigService.h"
#include "Core/QVSettings.h"
#include "support/APITest.h"

namespace quorvane {
namespace {

using ::testing::ElementsAre;
using ::testing::IsEmpty;

class QVConfigServiceTest : public APITest {
protected:
    QVConfigServiceTest() {
        store("quorvane_device_id", "device");
        store("quorvane_install_id", "install");
        storeTokens(3600);
        setLogLevel(QVLogLevel::NONE);
    }

    void retrieve() {
        QVConfigService::shared().retrieve();
        phone->runUntilIdle();
    }
};

TEST_F(QVConfigServiceTest, TheEndpointIsAGetWithThreeIdentifiers) {
    const GetConfigEndpoint endpoint("d", "i", "u");

    EXPECT_EQ(endpoint.method, RequestMethod::GET);
    EXPECT_EQ(endpoint.path, "/config");
    EXPECT_EQ(endpoint.format, ResponseFormat::JSON);
    EXPECT_EQ(endpoint.body, "");
    const std::map<std::string, ParameterValue> expected{{"deviceId", "d"}, {"installId", "i"}, {"userId", "u"}};
    EXPECT_EQ(endpoint.parameters, expected);
}

TEST_F(QVConfigServiceTest, TheConfigurationThatArrivesIsStored) {
    transport().answer("GET", "/config", Answer::json(R"({"apiVersion":"2.4"})"));

    retrieve();

    ASSERT_EQ(transport().requests().size(), 1U);
    EXPECT_EQ(transport().requests()[0].request.url,
              "http://localhost:3000/config?deviceId=device&installId=install&userId=rider");
    EXPECT_EQ(stored("quorvane_config"), R"({"apiVersion":"2.4"})");
}

TEST_F(QVConfigServiceTest, NothingIsSentWithoutADeviceId) {
    preferences().remove("quorvane_device_id");
    preferences().remove("quorvane_install_id");

    retrieve();

    EXPECT_THAT(requestLines(), IsEmpty());
    EXPECT_EQ(stored("quorvane_install_id"), std::nullopt);
}

TEST_F(QVConfigServiceTest, NothingIsSentWithoutAUserId) {
    preferences().remove("quorvane_user_id");

    retrieve();

    EXPECT_THAT(requestLines(), IsEmpty());
}

TEST_F(QVConfigServiceTest, NothingIsSentWithAnEmptyInstallId) {
    store("quorvane_install_id", "");

    retrieve();

    EXPECT_THAT(requestLines(), IsEmpty());
}

TEST_F(QVConfigServiceTest, AnInstallIdIsMadeWhenThereIsNone) {
    preferences().remove("quorvane_install_id");
    transport().answer("GET", "/config", Answer::json("{}"));

    retrieve();

    ASSERT_TRUE(stored("quorvane_install_id"));
    EXPECT_EQ(transport().requests().at(0).query.at("installId"), stored("quorvane_install_id"));
}

TEST_F(QVConfigServiceTest, EmptyIdentifiersAreIdentifiers) {
    store("quorvane_device_id", "");
    store("quorvane_user_id", "");
    transport().answer("GET", "/config", Answer::json("{}"));

    retrieve();

    EXPECT_EQ(transport().requests().at(0).request.url,
              "http://localhost:3000/config?deviceId=&installId=install&userId=");
}

TEST_F(QVConfigServiceTest, EveryFailureIsSilentAndLeavesWhatWasStored) {
    const auto delegate = std::make_shared<quorvane::testing::RecordingDelegate>();
    QVConfigService::shared().delegate = delegate;
    QVSettings::setConfig(QVConfig{"1"});
    for (const Answer& answer :
         {Answer::with(500, R"({"apiVersion":"2"})"), Answer::with(404), Answer::with(200), Answer::json("{"),
          Answer::json("[]"), Answer::json(R"({"apiVersion":2})"), Answer::failure(Transport::connection)}) {
        transport().answer("GET", "/config", answer);

        retrieve();

        EXPECT_EQ(stored("quorvane_config"), R"({"apiVersion":"1"})");
    }
    phone->advance(std::chrono::hours(1));
    EXPECT_EQ(transport().requests().size(), 7U);
    EXPECT_TRUE(delegate->calls().empty());
}

TEST_F(QVConfigServiceTest, AFailureOfTheNetworkIsNotLogged) {
    setLogLevel(QVLogLevel::DEBUG);
    transport().answer("GET", "/config", Answer::failure(Transport::connection));

    retrieve();

    EXPECT_THAT(messages(), IsEmpty());
}

TEST_F(QVConfigServiceTest, ItSignsInFirstWhenThatIsNeeded) {
    auth().logout();
    answerSignIn();
    transport().answer("GET", "/config", Answer::json("{}"));

    retrieve();

    EXPECT_THAT(requestLines(), ElementsAre("GET /authorize", "POST /token", "GET /config"));
    EXPECT_EQ(stored("quorvane_config"), "{}");
}

TEST_F(QVConfigServiceTest, NothingHappensWithoutAKey) {
    preferences().remove("quorvane_access_key");

    retrieve();

    EXPECT_THAT(requestLines(), IsEmpty());
    EXPECT_EQ(stored("quorvane_config"), std::nullopt);
}

} // namespace
} // namespace quorvane
