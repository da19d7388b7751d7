#include <fstream>
#include <limits>
#include <thread>

#include <gmock/gmock.h>
#include <sys/stat.h>

#include "support/ScratchDirectory.h"
#include "testing/SimulatedClock.h"
#include "testing/TrackReader.h"
#include "testing/TrackReading.h"

namespace quorvane::testing {
namespace {

using ::testing::ElementsAre;

TrackFormat formatOf(const std::string& text) {
    TrackError error;
    const auto reader = TrackReader::openText(text, "file", error);
    EXPECT_NE(reader, nullptr) << error.message;
    return reader ? reader->format() : TrackFormat::csv;
}

TEST(TrackReaderTest, TheContentSaysWhatFormatItIs) {
    EXPECT_EQ(formatOf("<gpx/>"), TrackFormat::gpx);
    EXPECT_EQ(formatOf(" \n\t<?xml version=\"1.0\"?>"), TrackFormat::gpx);
    EXPECT_EQ(formatOf("\xEF\xBB\xBF<gpx/>"), TrackFormat::gpx);
    EXPECT_EQ(formatOf("{\"type\":\"Feature\"}"), TrackFormat::geoJSON);
    EXPECT_EQ(formatOf("$GPGGA,,,,,,0,,,,M,,M,,*66\r\n"), TrackFormat::nmea);
    EXPECT_EQ(formatOf("M,,*5C\r\n$GPGGA,,,,,,0,,,,M,,M,,*66\r\n"), TrackFormat::nmea);
    EXPECT_EQ(formatOf("lat,lon,time\n"), TrackFormat::csv);
    EXPECT_EQ(formatOf("# a remark\nlat,lon,time\n"), TrackFormat::csv);
    EXPECT_EQ(formatOf("45.5,14.25"), TrackFormat::csv);
}

TEST(TrackReaderTest, WhatLooksLikeNoTrackIsRefusedInASentence) {
    EXPECT_EQ(readError(""), "file: the file is empty.");
    EXPECT_EQ(readError("\n \r\n"), "file: the file is empty.");
    for (const std::string& text : {std::string("hello"), std::string("PK\x03\x04, zipped"), std::string(100, '\0')}) {
        EXPECT_EQ(readError(text), "file: the file is no track: it looks like neither GPX, NMEA, GeoJSON nor CSV.");
    }
}

TEST(TrackReaderTest, FixesComeOneByOneUntilTheFirstThatIsWrong) {
    TrackError error;
    const auto reader = TrackReader::openText("1,2,0\n3,4,1\n\n5,600,2\n7,8,3\n", "file", error);

    EXPECT_EQ(reader->next()->coordinate, (platform::Coordinate{1, 2}));
    EXPECT_EQ(reader->line(), 1U);
    EXPECT_EQ(reader->next()->coordinate, (platform::Coordinate{3, 4}));
    EXPECT_EQ(reader->line(), 2U);
    EXPECT_FALSE(reader->error());
    EXPECT_FALSE(reader->next());

    ASSERT_TRUE(reader->error());
    EXPECT_EQ(reader->error()->message, "file, line 4: the longitude \"600\" is no number from -180 to 180.");
    EXPECT_FALSE(reader->next());
}

TEST(TrackReaderTest, TheEndIsNoError) {
    TrackError error;
    const auto reader = TrackReader::openText("1,2,0\n", "file", error);

    EXPECT_TRUE(reader->next());
    EXPECT_FALSE(reader->next());
    EXPECT_FALSE(reader->next());

    EXPECT_FALSE(reader->error());
}

TEST(TrackReaderTest, TimesThatDoNotAscendAreHandedOutAsTheyAre) {
    EXPECT_THAT(timesOf(readGood("1,2,10\n1,2,10\n1,2,5\n")),
                ElementsAre("1970-01-01T00:00:10Z", "1970-01-01T00:00:10Z", "1970-01-01T00:00:05Z"));
}

TEST(TrackReaderTest, PointsWithoutATimeFollowTheOneBeforeAndGoBackFromTheFirst) {
    const Track track = readGood("1,2,\n1,2,\n1,2,10\n1,2,\n1,2,20\n");

    EXPECT_FALSE(track.isTimed);
    EXPECT_THAT(timesOf(track), ElementsAre("1970-01-01T00:00:08Z", "1970-01-01T00:00:09Z", "1970-01-01T00:00:10Z",
                                            "1970-01-01T00:00:11Z", "1970-01-01T00:00:20Z"));
    EXPECT_EQ(readGood("1,2\n").fixes[0].timestamp, SimulatedClock::start);
}

TEST(TrackReaderTest, TimesAtTheEdgeOfWhatADateCanTellDoNotLeaveIt) {
    EXPECT_THAT(timesOf(readGood("1,2,\n1,2,1678-01-01T00:00:00Z\n")),
                ElementsAre("1677-12-31T23:59:59Z", "1678-01-01T00:00:00Z"));
    EXPECT_THAT(timesOf(readGood("1,2,2261-12-31T23:59:59Z\n1,2,\n")),
                ElementsAre("2261-12-31T23:59:59Z", "2262-01-01T00:00:00Z"));
    EXPECT_THAT(readError("1,2,9214646400\n"), "file, line 1: the time \"9214646400\" is no date and time.");
    EXPECT_THAT(readError("1,2,-9214560000\n"), "file, line 1: the time \"-9214560000\" is no date and time.");
}

TEST(TrackReaderTest, ThePolesAndTheDateLineAreCoordinates) {
    const Track track = readGood("90,180,0\n-90,-180,1\n");

    EXPECT_EQ(track.fixes[0].coordinate, (platform::Coordinate{90, 180}));
    EXPECT_EQ(track.fixes[1].coordinate, (platform::Coordinate{-90, -180}));
}

TEST(TrackReaderTest, AFileIsReadLikeItsTextWhateverItsName) {
    const ScratchDirectory folder;
    const std::string path = folder.path() + "/ride.gpx";
    std::ofstream(path) << "lat,lon\n1,2\n";

    const TrackResult result = readTrack(path);

    ASSERT_TRUE(std::holds_alternative<Track>(result)) << std::get<TrackError>(result).message;
    EXPECT_EQ(std::get<Track>(result).fixes.size(), 1U);
}

TEST(TrackReaderTest, AFileThatCannotBeReadIsAnError) {
    const ScratchDirectory folder;
    EXPECT_EQ(std::get<TrackError>(readTrack(folder.path() + "/none")).message,
              folder.path() + "/none: the file cannot be read: No such file or directory.");
    EXPECT_EQ(std::get<TrackError>(readTrack(folder.path())).message,
              folder.path() + ": the file cannot be read: Is a directory.");
    EXPECT_EQ(std::get<TrackError>(readTrack("/dev/null")).message,
              "/dev/null: the file cannot be read: it is neither a regular file nor a pipe.");
}

TEST(TrackReaderTest, APipeIsReadAsItFills) {
    const ScratchDirectory folder;
    const std::string pipe = folder.path() + "/track";
    ASSERT_EQ(mkfifo(pipe.c_str(), S_IRUSR | S_IWUSR), 0);
    std::thread writer([&] {
        std::ofstream out(pipe);
        out << "46.05,14.5,2026-05-01T08:00:00Z\n" << std::flush << "46.06,14.5,2026-05-01T08:01:00Z\n";
    });

    const TrackResult result = readTrack(pipe);
    writer.join();

    ASSERT_TRUE(std::holds_alternative<Track>(result)) << std::get<TrackError>(result).message;
    EXPECT_EQ(std::get<Track>(result).fixes.size(), 2U);
}

TEST(TrackReaderTest, UTF16WithAByteOrderMarkIsRead) {
    const std::string text = "lat,lon\n1,2\n";
    std::string little = "\xFF\xFE";
    std::string big = "\xFE\xFF";
    for (const char c : text) {
        little += {c, '\0'};
        big += {'\0', c};
    }
    EXPECT_EQ(readGood(little).fixes[0].coordinate, (platform::Coordinate{1, 2}));
    EXPECT_EQ(readGood(big).fixes[0].coordinate, (platform::Coordinate{1, 2}));
    EXPECT_EQ(readError(big + std::string("\0x\0\n", 4)),
              "file, line 3: the line has 1 value where the first has 2 values.");
}

TEST(TrackReaderTest, ALineWithoutAnEndIsNotKept) {
    EXPECT_EQ(readError("1,2\n1,2" + std::string(70'000, ' ') + "\n"), "file: line 2 is longer than 64 KiB.");
}

/// A long file of each format, in which what is read last stands beyond the first 64 KiB.
class LongTrackTest : public ::testing::TestWithParam<TrackFormat> {
protected:
    static constexpr int count = 20'000;

    void write(const std::string& path) const {
        std::ofstream file(path);
        switch (GetParam()) {
            case TrackFormat::gpx:
                file << "<gpx><trk><trkseg>";
                break;
            case TrackFormat::geoJSON:
                file << R"({"type":"Feature","geometry":{"type":"LineString","coordinates":[)";
                break;
            case TrackFormat::nmea:
            case TrackFormat::csv:
                break;
        }
        for (int i = 0; i < count; ++i) {
            point(file, i);
        }
        if (GetParam() == TrackFormat::gpx) {
            file << "</trkseg></trk></gpx>";
        }
        if (GetParam() == TrackFormat::geoJSON) {
            file << R"(]},"properties":{"times":[)";
            for (int i = 0; i < count; ++i) {
                file << (i > 0 ? ",\n" : "") << i;
            }
            file << "]}}";
        }
    }

private:
    static void point(std::ofstream& file, int i) {
        char text[128];
        const double latitude = 45 + i * 0.0001;
        switch (GetParam()) {
            case TrackFormat::gpx:
                std::snprintf(text, sizeof text, "<trkpt lat=\"%.4f\" lon=\"14\"><time>%s</time></trkpt>\n", latitude,
                              dateText(platform::Date(std::chrono::seconds(i))).c_str());
                break;
            case TrackFormat::geoJSON:
                std::snprintf(text, sizeof text, "%s[14,%.4f]", i > 0 ? "," : "", latitude);
                break;
            case TrackFormat::csv:
                std::snprintf(text, sizeof text, "%.4f,14,%d\n", latitude, i);
                break;
            case TrackFormat::nmea: {
                std::snprintf(text, sizeof text, "GPRMC,%02d%02d%02d,A,%02d%07.4f,N,01400.0,E,,,010170,,", i / 3600,
                              i / 60 % 60, i % 60, 45 + i / 10'000, i % 10'000 * 0.006);
                unsigned sum = 0;
                for (const char c : std::string(text)) {
                    sum ^= static_cast<unsigned char>(c);
                }
                file << '$' << text;
                std::snprintf(text, sizeof text, "*%02X\r\n", sum);
                break;
            }
        }
        file << text;
    }
};

TEST_P(LongTrackTest, IsReadFromItsFirstFixToItsLast) {
    const ScratchDirectory folder;
    const std::string path = folder.path() + "/track";
    write(path);

    TrackError error;
    const auto reader = TrackReader::open(path, error);
    ASSERT_NE(reader, nullptr) << error.message;
    EXPECT_EQ(reader->format(), GetParam());

    const auto first = reader->next();
    ASSERT_TRUE(first);
    for (int i = 1; i < count; ++i) {
        const auto fix = reader->next();
        ASSERT_TRUE(fix) << i << ": " << reader->error().value_or(TrackError{"no error"}).message;
        ASSERT_NEAR(fix->coordinate.latitude, 45 + i * 0.0001, 1e-9);
        ASSERT_EQ(fix->timestamp - first->timestamp, std::chrono::seconds(i));
    }
    EXPECT_FALSE(reader->next());
    EXPECT_FALSE(reader->error());
    EXPECT_TRUE(reader->isTimed());
}

INSTANTIATE_TEST_SUITE_P(EveryFormat, LongTrackTest,
                         ::testing::Values(TrackFormat::gpx, TrackFormat::nmea, TrackFormat::geoJSON,
                                           TrackFormat::csv));

} // namespace
} // namespace quorvane::testing
