#include <cstdio>
#include <cstdlib>

#include <gmock/gmock.h>

#include "testing/TrackReading.h"

namespace quorvane::testing {
namespace {

using ::testing::ElementsAre;

/// A sentence with its checksum and line break.
std::string sentence(const std::string& content) {
    unsigned sum = 0;
    for (const char c : content) {
        sum ^= static_cast<unsigned char>(c);
    }
    char text[8];
    std::snprintf(text, sizeof text, "*%02X\r\n", sum);
    return '$' + content + text;
}

std::string rmc(const std::string& time, const std::string& date, const std::string& status = "A") {
    return sentence("GPRMC," + time + ',' + status + ",4530.0000,N,01415.0000,E,0.0,0.0," + date + ",,,A");
}

std::string gga(const std::string& time, const std::string& quality = "1", const std::string& dilution = "1.5") {
    return sentence("GPGGA," + time + ",4530.0000,N,01415.0000,E," + quality + ",06," + dilution + ",100,M,,M,,");
}

TEST(NMEAReaderTest, TheSentencesOfOneMomentMakeOneFix) {
    const Track track = readGood(gga("080000.00") + sentence("GPVTG,0.0,T,,M") + rmc("080000.00", "010526") +
                                 rmc("080001", "010526") + gga("080001"));

    ASSERT_EQ(track.fixes.size(), 2U);
    EXPECT_TRUE(track.isTimed);
    EXPECT_EQ(track.fixes[0].coordinate, (platform::Coordinate{45.5, 14.25}));
    EXPECT_EQ(track.fixes[0].horizontalAccuracy, 7.5);
    EXPECT_EQ(track.fixes[1].horizontalAccuracy, 7.5);
    EXPECT_THAT(timesOf(track), ElementsAre("2026-05-01T08:00:00Z", "2026-05-01T08:00:01Z"));
}

TEST(NMEAReaderTest, SouthAndWestAreNegativeAndMinutesAreSixtieths) {
    const Track track = readGood(sentence("GNGGA,080000.25,3351.6600,S,15112.5480,W,2,08,0.8,1,M,,M,,"));

    EXPECT_NEAR(track.fixes[0].coordinate.latitude, -33.861, 1e-9);
    EXPECT_NEAR(track.fixes[0].coordinate.longitude, -151.2091333333, 1e-9);
    EXPECT_EQ(track.fixes[0].horizontalAccuracy, 4);
}

TEST(NMEAReaderTest, WithoutADilutionTheAccuracyIsTenMetres) {
    const Track track = readGood(rmc("080000", "010526") + rmc("080001", "010526") + gga("080001", "1", "") +
                                 gga("080002", "1", "0.0"));

    ASSERT_EQ(track.fixes.size(), 3U);
    for (const platform::Location& fix : track.fixes) {
        EXPECT_EQ(fix.horizontalAccuracy, 10);
    }
}

TEST(NMEAReaderTest, AMomentOfWhichOneSentenceSaysThatThereIsNoFixHasNone) {
    const Track track = readGood(rmc("080000", "010526", "V") + gga("080000") + gga("080001", "0") +
                                 rmc("080001", "010526") + gga("080002", "") + rmc("080003", "010526"));

    EXPECT_THAT(timesOf(track), ElementsAre("2026-05-01T08:00:03Z"));
}

TEST(NMEAReaderTest, ASentenceWithAWrongChecksumOrNoneIsPassedOver) {
    std::string wrong = rmc("080000", "010526");
    wrong[8] = '1';
    const std::string good = rmc("080001", "010526");
    const std::string cut = rmc("080002", "010526").substr(0, 30);

    EXPECT_THAT(timesOf(readGood("M,,*5C\r\n" + wrong + "garbage\n" + good + cut + "\n" + good.substr(0, 20))),
                ElementsAre("2026-05-01T08:00:01Z"));
    EXPECT_EQ(readError(wrong + cut),
              "file: the file has no sentence RMC or GGA that tells a position; 2 sentences have no checksum or a "
              "wrong one.");
    EXPECT_EQ(readError(sentence("GPGLL,,,,,,V,N")),
              "file: the file has no sentence RMC or GGA that tells a position.");
}

TEST(NMEAReaderTest, ALoggersOwnWordsBeforeASentenceArePassedOver) {
    EXPECT_EQ(readGood("12:00:01.5 " + rmc("080000", "010526")).fixes.size(), 1U);
}

TEST(NMEAReaderTest, TheDayGoesOnFromTheMomentBeforeAndToTheNextAtMidnight) {
    const Track track = readGood(rmc("235959", "311226") + gga("235959.5") + gga("000000") + gga("110000") +
                                 gga("105959") + gga("235900") + gga("000100"));

    EXPECT_THAT(timesOf(track), ElementsAre("2026-12-31T23:59:59Z", "2026-12-31T23:59:59.500Z", "2027-01-01T00:00:00Z",
                                            "2027-01-01T11:00:00Z", "2027-01-01T10:59:59Z", "2027-01-01T23:59:00Z",
                                            "2027-01-02T00:01:00Z"));
}

TEST(NMEAReaderTest, TheFirstDateHoldsForWhatComesBeforeIt) {
    EXPECT_THAT(timesOf(readGood(gga("235958") + gga("235959") + rmc("000000", "010526"))),
                ElementsAre("2026-04-30T23:59:58Z", "2026-04-30T23:59:59Z", "2026-05-01T00:00:00Z"));
    EXPECT_THAT(timesOf(readGood(gga("075958") + rmc("080000", "010526"))),
                ElementsAre("2026-05-01T07:59:58Z", "2026-05-01T08:00:00Z"));
}

TEST(NMEAReaderTest, WithoutAnyDateTheFileBeginsWhereTheSimulatedClockDoes) {
    const Track track = readGood(gga("230000") + gga("010000"));

    EXPECT_TRUE(track.isTimed);
    EXPECT_THAT(timesOf(track), ElementsAre("2026-03-01T23:00:00Z", "2026-03-02T01:00:00Z"));
}

TEST(NMEAReaderTest, YearsAreOfTheLastCenturyFrom80On) {
    EXPECT_THAT(timesOf(readGood(rmc("000000", "060180") + rmc("000000.5", "311279"))),
                ElementsAre("1980-01-06T00:00:00Z", "2079-12-31T00:00:00.500Z"));
}

TEST(NMEAReaderTest, WhatIsWrongInASentenceWithItsChecksumIsToldWithItsLine) {
    const std::string good = rmc("080000", "010526");
    EXPECT_EQ(readError(good + gga("246000")), "file, line 2: the time \"246000\" is no time of day.");
    EXPECT_EQ(readError(good + gga("08:00")), "file, line 2: the time \"08:00\" is no time of day.");
    EXPECT_EQ(readError(good + gga("080000x5")), "file, line 2: the time \"080000x5\" is no time of day.");
    EXPECT_EQ(readError(good + rmc("080001", "310226")), "file, line 2: the date \"310226\" is none.");
    EXPECT_EQ(readError(good + rmc("080001", "1-526")), "file, line 2: the date \"1-526\" is none.");
    EXPECT_EQ(readError(good + gga("080001", "1", "bad")),
              "file, line 2: the hdop \"bad\" is no number from 0 to 1000000.");
    const auto at = [](const std::string& position) {
        return sentence("GPGGA,080000," + position + ",1,05,1.0,,,,,,");
    };
    EXPECT_EQ(readError(at("9000.1,N,01415,E")),
              "file, line 1: the latitude \"9000.1,N\" is no degrees and minutes up to 90.");
    EXPECT_EQ(readError(at("4560.0,N,01415,E")),
              "file, line 1: the latitude \"4560.0,N\" is no degrees and minutes up to 90.");
    EXPECT_EQ(readError(at("4530.0,E,01415,E")),
              "file, line 1: the latitude \"4530.0,E\" is no degrees and minutes up to 90.");
    EXPECT_EQ(readError(at("4530.0,N,,")), "file, line 1: the longitude \",\" is no degrees and minutes up to 180.");
    EXPECT_EQ(readError(at("4530.0,N,30.0,E")),
              "file, line 1: the longitude \"30.0,E\" is no degrees and minutes up to 180.");
    EXPECT_EQ(readError(at("4530.0,N,0nan,E")),
              "file, line 1: the longitude \"0nan,E\" is no degrees and minutes up to 180.");
}

TEST(NMEAReaderTest, ThePolesAndTheDateLineAreRead) {
    const Track track = readGood(sentence("GPGGA,080000,9000.0,N,18000.0,W,1,05,1.0,,,,,,"));

    EXPECT_EQ(track.fixes[0].coordinate, (platform::Coordinate{90, -180}));
}

class NMEARecordingTest : public ::testing::Test {
protected:
    void SetUp() override {
        const char* const found = std::getenv("QUORVANE_TEST_DATA");
        if (found == nullptr) {
            GTEST_SKIP() << "QUORVANE_TEST_DATA is not set";
        }
        folder = found;
    }

