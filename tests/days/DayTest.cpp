#include <filesystem>
#include <fstream>
#include <sstream>
#include <stdexcept>
#include <string>
#include <vector>

#include <gtest/gtest.h>

#include "JSON/AnyCodable.h"
#include "JSON/JSON.h"
#include "days/DayRun.h"
#include "days/DayScript.h"
#include "days/TextDiff.h"
#include "support/ScratchDirectory.h"

namespace quorvane::days {
namespace {

using quorvane::testing::DecisionLog;

/// Days whose decision logs are known.
class DayTest : public ::testing::Test {
protected:
    /// The day passes as it is written down. Its log is left where the tests are built, to be looked at or accepted.
    static void expectDay(const std::string& name) {
        const std::string actual = runDay(QUORVANE_DAYS, name, DecisionLog::Format::text);
        const std::string left = QUORVANE_DAYS_OUTPUT "/" + name + ".log";
        std::ofstream(left, std::ios::binary) << actual;

        std::ifstream file(QUORVANE_DAYS "/" + name + ".log", std::ios::binary);
        std::ostringstream expected;
        expected << file.rdbuf();

        const std::string changes = differences(expected.str(), actual);
        EXPECT_TRUE(changes.empty()) << "The day \"" << name << "\" passes in another way:\n"
                                     << changes << "The whole log is in " << left << '.';
    }
};

/// The names of the days that are known.
std::vector<std::string> allDays() {
    std::vector<std::string> names;
    for (const auto& entry : std::filesystem::directory_iterator(QUORVANE_DAYS)) {
        if (entry.path().extension() == ".day") {
            names.push_back(entry.path().stem().string());
        }
    }
    return names;
}

TEST_F(DayTest, ACommuteWithTwoStops) {
    expectDay("commute");
}

TEST_F(DayTest, ADriveThroughPastAPlace) {
    expectDay("drive-through");
}

TEST_F(DayTest, ADayIndoorsWithDriftingFixes) {
    expectDay("indoors");
}

TEST_F(DayTest, ATunnel) {
    expectDay("tunnel");
}

TEST_F(DayTest, AFlightOverTheDateLine) {
    expectDay("flight");
}

TEST_F(DayTest, TimeBasedTrackingAcrossMidnight) {
    expectDay("midnight");
}

TEST_F(DayTest, PermissionThatIsWithdrawnAtNoon) {
    expectDay("permission");
}

TEST_F(DayTest, AClockThatIsSetBackByAnHour) {
    expectDay("clock");
}

TEST_F(DayTest, ATokenThatExpiresAtTen) {
    expectDay("token");
}

TEST_F(DayTest, AServiceThatIsOutOfOrder) {
    expectDay("outage");
}

TEST_F(DayTest, AnApplicationThatIsEndedAndLaunchedAgain) {
    expectDay("relaunch");
}

TEST_F(DayTest, EveryDayThatIsWrittenDownIsTested) {
    EXPECT_EQ(allDays().size(), 11U);
}

TEST_F(DayTest, ADayThatPassesTwiceGivesTheSameBytes) {
    for (const auto format : {DecisionLog::Format::text, DecisionLog::Format::jsonLines}) {
        EXPECT_EQ(runDay(QUORVANE_DAYS, "flight", format), runDay(QUORVANE_DAYS, "flight", format));
    }
}

TEST_F(DayTest, EachLineForProgramsIsAnObjectOfTheSameMomentsAsTheLineForReaders) {
    for (const std::string& name : allDays()) {
        std::istringstream lines(runDay(QUORVANE_DAYS, name, DecisionLog::Format::jsonLines));
        std::istringstream forReaders(runDay(QUORVANE_DAYS, name, DecisionLog::Format::text));
        std::string expected;
        for (std::string line; std::getline(lines, line);) {
            const auto object = json::decode<AnyCodable::Dictionary>(line);
            ASSERT_TRUE(object.contains("time") && object.contains("type")) << line;
            ASSERT_TRUE(std::getline(forReaders, expected)) << line;
            EXPECT_TRUE(expected.starts_with(std::get<std::string>(object.at("time").value) + ' ')) << line;
        }
        EXPECT_FALSE(std::getline(forReaders, expected)) << expected;
    }
}

TEST_F(DayTest, WhatIsNoDayIsSaidToBeNone) {
    const auto problem = [](const std::string& text) -> std::string {
        const quorvane::testing::ScratchDirectory folder;
        std::ofstream(folder.path() + "/x.day") << text;
        try {
            static_cast<void>(readDay(folder.path() + "/x.day"));
        } catch (const std::runtime_error& error) {
            return std::string(error.what()).substr(folder.path().size());
        }
        return "no problem";
    };
    EXPECT_EQ(problem("# a remark\n\ntrack\n"), "/x.day, line 3: a word is missing");
    EXPECT_EQ(problem("place a 1;2 b\n"), "/x.day, line 1: 1;2 is no coordinate");
    EXPECT_EQ(problem("until noon\n"), "/x.day, line 1: noon is no time");
    EXPECT_EQ(problem("dance all night\n"), "/x.day, line 1: nothing begins with dance");
}

} // namespace
} // namespace quorvane::days
