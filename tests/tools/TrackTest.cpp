#include "tools/TrackTest.h"

#include <gmock/gmock.h>

#include "Core/PreferenceKeys.h"
#include "Platform/Native/NativePlatform.h"
#include "Platform/PreferencesStore.h"

namespace quorvane::tool {
namespace {

using ::testing::HasSubstr;
using ::testing::Not;

class EndedTrack : public TrackTest, public ::testing::WithParamInterface<int> {};

TEST_P(EndedTrack, ASignalEndsItCleanlyAndTrackingWithIt) {
    serve();
    const ReceiverOnAPort receiver;
    track({"--options", eachSecond(), "--socket", receiver.address()});
    ASSERT_TRUE(prints("  synced    46.05000, 14.50000 within 6 m\n")) << told;

    const Ended ended = end(GetParam());

    EXPECT_EQ(ended.exitStatus, 0);
    EXPECT_THAT(told, HasSubstr("  receiver  the device is at 46.05000, 14.50000\n"));
    EXPECT_THAT(told, HasSubstr("  tracking  by the each-second.json options; a signal (Ctrl+C) ends it\n"));
    EXPECT_THAT(told, HasSubstr("  location  46.05000, 14.50000 within 6 m, moving (BACKGROUND_LOCATION)\n"));
    EXPECT_TRUE(told.ends_with("  tracking  ended by a signal\n")) << told;
    EXPECT_EQ(isTracking(), false);
}

INSTANTIATE_TEST_SUITE_P(Signals, EndedTrack, ::testing::Values(SIGINT, SIGTERM, SIGHUP));

TEST_F(TrackTest, ASignalBeforeTheServiceHasAnsweredEndsItCleanlyToo) {
    serve({"/authorize:delay=60000ms"});
    const ReceiverOnAPort receiver;
    track({"--socket", receiver.address()});
    ASSERT_TRUE(prints("  receiver  the device is at "));

    EXPECT_EQ(end(SIGINT).exitStatus, 0);

    EXPECT_TRUE(told.ends_with("  tracking  ended by a signal\n")) << told;
}

TEST_F(TrackTest, ARunThatWasKilledGoesOnWithItsOptionsAndFromItsStateAndOneThatEndedDoesNot) {
    serve();
    const ReceiverOnAPort receiver;
    track({"--options", eachSecond(), "--socket", receiver.address()});
    ASSERT_TRUE(prints("  synced "));
    EXPECT_EQ(end(SIGKILL).exitStatus, -1);
    const auto movedAt = platform::NativePlatform::make({.home = home})->preferences().date(preference::lastMovedAt);
    ASSERT_TRUE(movedAt);

    track({"--socket", receiver.address()});
    ASSERT_TRUE(prints("(BACKGROUND_LOCATION)\n")) << told;
    EXPECT_THAT(told, HasSubstr("  tracking  goes on where the run before was cut off; the user last moved at "));
    EXPECT_THAT(told, HasSubstr("  tracking  by the stored options; "));
    EXPECT_EQ(end(SIGTERM).exitStatus, 0);
    EXPECT_EQ(platform::NativePlatform::make({.home = home})->preferences().date(preference::lastMovedAt), movedAt);

    track({"--socket", receiver.address()});
    ASSERT_TRUE(prints("  tracking  by the continuous options; ")) << told;
    EXPECT_THAT(told, Not(HasSubstr("goes on")));
    EXPECT_EQ(end(SIGTERM).exitStatus, 0);
}

TEST_F(TrackTest, ARunThatWasKilledWhileATokenWasRefreshedGoesOnToo) {
    serve({"/token:delay=60000ms:skip=1:count=1"}, {.accessTokenLifetime = std::chrono::seconds(2)});
    const ReceiverOnAPort receiver;
    track({"--options", eachSecond(), "--socket", receiver.address()});
    ASSERT_TRUE(prints("  tracking  by the each-second.json options; ")) << told;
    EXPECT_TRUE(becomes(false));
    EXPECT_EQ(end(SIGKILL).exitStatus, -1);
    ASSERT_EQ(isTracking(), false);

    track({"--socket", receiver.address()});

    ASSERT_TRUE(prints("  tracking  by the stored options; ")) << told;
    EXPECT_THAT(told, HasSubstr("  tracking  goes on where the run before was cut off"));
    EXPECT_EQ(end(SIGTERM).exitStatus, 0);
}

TEST_F(TrackTest, ASignalWhileATokenIsRefreshedEndsTrackingToo) {
    serve({"/token:delay=60000ms:skip=1:count=1"}, {.accessTokenLifetime = std::chrono::seconds(2)});
    const ReceiverOnAPort receiver;
    track({"--options", eachSecond(), "--socket", receiver.address()});
    ASSERT_TRUE(prints("  tracking  by the each-second.json options; ")) << told;
    ASSERT_TRUE(becomes(false));
    ASSERT_EQ(kill(running.process, SIGTERM), 0);
    ASSERT_TRUE(prints("  tracking  waits for a token that is being refreshed\n")) << told;

    service.reset();

    EXPECT_EQ(wait().exitStatus, 0);
    EXPECT_TRUE(told.ends_with("  tracking  ended by a signal\n")) << told;
    EXPECT_EQ(isTracking(), false);
}

TEST_F(TrackTest, ASignalWhileATokenIsRefreshedWaitsForTheNewOnes) {
    serve({"/token:delay=3000ms:skip=1:count=1"}, {.accessTokenLifetime = std::chrono::seconds(2)});
    const ReceiverOnAPort receiver;
    track({"--options", eachSecond(), "--socket", receiver.address()});
    ASSERT_TRUE(prints("  tracking  by the each-second.json options; ")) << told;
    const auto refreshToken = [this] {
        return platform::NativePlatform::make({.home = home})->preferences().string(preference::refreshToken);
    };
    const std::optional<std::string> earlier = refreshToken();
    ASSERT_TRUE(becomes(false));

    ASSERT_EQ(kill(running.process, SIGTERM), 0);

    EXPECT_EQ(wait().exitStatus, 0);
    EXPECT_TRUE(earlier);
    EXPECT_NE(refreshToken(), earlier);
    EXPECT_EQ(isTracking(), false);
}

TEST_F(TrackTest, ASignInAfterARunThatEndedResumesNothing) {
    serve();
    const ReceiverOnAPort receiver;
    track({"--options", eachSecond(), "--socket", receiver.address()});
    ASSERT_TRUE(prints("  tracking  by the each-second.json options; ")) << told;
    EXPECT_EQ(end(SIGTERM).exitStatus, 0);
    platform::NativePlatform::make({.home = home})->preferences().setBoolean(preference::backgroundTracking, true);

    track({"--socket", receiver.address()});

    ASSERT_TRUE(prints("  tracking  by the continuous options; ")) << told;
    EXPECT_THAT(told, Not(HasSubstr("goes on")));
    EXPECT_EQ(end(SIGTERM).exitStatus, 0);
}

TEST_F(TrackTest, ARecordingBeginsWithTrackingSoThatNoFixOfItIsMissed) {
    serve();
    // The second position is a significant change for whoever has seen the first.
    const std::string ride =
        makeFile("ride.nmea", testing::position(0, "4603.0000") + testing::position(30, "4603.6000"));
    const std::string changes = makeFile("changes.json", R"({"USE_SIGNIFICANT_LOCATION_CHANGES": true, "SYNC": 2})");

    const Ended ended = run({"track", "--nmea", ride, "--options", changes});

    EXPECT_EQ(ended.exitStatus, 0) << ended.errors;
    EXPECT_THAT(ended.output, HasSubstr("  location  46.06000, 14.50000 within 6 m")) << ended.output;
}

TEST_F(TrackTest, AStopAtAPlaceIsAnEvent) {
    serve();
    const AnyCodable::Dictionary found = run({"search", "places", "--near", "46.05,14.5", "--json"}).document();
    const AnyCodable::List places = listIn(found, "places");
    ASSERT_FALSE(places.empty());
    const AnyCodable::Dictionary place = objectIn(objectIn(places.front()), "place");
    const auto minutes = [](double degrees, int digits) {
        std::array<char, 24> text{};
        const int whole = static_cast<int>(degrees);
        std::snprintf(text.data(), text.size(), "%0*d%07.4f", digits, whole, (degrees - whole) * 60);
        return std::string(text.data());
    };
    const ReceiverOnAPort receiver(minutes(numberIn(place, "latitude"), 2), minutes(numberIn(place, "longitude"), 3));

    track({"--options", eachSecond(), "--socket", receiver.address()});

    EXPECT_TRUE(prints("  event     USER_ENTERED_PLACE  " + textIn(place, "name") + "\n")) << told;
    EXPECT_EQ(end(SIGTERM).exitStatus, 0);
}

TEST_F(TrackTest, TheEndOfARecordingEndsTheRun) {
    serve();
    const std::string ride =
        makeFile("ride.nmea", testing::position(0, "4603.0000") + testing::position(30, "4603.0100"));

    const Ended ended = run({"track", "--nmea", ride});

    EXPECT_EQ(ended.exitStatus, 0) << ended.errors;
    EXPECT_TRUE(ended.output.ends_with("  tracking  ended by the end of the recording\n")) << ended.output;
}

TEST_F(TrackTest, WithJSONTheSumOfItIsTheOneDocument) {
    serve();
    const std::string ride =
        makeFile("ride.nmea", testing::position(0, "4603.0000") + testing::position(250, "4603.0100"));

    const AnyCodable::Dictionary document =
        run({"track", "--nmea", ride, "--options", eachSecond(), "--json"}).document();

    EXPECT_EQ(textIn(document, "status"), "SUCCESS");
    EXPECT_EQ(textIn(document, "end"), "recording");
    EXPECT_EQ(textIn(document, "options"), "each-second.json");
    EXPECT_EQ(document.at("resumed"), AnyCodable(false));
    EXPECT_GE(numberIn(document, "locations"), 1);
    for (const char* const count : {"synced", "events", "errors"}) {
        EXPECT_EQ(document.count(count), 1U) << count;
    }
}

TEST_F(TrackTest, AReaderThatGoesAwayEndsIt) {
    serve();
    const ReceiverOnAPort receiver;
    track({"--options", eachSecond(), "--socket", receiver.address()});
    ASSERT_TRUE(prints("  receiver  "));

    stopReading();

    EXPECT_EQ(finish(running).exitStatus, 1);
}

TEST_F(TrackTest, WhatGivesNoLocationIsNamed) {
    serve();
    const HeldPort deaf(HeldPort::Use::deaf);
    const std::string server = "127.0.0.1:" + std::to_string(deaf.number());
    const std::string diary = makeFile("diary.txt", "a diary of a ride\n");
    const std::string missing = scratch / "none.nmea";
    const std::vector<std::pair<Arguments, std::string>> cases = {
        {{"--nmea", missing}, "the NMEA file " + missing + " gives nothing: No such file or directory"},
        {{"--nmea", diary}, "the NMEA file " + diary + " tells no position"},
        {{"--nmea", scratch}, "the NMEA file " + scratch.string() + " gives nothing: It is no regular file"},
        {{"--serial", diary}, "the serial port " + diary + " gives nothing: It is no serial port"},
        {{"--socket", server}, "the NMEA server " + server + " gives nothing: Connection refused"}};
    for (const auto& [arguments, sentence] : cases) {
        Arguments all = {"track"};
        all.insert(all.end(), arguments.begin(), arguments.end());

        const Ended ended = run(all);

        EXPECT_EQ(ended.exitStatus, 1);
        EXPECT_EQ(ended.errors, "quorvane: " + sentence + "\n");
    }
}

TEST_F(TrackTest, WithoutALocationServiceItSaysWhatElseThereIs) {
    const Ended ended = run({"track"});

    EXPECT_EQ(ended.exitStatus, 1);
    EXPECT_EQ(ended.errors,
              "QuorvaneSDK: this system has no location service (GeoClue 2); the location counts as not permitted\n"
              "quorvane: ERROR_PERMISSIONS: the system has no location service, or does not permit its use; name a "
              "receiver with --nmea, --serial or --socket\n");
}

} // namespace
} // namespace quorvane::tool