    [[nodiscard]] Track read(const std::string& name) const {
        TrackResult result = readTrack(folder + '/' + name);
        EXPECT_TRUE(std::holds_alternative<Track>(result)) << std::get<TrackError>(result).message;
        return std::holds_alternative<Track>(result) ? std::get<Track>(std::move(result)) : Track{"", {{}}, false};
    }

    std::string folder;
};

TEST_F(NMEARecordingTest, AReceiverAtRestThatFirstHasNoFixIsRead) {
    const Track track = read("telit-he910.log");

    EXPECT_EQ(track.fixes.size(), 187U);
    EXPECT_EQ(dateText(track.fixes.back().timestamp).substr(0, 10), "2019-03-12");
    for (const platform::Location& fix : track.fixes) {
        EXPECT_LT(fix.distance(track.fixes.back()), 500);
        EXPECT_GT(fix.horizontalAccuracy, 0);
    }
}

TEST_F(NMEARecordingTest, AReceiverWithABadSkyIsReadWithItsDilutions) {
    const Track track = read("haicom-305N.log");

    EXPECT_EQ(dateText(track.fixes.front().timestamp).substr(0, 10), "2007-04-08");
    EXPECT_LT(track.fixes.front().coordinate.latitude, 0);
    double worst = 0;
    for (const platform::Location& fix : track.fixes) {
        worst = std::max(worst, fix.horizontalAccuracy);
    }
    EXPECT_DOUBLE_EQ(worst, 105.5);
}

TEST_F(NMEARecordingTest, AReceiverOfSeveralConstellationsIsRead) {
    const Track track = read("rx210.log");

    EXPECT_EQ(dateText(track.fixes.back().timestamp), "2016-04-03T18:41:41Z");
    EXPECT_DOUBLE_EQ(track.fixes.back().horizontalAccuracy, 12.75);
}

} // namespace
} // namespace quorvane::testing
