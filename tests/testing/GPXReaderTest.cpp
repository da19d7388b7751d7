#include <cstdio>
#include <cstdlib>
#include <fstream>
#include <string>

#include <gtest/gtest.h>
#include <unistd.h>

#include "testing/DateText.h"
#include "testing/GPXReader.h"
#include "testing/SimulatedClock.h"

namespace quorvane::testing {
namespace {

using namespace std::chrono_literals;

/// A document of version 1.1 around @p content, which starts on line 3.
std::string gpx(const std::string& content) {
    return "<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n<gpx xmlns=\"http://www.topografix.com/GPX/1/1\" "
           "version=\"1.1\">\n" +
           content + "\n</gpx>\n";
}

std::string segment(const std::string& points) {
    return gpx("<trk><trkseg>\n" + points + "</trkseg></trk>");
}

Track read(const std::string& text) {
    TrackResult result = readGPXText(text, "ride.gpx");
    if (const auto* error = std::get_if<TrackError>(&result)) {
        ADD_FAILURE() << error->message;
        return {"", {{}}, false};
    }
    return std::get<Track>(std::move(result));
}

std::string error(const std::string& text) {
    const TrackResult result = readGPXText(text, "ride.gpx");
    const auto* error = std::get_if<TrackError>(&result);
    return error != nullptr ? error->message : "no error";
}

TEST(GPXReaderTest, TheSegmentsOfAllTracksFollowOneAnother) {
    const Track track = read(gpx(R"(<metadata><name>all</name></metadata>
        <wpt lat="1" lon="1"/>
        <trk><name> Around the lake </name>
            <trkseg><trkpt lat="45.5" lon="14.25"><time>2026-05-01T08:00:00Z</time></trkpt></trkseg>
            <trkseg/>
            <trkseg><trkpt lat="-45.5" lon="-14.25"><time>2026-05-01T08:00:10Z</time></trkpt></trkseg></trk>
        <trk><name>Second</name><trkseg><trkpt lat="90" lon="180"><time>2026-05-01T07:00:00Z</time></trkpt></trkseg></trk>
        <rte><rtept lat="2" lon="2"/></rte>)"));

    EXPECT_EQ(track.name, "Around the lake");
    EXPECT_TRUE(track.isTimed);
    ASSERT_EQ(track.fixes.size(), 3U);
    EXPECT_EQ(track.fixes[0].coordinate, (platform::Coordinate{45.5, 14.25}));
    EXPECT_EQ(track.fixes[1].coordinate, (platform::Coordinate{-45.5, -14.25}));
    EXPECT_EQ(track.fixes[2].coordinate, (platform::Coordinate{90, 180}));
    EXPECT_EQ(dateText(track.fixes[2].timestamp), "2026-05-01T07:00:00Z");
}

TEST(GPXReaderTest, WithoutATrackTheRoutesAreRead) {
    const Track track = read(gpx(R"(<trk><name>empty</name></trk><wpt lat="1" lon="1"/>
        <rte><name>plan</name><rtept lat="2" lon="3"/><rtept lat="4" lon="5"/></rte><rte><rtept lat="6" lon="7"/></rte>)"));

    ASSERT_EQ(track.fixes.size(), 3U);
    EXPECT_EQ(track.fixes[2].coordinate, (platform::Coordinate{6, 7}));
}

TEST(GPXReaderTest, WithoutTrackAndRouteTheWaypointsAreRead) {
    EXPECT_EQ(read(gpx(R"(<wpt lat="1" lon="2"/><wpt lat="3" lon="4"/>)")).fixes.size(), 2U);
}

TEST(GPXReaderTest, TheNamespaceAndItsPrefixDoNotMatter) {
    EXPECT_EQ(read(R"(<gpx version="1.0"><trk><trkseg><trkpt lat="1" lon="2"/></trkseg></trk></gpx>)").fixes.size(),
              1U);
    EXPECT_EQ(read(R"(<g:gpx xmlns:g="http://www.topografix.com/GPX/1/0"><g:trk><g:trkseg>
        <g:trkpt lat="1" lon="2"><g:time>2026-05-01T08:00:00Z</g:time><g:hdop>2</g:hdop></g:trkpt>
        </g:trkseg></g:trk></g:gpx>)")
                  .fixes[0]
                  .horizontalAccuracy,
              10.0);
}

TEST(GPXReaderTest, ExtensionsArePassedOver) {
    const Track track = read(segment(R"(<trkpt lat="1" lon="2"><extensions><x:time xmlns:x="urn:x">never</x:time>
        <trkpt lat="500" lon="500"/></extensions></trkpt>)"));

    EXPECT_EQ(track.fixes.size(), 1U);
}

TEST(GPXReaderTest, AccuracyIsFiveMetresForEachUnitOfDilutionAndTenWithoutOne) {
    const Track track = read(segment(R"(<trkpt lat="1" lon="2"><hdop>0.9</hdop></trkpt>
        <trkpt lat="1" lon="2"><hdop> 4 </hdop></trkpt><trkpt lat="1" lon="2"/><trkpt lat="1" lon="2"><hdop>0</hdop></trkpt>
        <trkpt lat="1" lon="2"><ele>100</ele><hdop/></trkpt>)"));

    ASSERT_EQ(track.fixes.size(), 5U);
    EXPECT_DOUBLE_EQ(track.fixes[0].horizontalAccuracy, 4.5);
    EXPECT_DOUBLE_EQ(track.fixes[1].horizontalAccuracy, 20.0);
    EXPECT_DOUBLE_EQ(track.fixes[2].horizontalAccuracy, 10.0);
    EXPECT_DOUBLE_EQ(track.fixes[3].horizontalAccuracy, 10.0);
    EXPECT_DOUBLE_EQ(track.fixes[4].horizontalAccuracy, 10.0);
    EXPECT_DOUBLE_EQ(track.fixes[4].verticalAccuracy, -1);
}

TEST(GPXReaderTest, NumbersMayHaveASignBlanksAndAnExponent) {
    const Track track = read(segment(R"(<trkpt lat=" +4.55e1 " lon="-0"/>)"));

    EXPECT_EQ(track.fixes[0].coordinate, (platform::Coordinate{45.5, 0}));
}

TEST(GPXReaderTest, APointWithoutATimeComesASecondAfterTheOneBefore) {
    const Track track = read(segment(R"(<trkpt lat="1" lon="2"/><trkpt lat="1" lon="2"><time/></trkpt>
        <trkpt lat="1" lon="2"><time>2026-05-01T08:00:00Z</time></trkpt><trkpt lat="1" lon="2"/>
        <trkpt lat="1" lon="2"><time>2026-05-01T09:00:00Z</time></trkpt><trkpt lat="1" lon="2"/>)"));

    std::vector<std::string> times;
    for (const platform::Location& fix : track.fixes) {
        times.push_back(dateText(fix.timestamp).substr(11));
    }
    EXPECT_EQ(times,
              (std::vector<std::string>{"07:59:58Z", "07:59:59Z", "08:00:00Z", "08:00:01Z", "09:00:00Z", "09:00:01Z"}));
    EXPECT_FALSE(track.isTimed);
}

TEST(GPXReaderTest, ATrackWithoutTimesStartsWhereTheSimulatedClockDoes) {
    const Track track = read(segment(R"(<trkpt lat="1" lon="2"/><trkpt lat="1" lon="2"/><trkpt lat="1" lon="2"/>)"));

    EXPECT_FALSE(track.isTimed);
    EXPECT_EQ(track.fixes[0].timestamp, SimulatedClock::start);
    EXPECT_EQ(track.fixes[2].timestamp, SimulatedClock::start + 2s);
}

TEST(GPXReaderTest, WhatIsWrongIsToldInASentenceWithItsLine) {
    const std::string good = "<trkpt lat=\"1\" lon=\"2\"/>\n";
    EXPECT_EQ(error(segment(good + "<trkpt lat=\"90.5\" lon=\"2\"/>")),
              "ride.gpx, line 5: the latitude \"90.5\" is no number from -90 to 90.");
    EXPECT_EQ(error(segment(good + "\n<trkpt lat=\"1\" lon=\"-180.1\"/>")),
              "ride.gpx, line 6: the longitude \"-180.1\" is no number from -180 to 180.");
    EXPECT_EQ(error(segment("<trkpt lon=\"2\"/>")), "ride.gpx, line 4: a point has no latitude.");
    EXPECT_EQ(error(segment("<trkpt lat=\"1\"/>")), "ride.gpx, line 4: a point has no longitude.");
    EXPECT_EQ(error(segment("<trkpt lat=\"1\" lon=\"2\"><time>yesterday</time></trkpt>")),
              "ride.gpx, line 4: the time \"yesterday\" is no date and time.");
    EXPECT_EQ(error(segment("<trkpt lat=\"1\" lon=\"2\"><hdop>-1</hdop></trkpt>")),
              "ride.gpx, line 4: the hdop \"-1\" is no number from 0 to 1000000.");
    EXPECT_EQ(error(gpx("<trk><trkseg/></trk><rte/>")),
              "ride.gpx: the file has no track, route or waypoint with a point in it.");
    EXPECT_EQ(error("<kml/>"), "ride.gpx: the file is no GPX: its root element is \"kml\".");
}

TEST(GPXReaderTest, ACoordinateThatIsNoFiniteNumberIsAnError) {
    for (const char* text :
         {"", " ", "nan", "NaN", "inf", "-inf", "1e999", "45,5", "45.5N", "0x10", "--1", "+-1", "1 2"}) {
        const std::string expected =
            "ride.gpx, line 4: the latitude \"" + std::string(text) + "\" is no number from -90 to 90.";
        EXPECT_EQ(error(segment("<trkpt lat=\"" + std::string(text) + "\" lon=\"2\"/>")), expected);
    }
}

TEST(GPXReaderTest, AWrongValueIsShownOnOneLineAndCutShort) {
    EXPECT_EQ(error(segment("<trkpt lat=\"" + std::string(50, 'x') + "\" lon=\"2\"/>")),
              "ride.gpx, line 4: the latitude \"" + std::string(40, 'x') + "...\" is no number from -90 to 90.");
    EXPECT_EQ(error(segment("<trkpt lat=\"1\" lon=\"2\"><time>a\nb\xC3\xA4</time></trkpt>")),
              "ride.gpx, line 4: the time \"a?b??\" is no date and time.");
}

TEST(GPXReaderTest, WhatIsNoXMLIsAnErrorWithItsLine) {
    for (const char* text : {"", "   ", "{\"a\":1}", "<gpx>", "<gpx><trk></gpx>", "<gpx version=1/>"}) {
        const std::string message = error(text);
        EXPECT_TRUE(message.starts_with("ride.gpx, line 1: the file is no well-formed XML (")) << message;
        EXPECT_TRUE(message.ends_with(").")) << message;
    }
    EXPECT_TRUE(error(gpx("<trk>")).starts_with("ride.gpx, line 4: ")) << error(gpx("<trk>"));
}

TEST(GPXReaderTest, AFileInUTF16IsReadAndItsErrorsNameTheLine) {
    const auto utf16 = [](const std::string& text) {
        std::string result = "\xFF\xFE";
        for (const char c : text) {
            result += c;
            result += '\0';
        }
        return result;
    };
    const std::string good = R"(<trkpt lat="1" lon="2"/>)";
    const std::string start = "<gpx><trk><trkseg>" + good;
    const std::string end = "</trkseg></trk></gpx>";

    EXPECT_EQ(read(utf16(start + end)).fixes.size(), 1U);
    EXPECT_EQ(error(utf16(start + "\n<trkpt lat=\"1\"/>" + end)), "ride.gpx, line 2: a point has no longitude.");
}

TEST(GPXReaderTest, AFileThatCannotBeReadIsAnError) {
    const std::string missing = ::testing::TempDir() + "quorvane-no-such-ride.gpx";

    const TrackResult result = readGPX(missing);

    ASSERT_TRUE(std::holds_alternative<TrackError>(result));
    EXPECT_EQ(std::get<TrackError>(result).message, missing + ": the file cannot be read: No such file or directory.");
    EXPECT_EQ(std::get<TrackError>(readGPX("/")).message, "/: the file cannot be read: Is a directory.");
}

TEST(GPXReaderTest, AFileOnDiskIsReadLikeItsText) {
    const std::string path = ::testing::TempDir() + "quorvane-ride-" + std::to_string(::getpid()) + ".gpx";
    std::ofstream(path) << segment(R"(<trkpt lat="1" lon="2"/>)");

    const TrackResult result = readGPX(path);
    std::remove(path.c_str());

    ASSERT_TRUE(std::holds_alternative<Track>(result));
    EXPECT_EQ(std::get<Track>(result).fixes.size(), 1U);
}

TEST(GPXReaderTest, ARealRecordingOfARideIsRead) {
    const char* data = std::getenv("QUORVANE_TEST_DATA");
    if (data == nullptr) {
        GTEST_SKIP() << "QUORVANE_TEST_DATA is not set";
    }

    const TrackResult result = readGPX(std::string(data) + "/cerknicko-jezero.gpx");

    ASSERT_TRUE(std::holds_alternative<Track>(result)) << std::get<TrackError>(result).message;
    const Track& track = std::get<Track>(result);
    ASSERT_EQ(track.fixes.size(), 296U);
    EXPECT_TRUE(track.isTimed);
    EXPECT_EQ(dateText(track.fixes.back().timestamp), "2010-08-05T16:23:49Z");
    EXPECT_EQ(track.fixes.back().coordinate, (platform::Coordinate{45.790873384, 14.304442042}));
}

TEST(ReadDateTest, FractionsAndZonesAreRead) {
    const auto text = [](const char* input) {
        const auto date = readDate(input);
        return date ? dateText(*date) : "none";
    };
    EXPECT_EQ(text("2026-05-01T08:00:00Z"), "2026-05-01T08:00:00Z");
    EXPECT_EQ(text("2026-05-01T08:00:00"), "2026-05-01T08:00:00Z");
    EXPECT_EQ(text("2026-05-01T08:00:00.5Z"), "2026-05-01T08:00:00.500Z");
    EXPECT_EQ(text("2026-05-01T08:00:00.1234567890123Z"), "2026-05-01T08:00:00.123Z");
    EXPECT_EQ(text("2026-05-01T01:30:00+02:00"), "2026-04-30T23:30:00Z");
    EXPECT_EQ(text("2026-12-31T23:30:00.25-05:30"), "2027-01-01T05:00:00.250Z");
    EXPECT_EQ(text("2016-12-31T23:59:60Z"), "2017-01-01T00:00:00Z");
    EXPECT_EQ(text("2026-05-01T24:00:00Z"), "2026-05-02T00:00:00Z");
    EXPECT_EQ(text("2024-02-29T00:00:00Z"), "2024-02-29T00:00:00Z");
    EXPECT_EQ(readDate("2026-05-01T08:00:00.000000001Z"), *readDate("2026-05-01T08:00:00Z") + 1ns);
}

TEST(ReadDateTest, AnythingElseIsNone) {
    for (const char* text : {"",
                             "2026",
                             "2026-05-01",
                             "2026-05-01T08:00",
                             "2026-05-01 08:00:00Z",
                             "2026-05-01T08:00:00.Z",
                             "2026-05-01T08:00:00z",
                             "2026-05-01T08:00:00Zx",
                             "2026-05-01T08:00:00+0200",
                             "2026-05-01T08:00:00+15:00",
                             "2026-05-01T08:00:00+02:60",
                             "2026-13-01T08:00:00Z",
                             "2026-00-01T08:00:00Z",
                             "2026-02-29T08:00:00Z",
                             "2026-05-01T24:00:01Z",
                             "2026-05-01T25:00:00Z",
                             "2026-05-01T08:60:00Z",
                             "2026-05-01T08:00:61Z",
                             "0001-01-01T00:00:00Z",
                             "9999-12-31T23:59:59Z",
                             "-2026-05-01T08:00:00Z",
                             "2026-5-1T08:00:00Z",
                             "2O26-05-01T08:00:00Z"}) {
        EXPECT_FALSE(readDate(text).has_value()) << text;
    }
}

} // namespace
} // namespace quorvane::testing
