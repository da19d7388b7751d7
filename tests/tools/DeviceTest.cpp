#include "tools/ProgramTest.h"

namespace quorvane::tool {
namespace {

class DeviceTest : public ProgramTest {};

TEST_F(DeviceTest, ADeviceThatNeverSignedInHasStoredNothing) {
    const Ended ended = run({"device"});

    EXPECT_EQ(ended.exitStatus, 0);
    EXPECT_EQ(ended.errors, "");
    EXPECT_NE(ended.output.find("nothing yet"), std::string::npos) << ended.output;
    EXPECT_NE(ended.output.find(home.string()), std::string::npos) << ended.output;
}

TEST_F(DeviceTest, TheIdentifierStaysTheSameInOneHome) {
    const std::string identifier = textIn(run({"device", "--json"}).document(), "identifier");

    EXPECT_EQ(identifier.size(), 36U);
    EXPECT_EQ(textIn(run({"device", "--json"}).document(), "identifier"), identifier);
}

TEST_F(DeviceTest, ModelVersionAndHomeAreTold) {
    const AnyCodable::Dictionary device = run({"device", "--json"}).document();

    EXPECT_EQ(textIn(device, "status"), "SUCCESS");
    EXPECT_FALSE(textIn(device, "model").empty());
    EXPECT_FALSE(textIn(device, "systemVersion").empty());
    EXPECT_EQ(textIn(device, "home"), home.string());
}

TEST_F(DeviceTest, WhatIsStoredIsListedAndSecretsAreNotShown) {
    serve();
    ASSERT_EQ(run({"sign-in", "--key", "LOCALKEY-very-private"}).exitStatus, 0);
    ASSERT_EQ(run({"search", "places", "--near", "46.05,14.5"}).exitStatus, 0);
    const std::string authorization = service->requests().back().header("Authorization");
    ASSERT_GT(authorization.size(), 20U);

    const Ended ended = run({"device"});
    const AnyCodable::Dictionary stored = objectIn(run({"device", "--json"}).document(), "stored");

    EXPECT_EQ(ended.output.find(authorization), std::string::npos) << ended.output;
    EXPECT_EQ(ended.output.find(authorization.substr(authorization.find(' ') + 1)), std::string::npos);
    EXPECT_EQ(ended.output.find("very-private"), std::string::npos) << ended.output;
    EXPECT_EQ(textIn(stored, "quorvane_access_token"), std::to_string(authorization.size()) + " characters");
    EXPECT_EQ(textIn(stored, "quorvane_user_id"), textIn(stored, "quorvane_device_id"));
    EXPECT_EQ(stored.at("quorvane_background_tracking"), AnyCodable(true));
    EXPECT_GT(numberIn(stored, "qourvane_access_token_expiry"), 1.7e9);
}

} // namespace
} // namespace quorvane::tool
