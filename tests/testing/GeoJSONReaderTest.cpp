#include <gmock/gmock.h>

#include "testing/TrackReading.h"

namespace quorvane::testing {
namespace {

using platform::Coordinate;
using ::testing::ElementsAre;

std::string line(const std::string& coordinates, const std::string& properties = "{}") {
    return R"({"type":"Feature","properties":)" + properties + R"(,"geometry":{"type":"LineString","coordinates":)" +
           coordinates + "}}";
}

TEST(GeoJSONReaderTest, ALinesTimesStandInItsProperties) {
    for (const char* properties :
         {R"({"coordTimes":["2026-05-01T08:00:00Z","2026-05-01T08:00:10Z"]})",
          R"({"times":["2026-05-01T08:00:00Z",1777622410]})", R"({"Time":[1777622400000,1777622410000]})",
          R"({"coordinateProperties":{"heart":[1,2],"times":["2026-05-01T08:00:00Z","2026-05-01T08:00:10Z"]}})"}) {
        const Track track = readGood(line("[[14.25,45.5,300],[-14.25,-45.5]]", properties));

        ASSERT_EQ(track.fixes.size(), 2U);
        EXPECT_TRUE(track.isTimed);
        EXPECT_EQ(track.fixes[0].coordinate, (Coordinate{45.5, 14.25}));
        EXPECT_EQ(track.fixes[1].coordinate, (Coordinate{-45.5, -14.25}));
        EXPECT_EQ(track.fixes[0].horizontalAccuracy, 10);
        EXPECT_THAT(timesOf(track), ElementsAre("2026-05-01T08:00:00Z", "2026-05-01T08:00:10Z"));
    }
}

TEST(GeoJSONReaderTest, TheOrderOfMembersDoesNotMatter) {
    const Track track = readGood(R"({"features":[{"geometry":{"coordinates":[[1,2],[3,4]],"type":"LineString"},
        "properties":{"name":"way","times":[0,10]},"type":"Feature"}],"type":"FeatureCollection"})");

    EXPECT_EQ(track.name, "way");
    EXPECT_THAT(timesOf(track), ElementsAre("1970-01-01T00:00:00Z", "1970-01-01T00:00:10Z"));
}

TEST(GeoJSONReaderTest, ACollectionOfPointsIsATrack) {
    const Track track = readGood(R"({"type":"FeatureCollection","features":[
        {"type":"Feature","geometry":{"type":"Point","coordinates":[14.25,45.5]},
         "properties":{"time":"2026-05-01T08:00:00Z","accuracy":4.5,"note":{"time":[1]}}},
        null,
        {"type":"Feature","geometry":null,"properties":{"time":"never"}},
        {"type":"Feature","geometry":{"type":"Polygon","coordinates":[[[1,2],[3,4]]]},"properties":null},
        {"type":"Feature","properties":{"timestamp":1777622410,"horizontalAccuracy":-1},
         "geometry":{"type":"Point","coordinates":[14.5,45.5,100]}}]})");

    ASSERT_EQ(track.fixes.size(), 2U);
    EXPECT_EQ(track.fixes[0].horizontalAccuracy, 4.5);
    EXPECT_EQ(track.fixes[1].horizontalAccuracy, -1);
    EXPECT_EQ(track.fixes[1].coordinate, (Coordinate{45.5, 14.5}));
    EXPECT_THAT(timesOf(track), ElementsAre("2026-05-01T08:00:00Z", "2026-05-01T08:00:10Z"));
}

TEST(GeoJSONReaderTest, SeveralLinesFollowOneAnother) {
    const Track track = readGood(R"({"type":"Feature","properties":{"coordTimes":[["2026-05-01T08:00:00Z",null],
        ["2026-05-01T09:00:00Z"]]},"geometry":{"type":"MultiLineString","coordinates":[[[1,2],[3,4]],[],[[5,6]]]}})");

    EXPECT_FALSE(track.isTimed);
    EXPECT_THAT(timesOf(track), ElementsAre("2026-05-01T08:00:00Z", "2026-05-01T08:00:01Z", "2026-05-01T09:00:00Z"));
}

TEST(GeoJSONReaderTest, AGeometryAloneAndDocumentsOneAfterTheOtherAreRead) {
    EXPECT_EQ(readGood(R"({"type":"MultiPoint","coordinates":[[1,2],[3,4]]})").fixes.size(), 2U);
    EXPECT_EQ(readGood(line("[[1,2]]") + "\n" + line("[[3,4]]")).fixes[1].coordinate, (Coordinate{4, 3}));
}

