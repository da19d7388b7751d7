#include <gmock/gmock.h>

#include "testing/TrackReading.h"

namespace quorvane::testing {
namespace {

using platform::Coordinate;
using ::testing::ElementsAre;

TEST(CSVReaderTest, LinesAreLatitudeLongitudeTimeAndAccuracy) {
    const Track track = readGood("45.5,14.25,2026-05-01T08:00:00Z,4.5\n-45.5,-14.25,2026-05-01T08:00:10Z\n");

    ASSERT_EQ(track.fixes.size(), 2U);
    EXPECT_TRUE(track.isTimed);
    EXPECT_EQ(track.fixes[0].coordinate, (Coordinate{45.5, 14.25}));
    EXPECT_EQ(track.fixes[0].horizontalAccuracy, 4.5);
    EXPECT_EQ(track.fixes[0].verticalAccuracy, -1);
    EXPECT_EQ(track.fixes[1].coordinate, (Coordinate{-45.5, -14.25}));
    EXPECT_EQ(track.fixes[1].horizontalAccuracy, 10);
    EXPECT_THAT(timesOf(track), ElementsAre("2026-05-01T08:00:00Z", "2026-05-01T08:00:10Z"));
}

TEST(CSVReaderTest, AFirstLineNamesTheColumnsInAnyOrderAndAmongOthers) {
    const Track track = readGood(
        "Id, Timestamp ,LNG,Latitude,speed,horizontal_accuracy\n"
        "1,2026-05-01T08:00:00Z,14.25,45.5,3,7\n");

    ASSERT_EQ(track.fixes.size(), 1U);
    EXPECT_EQ(track.fixes[0].coordinate, (Coordinate{45.5, 14.25}));
    EXPECT_EQ(track.fixes[0].horizontalAccuracy, 7);
    EXPECT_THAT(timesOf(track), ElementsAre("2026-05-01T08:00:00Z"));
}

TEST(CSVReaderTest, OfTwoColumnsWithOneMeaningTheFirstCounts) {
    EXPECT_EQ(readGood("lat,lon,latitude\n1,2,3\n").fixes[0].coordinate, (Coordinate{1, 2}));
}

TEST(CSVReaderTest, TimesMayBeSecondsOrMillisecondsSince1970) {
    const Track track = readGood(
        "1,2,0\n1,2,1700000000\n1,2,1700000000.25\n1,2,1700000000250\n1,2,-1.5\n"
        "1,2,2026-05-01 08:00:00\n1,2,2026-05-01T10:00:00.5+02:00\n");

    EXPECT_THAT(timesOf(track), ElementsAre("1970-01-01T00:00:00Z", "2023-11-14T22:13:20Z", "2023-11-14T22:13:20.250Z",
                                            "2023-11-14T22:13:20.250Z", "1969-12-31T23:59:58.500Z",
                                            "2026-05-01T08:00:00Z", "2026-05-01T08:00:00.500Z"));
}

TEST(CSVReaderTest, BlankLinesAndRemarksArePassedOver) {
    const Track track = readGood("# recorded by hand\n\nlat,lon\n# here\n1,2\r\n \r\n3,4");

    ASSERT_EQ(track.fixes.size(), 2U);
    EXPECT_EQ(track.fixes[1].coordinate, (Coordinate{3, 4}));
}

TEST(CSVReaderTest, ValuesMayStandInQuotes) {
    const Track track =
        readGood("name,\"lat\", \"lon\" ,time\n\"a \"\"b\"\", c\", \"1\",\"2\" ,\"2026-05-01T08:00:00Z\"\n");

    EXPECT_EQ(track.fixes[0].coordinate, (Coordinate{1, 2}));
    EXPECT_THAT(timesOf(track), ElementsAre("2026-05-01T08:00:00Z"));
    EXPECT_EQ(readError("lat,lon\n\"1,2\n"), "file, line 2: a value in quotes does not end.");
    EXPECT_EQ(readError("lat,lon\n\"1\"x,2\n"), "file, line 2: a value in quotes does not end.");
}

TEST(CSVReaderTest, AnAccuracyIsKeptAsItIsToldIfItIsANumber) {
    const Track track = readGood("1,2,0,0\n1,2,1,-5\n1,2,2,1e300\n1,2,3,\n");

    EXPECT_EQ(track.fixes[0].horizontalAccuracy, 0);
    EXPECT_EQ(track.fixes[1].horizontalAccuracy, -5);
    EXPECT_EQ(track.fixes[2].horizontalAccuracy, 1e300);
    EXPECT_EQ(track.fixes[3].horizontalAccuracy, 10);
    EXPECT_EQ(readError("1,2,0,nan\n"), "file, line 1: the accuracy \"nan\" is no number.");
    EXPECT_EQ(readError("1,2,0,5m\n"), "file, line 1: the accuracy \"5m\" is no number.");
}

TEST(CSVReaderTest, WhatIsWrongIsToldInASentenceWithItsLine) {
    EXPECT_EQ(readError("1,2\n91,2\n"), "file, line 2: the latitude \"91\" is no number from -90 to 90.");
    EXPECT_EQ(readError("1,2\n\n1,NaN\n"), "file, line 3: the longitude \"NaN\" is no number from -180 to 180.");
    EXPECT_EQ(readError("1,2\n1,\n"), "file, line 2: the longitude \"\" is no number from -180 to 180.");
    EXPECT_EQ(readError("1,2,noon\n"), "file, line 1: the time \"noon\" is no date and time.");
    EXPECT_EQ(readError("1,2,1e5\n"), "file, line 1: the time \"1e5\" is no date and time.");
    EXPECT_EQ(readError("1,2,99999999999.5\n"), "file, line 1: the time \"99999999999.5\" is no date and time.");
    EXPECT_EQ(readError("1,2,999999999999999\n"), "file, line 1: the time \"999999999999999\" is no date and time.");
    EXPECT_EQ(readError("a,b\n1,2\n"),
              "file, line 1: the first line begins with no number and names no columns \"lat\" and \"lon\".");
    EXPECT_EQ(readError("1,2,3,4,5\n"),
              "file, line 1: the line has 5 values, and no line before it says what they are.");
    EXPECT_EQ(readError("lat,lon,time\n"), "file: the file has no line with a position.");
}

TEST(CSVReaderTest, ALineThatWasCutIsAnError) {
    EXPECT_EQ(readError("1,2,0,5\n1,2,1,5\n1,"), "file, line 3: the line has 2 values where the first has 4 values.");
    EXPECT_EQ(readError("lat,lon,time\n1,2,0\n1"), "file, line 3: the line has 1 value where the first has 3 values.");
    EXPECT_EQ(readError("lat,accuracy,lon\n1,5,2\n1,5"),
              "file, line 3: the line has 2 values where the first has 3 values.");
}

} // namespace
} // namespace quorvane::testing
