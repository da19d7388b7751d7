#include <gmock/gmock.h>

#include "Core/QVSettings.h"
#include "JSON/JSON.h"
#include "Models/QVConfig.h"
#include "Models/QuorvaneTrackingOptions.h"
#include "support/SimulatedTest.h"

namespace quorvane {
namespace {

using ::testing::ElementsAre;
using ::testing::IsEmpty;
using ::testing::MatchesRegex;
using ::testing::StartsWith;

class QVSettingsTest : public SimulatedTest {
protected:
    [[nodiscard]] std::optional<std::string> text(std::string_view key) { return preferences().string(key); }
};

TEST_F(QVSettingsTest, TheLogLevelIsNoneWhenNothingIsStored) {
    EXPECT_EQ(QVSettings::getLogLevel(), QVLogLevel::NONE);
}

TEST_F(QVSettingsTest, EachStoredLevelIsThatLevel) {
    for (int level = 0; level <= 4; ++level) {
        store("quorvane_log_level", level);
        EXPECT_EQ(QVSettings::getLogLevel(), static_cast<QVLogLevel>(level));
    }
}

TEST_F(QVSettingsTest, AStoredIntegerThatIsNoLevelReadsAsNone) {
    for (const std::int64_t level : {std::int64_t{7}, std::int64_t{5}, std::int64_t{-1}, std::int64_t{1} << 32}) {
        store("quorvane_log_level", level);
        EXPECT_EQ(QVSettings::getLogLevel(), QVLogLevel::NONE) << level;
    }
}

TEST_F(QVSettingsTest, AStoredTextIsNoLevel) {
    store("quorvane_log_level", "4");

    EXPECT_EQ(QVSettings::getLogLevel(), QVLogLevel::NONE);
}

TEST_F(QVSettingsTest, TrackingOptionsThatWereNeverStoredAreTheEfficientPresetItself) {
    EXPECT_EQ(QVSettings::getTrackingOptions(), QuorvaneTrackingOptions::EFFICIENT());
    EXPECT_EQ(QVSettings::getTrackingOptions(), QVSettings::getTrackingOptions());
}

TEST_F(QVSettingsTest, AChangeToTheFallbackOptionsIsSeenByTheNextReader) {
    QVSettings::getTrackingOptions()->stopDistance = 123;

    EXPECT_EQ(QVSettings::getTrackingOptions()->stopDistance, 123);
    EXPECT_EQ(QuorvaneTrackingOptions::EFFICIENT()->stopDistance, 123);
}

TEST_F(QVSettingsTest, CorruptTrackingOptionsAreTheEfficientPresetWithoutALogLine) {
    setLogLevel(QVLogLevel::DEBUG);
    for (const char* const corrupt : {"{", "", "[]", R"({"STOP_DISTANCE":"far"})", R"({"SYNC":"never ever"})"}) {
        store("quorvane_tracking_options", corrupt);
        EXPECT_EQ(QVSettings::getTrackingOptions(), QuorvaneTrackingOptions::EFFICIENT()) << corrupt;
    }
    EXPECT_THAT(messages(), IsEmpty());
}

TEST_F(QVSettingsTest, StoredTrackingOptionsReadBackAsANewObject) {
    QuorvaneTrackingOptions options;
    options.stopDistance = 70;
    options.useVisits = true;
    options.sync = QuorvaneTrackingOptions::Sync::ALL;

    QVSettings::setTrackingOptions(options);

    EXPECT_EQ(*QVSettings::getTrackingOptions(), options);
    EXPECT_NE(QVSettings::getTrackingOptions(), QVSettings::getTrackingOptions());
}

TEST_F(QVSettingsTest, TrackingOptionsAreStoredAsJSONText) {
    QVSettings::setTrackingOptions(*QuorvaneTrackingOptions::CONTINUOUS());

    const auto stored = text("quorvane_tracking_options");
    ASSERT_TRUE(stored);
    EXPECT_EQ(json::decode<QuorvaneTrackingOptions>(*stored), *QuorvaneTrackingOptions::CONTINUOUS());
}

TEST_F(QVSettingsTest, TheConfigurationIsStoredAsJSONText) {
    QVSettings::setConfig(QVConfig{"2.1"});

    EXPECT_EQ(text("quorvane_config"), R"({"apiVersion":"2.1"})");
    ASSERT_TRUE(QVSettings::getConfig());
    EXPECT_EQ(QVSettings::getConfig()->apiVersion, "2.1");
}

TEST_F(QVSettingsTest, AConfigurationWithoutAVersionIsAnEmptyObject) {
    QVSettings::setConfig(QVConfig{});

    EXPECT_EQ(text("quorvane_config"), "{}");
}

TEST_F(QVSettingsTest, AConfigurationThatCannotBeEncodedIsLoggedAndLeavesWhatWasStored) {
    setLogLevel(QVLogLevel::ERROR);
    QVSettings::setConfig(QVConfig{"1"});

    QVSettings::setConfig(QVConfig{"\xFF"});

    EXPECT_EQ(text("quorvane_config"), R"({"apiVersion":"1"})");
    EXPECT_THAT(messages(), ElementsAre(StartsWith("unexpected error setting config: apiVersion: ")));
}

TEST_F(QVSettingsTest, ThereIsNoConfigurationBeforeOneIsStoredOrWhenItIsCorrupt) {
    EXPECT_FALSE(QVSettings::getConfig());

    store("quorvane_config", "{\"apiVersion\":2}");
    EXPECT_FALSE(QVSettings::getConfig());
}

TEST_F(QVSettingsTest, TheFirstReaderOfTheInstallIdMakesIt) {
    const auto made = QVSettings::getInstallId();

    ASSERT_TRUE(made);
    EXPECT_THAT(*made, MatchesRegex("[0-9A-F]{8}-[0-9A-F]{4}-[0-9A-F]{4}-[0-9A-F]{4}-[0-9A-F]{12}"));
    EXPECT_EQ(text("quorvane_install_id"), made);
    EXPECT_EQ(QVSettings::getInstallId(), made);
}

TEST_F(QVSettingsTest, TheInstallIdOutlastsALaunch) {
    const auto made = QVSettings::getInstallId();

    phone.relaunch();

    EXPECT_EQ(QVSettings::getInstallId(), made);
}

TEST_F(QVSettingsTest, AnInstallIdThatIsStoredIsTakenAsItIs) {
    store("quorvane_install_id", "");

    EXPECT_EQ(QVSettings::getInstallId(), "");
}

} // namespace
} // namespace quorvane