TEST(GeoJSONReaderTest, OneTimeIsThatOfTheFirstPosition) {
    EXPECT_THAT(timesOf(readGood(line("[[1,2],[3,4]]", R"({"time":"2026-05-01T08:00:00Z"})"))),
                ElementsAre("2026-05-01T08:00:00Z", "2026-05-01T08:00:01Z"));
}

TEST(GeoJSONReaderTest, EscapesInTextsAreResolved) {
    EXPECT_EQ(readGood(line("[[1,2]]", R"({"\u006eame":"a\"\\\/\b\f\n\r\t\u00e4\ud83d\ude80\ud83dx"})")).name,
              "a\"\\/\b\f\n\r\t\xC3\xA4\xF0\x9F\x9A\x80\xEF\xBF\xBDx");
}

TEST(GeoJSONReaderTest, ListsOfTimesAndPositionsAreOfOneLength) {
    EXPECT_EQ(readError(line("[[1,2],\n[3,4]]", R"({"times":[0]})")),
              "file, line 2: the feature has fewer times than positions.");
    EXPECT_EQ(readError(line("[[1,2]]", "\n{\"times\":[0,\n1]}")),
              "file, line 3: the feature has more times than positions.");
}

TEST(GeoJSONReaderTest, WhatIsWrongIsToldInASentenceWithItsLine) {
    EXPECT_EQ(readError(line("\n[[1,2],\n[181,2]]")),
              "file, line 3: the longitude \"181\" is no number from -180 to 180.");
    EXPECT_EQ(readError(line("[[1,-90.5]]")), "file, line 1: the latitude \"-90.5\" is no number from -90 to 90.");
    EXPECT_EQ(readError(line("[[1,2]]", R"({"times":["noon"]})")),
              "file, line 1: the time \"noon\" is no date and time.");
    EXPECT_EQ(readError(line("[[1,2]]", R"({"time":"noon"})")), "file, line 1: the time \"noon\" is no date and time.");
    EXPECT_EQ(readError(line("[[1,2]]", R"({"times":[true]})")),
              "file, line 1: the time \"true\" is no date and time.");
    EXPECT_EQ(readError(line("[[1,2]]", R"({"accuracy":"good"})")),
              "file, line 1: the accuracy \"good\" is no number.");
    for (const char* positions : {"[[1]]", "[[\"1\",2]]", "[[1,null]]", "[1,2,[3]]", "[[1,2,null]]", "[{}]"}) {
        EXPECT_EQ(readError(line(positions)), "file, line 1: a position is no list of numbers.") << positions;
    }
    EXPECT_EQ(readError("[1,2]"), "file, line 1: the file is no GeoJSON: it is no object.");
    EXPECT_EQ(readError(R"({"type":"Topology"})"), "file: the file has no Point or LineString with a position.");
}

TEST(GeoJSONReaderTest, WhatIsNoJSONIsAnErrorWithItsLineAndReason) {
    const std::vector<std::pair<const char*, const char*>> cases{
        {"{\"type\":", "it ends within a value"},
        {"{\"type\":\"Feature\"", "it ends within an object or a list"},
        {"{\"type\" 1}", "a colon is missing"},
        {"{\"a\":1 \"b\":2}", "a comma or an end is missing"},
        {"{\"a\":[1}", "a comma or an end is missing"},
        {"{a:1}", "it has a member without a name"},
        {"{\"a\":1,}", "it has a member without a name"},
        {"{\"a\":[1,]}", "it has a value that is none"},
        {"{\"a\":NaN}", "it has a value that is none"},
        {"{\"a\":nul}", "it has a value that is none"},
        {"{\"a\":1.2.3}", "it has a number that is none"},
        {"{\"a\":1e999}", "it has a number that is none"},
        {"{\"a\":\"b", "it has a text that does not end"},
        {"{\"a\":\"b\nc\"}", "it has a text that does not end"},
        {"{\"a\":\"\\x\"}", "it has an escape that is none"},
        {"{\"a\":\"\\u12g4\"}", "it has an escape that is none"},
        {"{\"a\":\"\\ud83d\\n\"}", "it has an escape that is none"},
    };
    for (const auto& [text, reason] : cases) {
        EXPECT_EQ(readError(text), "file, line 1: the file is no well-formed JSON (" + std::string(reason) + ").")
            << text;
    }
    EXPECT_EQ(readError("{\n\"a\":" + std::string(300, '[')),
              "file, line 2: the file is no well-formed JSON (it is nested too deep).");
    EXPECT_EQ(readError("{\"a\":" + std::string(5000, '1') + "}"),
              "file, line 1: the file is no well-formed JSON (it has a number that is too long).");
}

} // namespace
} // namespace quorvane::testing
