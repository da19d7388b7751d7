#include <fstream>
#include <regex>

#include "Platform/Native/NativePlatform.h"
#include "Platform/PreferencesStore.h"
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

/// A value of the kind that a row of the page names.
void storeOne(platform::PreferencesStore& store, const std::string& key, const std::string& kind) {
    if (kind == "integer") {
        store.setInteger(key, 7);
    } else if (kind == "bool") {
        store.setBoolean(key, false);
    } else if (kind == "date") {
        store.setDate(key, platform::Date(std::chrono::seconds(1'700'000'000)));
    } else if (kind == "dictionary") {
        store.setDictionary(key, {{"latitude", 46.05}});
    } else {
        EXPECT_TRUE(kind == "text" || kind == "JSON text") << key << " is " << kind;
        store.setString(key, "{}");
    }
}

TEST_F(DeviceTest, EverythingThatThePageOnPrivacyListsIsShown) {
    std::ifstream page(QUORVANE_PRIVACY_PAGE);
    std::vector<std::string> keys;
    {
        const auto platform = platform::NativePlatform::make({.home = home});
        const std::regex row(R"(\| `(q(?:uorvane|ourvane)_[a-z_]+)` \| ([A-Za-z ]+) \|.*)");
        std::smatch found;
        for (std::string line; std::getline(page, line);) {
            if (std::regex_match(line, found, row)) {
                keys.push_back(found[1]);
                storeOne(platform->preferences(), keys.back(), found[2]);
            }
        }
    }
    ASSERT_GT(keys.size(), 20U);

    const AnyCodable::Dictionary stored = objectIn(run({"device", "--json"}).document(), "stored");
    const Ended ended = run({"device"});

    for (const std::string& key : keys) {
        EXPECT_EQ(stored.count(key), 1U) << key;
        EXPECT_NE(ended.output.find(key), std::string::npos) << key;
    }
    EXPECT_EQ(textIn(stored, "quorvane_last_moved_at"), "2023-11-14T22:13:20Z");
    EXPECT_EQ(objectIn(stored, "quorvane_last_moved_location").count("latitude"), 1U);
}

} // namespace
} // namespace quorvane::tool
