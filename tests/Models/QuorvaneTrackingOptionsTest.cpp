#include <chrono>
#include <sstream>
#include <vector>

#include <gtest/gtest.h>

#include "Models/ModelTesting.h"
#include "Models/QuorvaneTrackingOptions.h"
#include "testing/InstalledPlatform.h"

namespace quorvane {
namespace {

using namespace std::chrono_literals;
using Options = QuorvaneTrackingOptions;

// 2024-05-01 12:00:00 UTC, 736257600 seconds after the beginning of 2001.
constexpr json::Date noon = std::chrono::sys_days{2024y / 5 / 1} + 12h;

const char* const everyKey =
    R"({"DESIRED_ACCURACY":3,"DESIRED_MOVING_UPDATE_INTERVAL":11,"DESIRED_STOPPED_UPDATE_INTERVAL":12,)"
    R"("DESIRED_SYNC_INTERVAL":13,"MOVING_GEOFENCE_RADIUS":14,"REPLAY":1,"SHOW_BLUE_BAR":true,)"
    R"("START_TRACKING_AFTER":736257600.5,"STOP_DISTANCE":15,"STOP_DURATION":16,"STOPPED_GEOFENCE_RADIUS":17,)"
    R"("STOP_TRACKING_AFTER":736257660.25,"SYNC":2,"USE_MOVING_GEOFENCE":true,)"
    R"("USE_SIGNIFICANT_LOCATION_CHANGES":true,"USE_STOPPED_GEOFENCE":true,"USE_VISITS":true})";

std::vector<std::string> linesOf(const std::string& text) {
    std::istringstream stream(text);
    std::vector<std::string> lines;
    for (std::string line; std::getline(stream, line);) {
        lines.push_back(line);
    }
    return lines;
}

TEST(QuorvaneTrackingOptions, EveryKeyIsReadAndWritten) {
    const auto options = json::decode<Options>(everyKey);

    EXPECT_EQ(options.desiredAccuracy, Options::DesiredAccuracy::HIGH);
    EXPECT_EQ(options.desiredMovingUpdateInterval, 11);
    EXPECT_EQ(options.desiredStoppedUpdateInterval, 12);
    EXPECT_EQ(options.desiredSyncInterval, 13);
    EXPECT_EQ(options.movingGeofenceRadius, 14);
    EXPECT_EQ(options.replay, Options::Replay::STOPS);
    EXPECT_TRUE(options.showBlueBar);
    EXPECT_EQ(options.startTrackingAfter, noon + 500ms);
    EXPECT_EQ(options.stopDistance, 15);
    EXPECT_EQ(options.stopDuration, 16);
    EXPECT_EQ(options.stoppedGeofenceRadius, 17);
    EXPECT_EQ(options.stopTrackingAfter, noon + 60s + 250ms);
    EXPECT_EQ(options.sync, Options::Sync::ALL);
    EXPECT_TRUE(options.useMovingGeofence);
    EXPECT_TRUE(options.useSignificantLocationChanges);
    EXPECT_TRUE(options.useStoppedGeofence);
    EXPECT_TRUE(options.useVisits);
    EXPECT_EQ(json::encode(options), everyKey);
}

TEST(QuorvaneTrackingOptions, NewOptionsHaveTheirEnumerationsAtNone) {
    const Options options;

    EXPECT_EQ(options.desiredAccuracy, Options::DesiredAccuracy::NONE);
    EXPECT_EQ(options.replay, Options::Replay::NONE);
    EXPECT_EQ(options.sync, Options::Sync::NONE);
    EXPECT_EQ(json::encode(options),
              R"({"DESIRED_ACCURACY":0,"DESIRED_MOVING_UPDATE_INTERVAL":0,"DESIRED_STOPPED_UPDATE_INTERVAL":0,)"
              R"("DESIRED_SYNC_INTERVAL":0,"MOVING_GEOFENCE_RADIUS":0,"REPLAY":0,"SHOW_BLUE_BAR":false,)"
              R"("STOP_DISTANCE":0,"STOP_DURATION":0,"STOPPED_GEOFENCE_RADIUS":0,"SYNC":0,)"
              R"("USE_MOVING_GEOFENCE":false,"USE_SIGNIFICANT_LOCATION_CHANGES":false,)"
              R"("USE_STOPPED_GEOFENCE":false,"USE_VISITS":false})");
}

TEST(QuorvaneTrackingOptions, OptionsDecodedFromAnEmptyObjectHaveNoEnumerations) {
    Options expected;
    expected.desiredAccuracy.reset();
    expected.replay.reset();
    expected.sync.reset();

    const auto options = json::decode<Options>("{}");

    EXPECT_EQ(options, expected);
    EXPECT_NE(options, Options());
}

TEST(QuorvaneTrackingOptions, ADateThatIsNoneStaysAbsentAndFailsNothing) {
    const auto options =
        json::decode<Options>(R"({"START_TRACKING_AFTER":"soon","STOP_TRACKING_AFTER":{},"STOP_DISTANCE":70})");

    EXPECT_FALSE(options.startTrackingAfter);
    EXPECT_FALSE(options.stopTrackingAfter);
    EXPECT_EQ(options.stopDistance, 70);
}

TEST(QuorvaneTrackingOptions, AnEnumerationOutOfItsRangeFailsThem) {
    EXPECT_EQ(failureOf<Options>(R"({"SYNC":7})"), "SYNC: expected a sync setting, found 7");
    EXPECT_EQ(failureOf<Options>(R"({"REPLAY":2})"), "REPLAY: expected a replay setting, found 2");
    EXPECT_EQ(failureOf<Options>(R"({"DESIRED_ACCURACY":-1})"),
              "DESIRED_ACCURACY: expected a desired accuracy, found -1");
}

TEST(QuorvaneTrackingOptions, ATextForAnIntegerFailsThem) {
    EXPECT_EQ(failureOf<Options>(R"({"STOP_DURATION":"140"})"), "STOP_DURATION: expected an integer, found \"140\"");
}

TEST(QuorvaneTrackingOptions, AnIntegerOutsideAnEnumerationIsNoCase) {
    EXPECT_EQ(json::fromRawValue<QVDesiredAccuracy>(3), QVDesiredAccuracy::HIGH);
    EXPECT_FALSE(json::fromRawValue<QVDesiredAccuracy>(4));
    EXPECT_FALSE(json::fromRawValue<QVReplay>(2));
    EXPECT_FALSE(json::fromRawValue<QVSync>(3));
}

TEST(QuorvaneTrackingOptions, TheDescriptionHasOneLineAFieldInTheirOrder) {
    EXPECT_EQ(json::decode<Options>(everyKey).description(),
              "QuorvaneTrackingOptions:\n"
              "\t\t\tdesiredAccuracy = Optional(HIGH)\n"
              "\t\t\tdesiredMovingUpdateInterval = 11\n"
              "\t\t\tdesiredStoppedUpdateInterval = 12\n"
              "\t\t\tdesiredSyncInterval = 13\n"
              "\t\t\tmovingGeofenceRadius = 14\n"
              "\t\t\treplay = Optional(STOPS)\n"
              "\t\t\tshowBlueBar = true\n"
              "\t\t\tstartTrackingAfter = Optional(2024-05-01 12:00:00 +0000)\n"
              "\t\t\tstopDistance = 15\n"
              "\t\t\tstopDuration = 16\n"
              "\t\t\tstoppedGeofenceRadius = 17\n"
              "\t\t\tstopTrackingAfter = Optional(2024-05-01 12:01:00 +0000)\n"
              "\t\t\tsync = Optional(ALL)\n"
              "\t\t\tuseMovingGeofence = true\n"
              "\t\t\tuseSignificantLocationChanges = true\n"
              "\t\t\tuseStoppedGeofence = true\n"
              "\t\t\tuseVisits = true\n");
}

TEST(QuorvaneTrackingOptions, TheDescriptionPrintsWhatIsAbsentAsNil) {
    const auto lines = linesOf(json::decode<Options>("{}").description());

    ASSERT_EQ(lines.size(), 18U);
    for (const std::size_t line : {1U, 6U, 8U, 12U, 13U}) {
        EXPECT_TRUE(lines[line].ends_with(" = nil")) << lines[line];
    }
}

TEST(QuorvaneTrackingOptions, TheDescriptionOfADateBefore1970CountsDown) {
    Options options;
    options.startTrackingAfter = json::Date{-1500ms};

    EXPECT_EQ(linesOf(options.description())[8], "\t\t\tstartTrackingAfter = Optional(1969-12-31 23:59:58 +0000)");
}

/// The presets live in the world of a platform.
class TrackingPresets : public ::testing::Test {
protected:
    testing::InstalledPlatform installed;
};

TEST_F(TrackingPresets, ContinuousSendsEveryLocation) {
    Options expected;
    expected.desiredAccuracy = Options::DesiredAccuracy::HIGH;
    expected.desiredMovingUpdateInterval = 30;
    expected.desiredStoppedUpdateInterval = 30;
    expected.desiredSyncInterval = 20;
    expected.showBlueBar = true;
    expected.stopDistance = 70;
    expected.stopDuration = 140;
    expected.sync = Options::Sync::ALL;

    EXPECT_EQ(*Options::CONTINUOUS(), expected);
}

TEST_F(TrackingPresets, ResponsiveSendsStopsAndExitsAndWatchesTheStop) {
    Options expected;
    expected.desiredAccuracy = Options::DesiredAccuracy::MEDIUM;
    expected.desiredMovingUpdateInterval = 150;
    expected.desiredSyncInterval = 140;
    expected.replay = Options::Replay::STOPS;
    expected.stopDistance = 70;
    expected.stopDuration = 140;
    expected.stoppedGeofenceRadius = 200;
    expected.sync = Options::Sync::STOPS_AND_EXITS;
    expected.useSignificantLocationChanges = true;
    expected.useStoppedGeofence = true;
    expected.useVisits = true;

    EXPECT_EQ(*Options::RESPONSIVE(), expected);
}

TEST_F(TrackingPresets, EfficientRestsOnVisitsOnly) {
    Options expected;
    expected.desiredAccuracy = Options::DesiredAccuracy::MEDIUM;
    expected.replay = Options::Replay::STOPS;
    expected.sync = Options::Sync::STOPS_AND_EXITS;
    expected.useVisits = true;

    EXPECT_EQ(*Options::EFFICIENT(), expected);
}

TEST_F(TrackingPresets, TheDescriptionOfContinuousHasAHeadingAndSeventeenLines) {
    const auto lines = linesOf(Options::CONTINUOUS()->description());

    ASSERT_EQ(lines.size(), 18U);
    EXPECT_EQ(lines[0], "QuorvaneTrackingOptions:");
    EXPECT_EQ(lines[7], "\t\t\tshowBlueBar = true");
}

TEST_F(TrackingPresets, EachReadsBackEqualFromItsJSON) {
    for (const auto& preset : {Options::CONTINUOUS(), Options::RESPONSIVE(), Options::EFFICIENT()}) {
        EXPECT_EQ(json::decode<Options>(json::encode(*preset)), *preset);
    }
}

TEST_F(TrackingPresets, AChangeToAPresetIsAChangeForAllItsLaterUsers) {
    Options::CONTINUOUS()->stopDistance = 1;

    EXPECT_EQ(Options::CONTINUOUS()->stopDistance, 1);
    EXPECT_EQ(Options::RESPONSIVE()->stopDistance, 70);
}

TEST_F(TrackingPresets, AChangeToAPresetEndsWithThePlatform) {
    Options::EFFICIENT()->useVisits = false;

    installed.relaunch();

    EXPECT_TRUE(Options::EFFICIENT()->useVisits);
}

} // namespace
} // namespace quorvane
