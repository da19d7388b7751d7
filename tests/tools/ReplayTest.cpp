#include "tools/ReplayTest.h"

#include <chrono>
#include <csignal>
#include <cstdlib>
#include <filesystem>
#include <thread>

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include "JSON/JSON.h"

namespace quorvane::tool {
namespace {

TEST_F(ReplayTest, ContinuousOptionsSendAFixEachHalfMinuteAndSeeTheRideStopAndGoOn) {
    const Ended ended = replayRide({"--options", "continuous"});

    EXPECT_EQ(ended.exitStatus, 0) << ended.errors;
    EXPECT_EQ(ended.errors, "");
    EXPECT_EQ(linesOf(ended.output).front(), "2024-05-18T08:30:00Z      app         notRunning -> foreground");
    EXPECT_TRUE(hasRow(ended.output, "recorded fixes 291")) << ended.output;
    EXPECT_TRUE(hasRow(ended.output, "duration 2330.0 s"));
    EXPECT_TRUE(hasRow(ended.output, "kept 77"));
    EXPECT_TRUE(hasRow(ended.output, "sent 77"));
    EXPECT_TRUE(hasRow(ended.output, "stops 2"));
    EXPECT_TRUE(hasRow(ended.output, "SUCCESS 77"));
    EXPECT_TRUE(hasRow(ended.output, "USER_STOPPED_TRAVELING 2"));
    EXPECT_TRUE(hasRow(ended.output, "USER_STARTED_TRAVELING 2"));
    EXPECT_TRUE(hasRow(ended.output, "receiver on 385.0 s"));
    EXPECT_EQ(linesWith(ended.output, "  fix         BACKGROUND_LOCATION "), 77U);
    EXPECT_EQ(linesWith(ended.output, "moving -> stopped"), 2U);
}

TEST_F(ReplayTest, ResponsiveOptionsKeepToTheirRulesAndSayWhyTheyDidLess) {
    const Ended ended = replayRide({"--options", "responsive"});

    EXPECT_EQ(ended.exitStatus, 0) << ended.errors;
    EXPECT_TRUE(hasRow(ended.output, "kept 22")) << ended.output;
    EXPECT_TRUE(hasRow(ended.output, "sent 3"));
    EXPECT_TRUE(hasRow(ended.output, "not sent: cantExit 16"));
    EXPECT_TRUE(hasRow(ended.output, "not sent: desiredSyncInterval 1"));
    EXPECT_EQ(linesWith(ended.output, "; not sent: cantExit, "), 16U);
    EXPECT_EQ(linesWith(ended.output, "; sent in any case: neverSent, "), 1U);
}

TEST_F(ReplayTest, EfficientOptionsSleepButForVisits) {
    const Ended ended = replayRide({"--options", "efficient"});

    EXPECT_EQ(ended.exitStatus, 0) << ended.errors;
    EXPECT_TRUE(hasRow(ended.output, "fixes decided on 4")) << ended.output;
    EXPECT_EQ(linesWith(ended.output, "  fix         VISIT_ARRIVAL "), 2U);
    EXPECT_EQ(linesWith(ended.output, "  fix         VISIT_DEPARTURE "), 2U);
    EXPECT_TRUE(hasRow(ended.output, "wake-ups 4"));
    EXPECT_TRUE(hasRow(ended.output, "receiver on 0.0 s"));
    EXPECT_EQ(linesWith(ended.output, "2024-05-18T08:30:10Z      app         background -> suspended"), 1U);
}

TEST_F(ReplayTest, OptionsOfAFileAreUsedAndWithoutAnyTheContinuousOnes) {
    const std::string file = makeFile("minutely.json", R"({"DESIRED_MOVING_UPDATE_INTERVAL": 60, "SYNC": 2})");

    const AnyCodable::Dictionary own = summaryOf(ride, {"--options", file});

    EXPECT_EQ(textIn(own, "options"), "minutely.json");
    EXPECT_EQ(numberIn(objectIn(own, "fixes"), "processed"), 38);
    EXPECT_EQ(textIn(summaryOf(ride), "options"), "continuous");
}

TEST_F(ReplayTest, PlacesThatTheServiceKnowsAreEnteredAndLeft) {
    const Ended ended = replayRide({"--places", places()});

    EXPECT_EQ(ended.exitStatus, 0) << ended.errors;
    EXPECT_EQ(linesWith(ended.output, "at Windmill (p2); USER_ENTERED_PLACE; USER_ENTERED_GEOFENCE"), 1U);
    EXPECT_EQ(linesWith(ended.output, "at Market (p1); USER_ENTERED_PLACE; USER_ENTERED_GEOFENCE"), 1U);
    EXPECT_EQ(linesWith(ended.output, "at no place; USER_EXITED_PLACE; USER_EXITED_GEOFENCE"), 2U);
    EXPECT_EQ(linesWith(ended.output, "Far away"), 0U);
    EXPECT_TRUE(hasRow(ended.output, "USER_ENTERED_PLACE 2"));
}

TEST_F(ReplayTest, JSONLinesHaveAnObjectForEachDecisionAndTheSummaryAtTheEnd) {
    const Ended text = replayRide();
    const Ended ended = replayRide({"--format", "json"});

    const std::vector<std::string> lines = linesOf(ended.output);
    ASSERT_GT(lines.size(), 100U) << ended.errors;
    std::size_t fixes = 0;
    for (const std::string& line : lines) {
        const AnyCodable read = json::readExactly(line);
        const AnyCodable::Dictionary object = objectIn(read);
        fixes += textIn(object, "type") == "fix" ? 1 : 0;
        EXPECT_EQ(object.contains("time"), &line != &lines.back());
    }
    EXPECT_EQ(fixes, 77U);
    const AnyCodable last = json::readExactly(lines.back());
    EXPECT_EQ(textIn(objectIn(last), "type"), "summary");
    EXPECT_EQ(numberIn(objectIn(last), "recorded"), 291);
    const std::string log = text.output.substr(0, text.output.find("\n\n") + 1);
    EXPECT_EQ(lines.size() - 1, linesOf(log).size());
}

TEST_F(ReplayTest, TheSameInputGivesTheSameBytesInEveryTimeZoneAndLanguage) {
    for (const char* const format : {"text", "json"}) {
        const Arguments arguments{"--places", places(), "--options", "responsive", "--format", format};
        const Ended first = replayRide(arguments);
        environment.emplace_back("TZ", "Pacific/Auckland");
        environment.emplace_back("LC_ALL", "de_DE.UTF-8");
        const Ended second = replayRide(arguments);

        EXPECT_FALSE(first.output.empty()) << first.errors;
        EXPECT_EQ(first.output, second.output);
    }
}

TEST_F(ReplayTest, AFileGetsWhatStandardOutputWouldHaveGot) {
    const Ended shown = replayRide();
    const Ended written = replayRide({"--output", (scratch / "ride.log").string()});

    EXPECT_EQ(written.exitStatus, 0) << written.errors;
    EXPECT_EQ(written.output, "");
    EXPECT_EQ(contentOf("ride.log"), shown.output);
}

TEST_F(ReplayTest, AnOutputThatWouldReplaceAFileThatIsReadIsRefused) {
    const std::string track = makeFile("way.csv", "46,14.5,0\n46.01,14.5,60\n");
    const std::string link = (scratch / "link.csv").string();
    std::filesystem::create_symlink(track, link);
    const std::string known = places();
    const std::string options = makeFile("mine.json", "{}");
    for (const std::string& output : {track, link, known, options}) {
        const Ended ended = replay(track, {"--places", known, "--options", options, "--output", output});

        EXPECT_EQ(ended.exitStatus, 1);
        EXPECT_EQ(ended.errors,
                  "quorvane: " + output + ": the replay reads this file, and --output would replace it\n");
    }

    EXPECT_EQ(contentOf("way.csv"), "46,14.5,0\n46.01,14.5,60\n");
    EXPECT_EQ(contentOf("mine.json"), "{}");
}

TEST_F(ReplayTest, AReplayThatFailsLeavesAnEarlierOutput) {
    const std::string output = makeFile("ride.log", "earlier\n");
    const std::string broken = makeFile("broken.csv", "46,14.5,0\n46.01,14.5,600\n46.02,east,1200\n");
    for (const std::string& track : {std::string("./absent"), broken}) {
        for (const char* const format : {"text", "html"}) {
            EXPECT_EQ(replay(track, {"--output", output, "--format", format}).exitStatus, 1);

            EXPECT_EQ(contentOf("ride.log"), "earlier\n");
        }
    }
}

TEST_F(ReplayTest, ADocumentOnStandardOutputLeavesTheLogToTheFile) {
    const Ended ended = replayRide({"--json", "--output", (scratch / "ride.log").string()});

    EXPECT_EQ(listIn(ended.document(), "replays").size(), 1U);
    EXPECT_EQ(linesWith(contentOf("ride.log"), "  fix         "), 77U);
}

TEST_F(ReplayTest, ThePresetsStandSideBySide) {
    const Ended ended = replayRide({"--compare"});

    EXPECT_EQ(ended.exitStatus, 0) << ended.errors;
    EXPECT_TRUE(hasRow(ended.output, "continuous responsive efficient")) << ended.output;
    EXPECT_TRUE(hasRow(ended.output, "kept 77 22 4"));
    EXPECT_TRUE(hasRow(ended.output, "USER_STOPPED_TRAVELING 2 1 1"));
    EXPECT_TRUE(hasRow(ended.output, "receiver on 385.0 s 60.0 s 0.0 s"));
    EXPECT_EQ(linesWith(ended.output, "2024-05-18"), 0U) << "there is no log";
}

TEST_F(ReplayTest, ThePresetsStandSideBySideForARecordingThatComesOutOfAPipe) {
    const std::string content = "46,14.5,0\n46.01,14.5,600\n46.02,14.5,1200\n";
    const std::string pipe = (scratch / "pipe").string();
    ASSERT_EQ(mkfifo(pipe.c_str(), 0600), 0);
    std::thread writer([&] { std::ofstream(pipe, std::ios::binary) << content; });

    const Ended ended = replay(pipe, {"--compare"});
    // Lets the writer go should nobody have read.
    const int reader = open(pipe.c_str(), O_RDONLY | O_NONBLOCK | O_CLOEXEC);
    writer.join();
    close(reader);

    EXPECT_EQ(ended.exitStatus, 0) << ended.errors;
    EXPECT_EQ(ended.output, replay(makeFile("way.csv", content), {"--compare"}).output);
}

TEST_F(ReplayTest, OptionsOfAFileStandBesideThePresets) {
    const std::string file = makeFile("mine.json", "{}");

    const Ended ended = replayRide({"--compare", "--options", file, "--format", "json"});

    const std::vector<std::string> lines = linesOf(ended.output);
    ASSERT_EQ(lines.size(), 4U) << ended.errors;
    EXPECT_EQ(textIn(objectIn(json::readExactly(lines[2])), "options"), "efficient");
    EXPECT_EQ(textIn(objectIn(json::readExactly(lines[3])), "options"), "mine.json");
}

TEST_F(ReplayTest, TheLibraryTellsItsOwnLogWhenItIsAskedTo) {
    const Ended ended = replayRide({"--options", "efficient", "--log-level", "debug"});

    EXPECT_EQ(ended.exitStatus, 0);
    EXPECT_NE(ended.errors, "");
    EXPECT_EQ(ended.output, replayRide({"--options", "efficient"}).output);
}

/// A recording among the real ones, and what is known of it.
struct Recording {
    std::string name;
    double fixes;
    double passedOver;
    double seconds;
};

class RealRecording : public ReplayTest, public ::testing::WithParamInterface<Recording> {};

TEST_P(RealRecording, IsReplayedWithEachPreset) {
    const char* const data = std::getenv("QUORVANE_TEST_DATA");
    if (data == nullptr) {
        GTEST_SKIP() << "QUORVANE_TEST_DATA names no folder with recordings";
    }
    const std::string track = std::filesystem::path(data) / GetParam().name;
    for (const char* const options : {"continuous", "responsive", "efficient"}) {
        const AnyCodable::Dictionary summary = summaryOf(track, {"--options", options});

        EXPECT_EQ(numberIn(summary, "recorded"), GetParam().fixes);
        EXPECT_EQ(numberIn(summary, "passedOver"), GetParam().passedOver);
        EXPECT_EQ(numberIn(summary, "seconds"), GetParam().seconds);
        if (std::string(options) == "continuous") {
            const double kept = numberIn(objectIn(summary, "fixes"), "processed");
            EXPECT_EQ(kept, static_cast<int>(GetParam().seconds / 30)) << "one each half a minute";
            EXPECT_EQ(numberIn(objectIn(summary, "syncs"), "SUCCESS"), kept);
        }
    }
}

INSTANTIATE_TEST_SUITE_P(Files, RealRecording,
                         ::testing::Values(Recording{"cerknicko-jezero.gpx", 296, 0, 7200},
                                           Recording{"haicom-305N.log", 68, 0, 81}, Recording{"rx210.log", 40, 0, 49},
                                           Recording{"telit-he910.log", 187, 1, 195.7}),
                         [](const auto& one) {
                             const std::string& name = one.param.name;
                             return name.substr(0, name.find_first_of("-."));
                         });

TEST_F(ReplayTest, ASignalLeavesTheEarlierOutputAndNothingElse) {
    // Years that tracking works through by the hour.
    std::string months = "lat,lon,time\n";
    for (int year = 2000; year < 2100; ++year) {
        for (const char* const month : {"01", "02", "03", "04", "05", "06", "07", "08", "09", "10", "11", "12"}) {
            months += "46.05,14.5," + std::to_string(year) + "-" + month + "-01T00:00:00Z\n";
        }
    }
    const std::string track = makeFile("months.csv", months);
    const std::filesystem::path folder = scratch / "outputs";
    std::filesystem::create_directory(folder);
    std::ofstream(folder / "days.log") << "the earlier one";
    const Running running = start({"replay", track, "--output", (folder / "days.log").string()});
    const auto hasBegun = [&folder] {
        return std::ranges::any_of(std::filesystem::directory_iterator(folder), [](const auto& entry) {
            return entry.path().filename() != "days.log" && entry.file_size() > 0;
        });
    };
    const auto latest = std::chrono::steady_clock::now() + std::chrono::minutes(1);
    while (!hasBegun() && std::chrono::steady_clock::now() < latest) {
        std::this_thread::sleep_for(std::chrono::milliseconds(5));
    }

    ASSERT_EQ(kill(running.process, SIGTERM), 0);

    EXPECT_EQ(finish(running).exitStatus, 128 + SIGTERM);
    EXPECT_EQ(contentOf("outputs/days.log"), "the earlier one");
    EXPECT_EQ(std::distance(std::filesystem::directory_iterator(folder), {}), 1);
}

TEST_F(ReplayTest, FilesThatCannotBeReadEndWithOneAndASentence) {
    const std::string text = makeFile("story.txt", "Once upon a time\n");
    const std::string empty = makeFile("empty.gpx", "");
    const std::string options = makeFile("options.json", R"({"STOP_DISTANCE": "far"})");
    const std::string nowhere = makeFile("nowhere.json", R"([{"id": "p", "name": "Nowhere"}])");
    const std::string tasks = makeFile("tasks.json", R"([{"key": "t"}])");
    const auto expectFailure = [this](const std::string& track, const Arguments& more, const std::string& sentence) {
        const Ended ended = replay(track, more);
        EXPECT_EQ(ended.exitStatus, 1);
        EXPECT_EQ(ended.output, "");
        EXPECT_EQ(ended.errors, "quorvane: " + sentence + "\n");
    };

    expectFailure("./absent", {}, "./absent: the file cannot be read: No such file or directory.");
    expectFailure(text, {}, text + ": the file is no track: it looks like neither GPX, NMEA, GeoJSON nor CSV.");
    expectFailure(empty, {}, empty + ": the file is empty.");
    expectFailure(ride, {"--options", "./absent"}, "./absent: No such file or directory");
    expectFailure(ride, {"--options", text}, text + ": the text is no JSON document");
    expectFailure(ride, {"--options", options}, options + ": STOP_DISTANCE: expected an integer, found \"far\"");
    expectFailure(ride, {"--places", "./absent"}, "./absent: No such file or directory");
    expectFailure(ride, {"--places", text}, text + ": the text is no JSON document");
    expectFailure(ride, {"--places", tasks}, tasks + " holds what is no place");
    expectFailure(ride, {"--places", nowhere}, nowhere + " holds a place without a point on the earth");
    expectFailure(ride, {"--output", "./absent/log"}, "./absent/log: No such file or directory");
}

TEST_F(ReplayTest, ARecordingThatBreaksOffIsReplayedUpToThereAndTheLineIsTold) {
    const std::string track = makeFile("broken.csv",
                                       "lat,lon,time\n"
                                       "46,14.5,2026-01-01T00:00:00Z\n"
                                       "46.01,14.5,2026-01-01T00:05:00Z\n"
                                       "46.02,14.5,2026-01-01T00:06:00Z\n"
                                       "46.03,east,2026-01-01T00:07:00Z\n");

    const Ended ended = replay(track);

    EXPECT_EQ(ended.exitStatus, 1);
    EXPECT_EQ(ended.errors, "quorvane: " + track + ", line 5: the longitude \"east\" is no number from -180 to 180.\n");
    EXPECT_GT(linesWith(ended.output, "  fix         "), 0U);
    EXPECT_EQ(linesWith(ended.output, "recorded fixes"), 0U);
}

TEST_F(ReplayTest, WrongFormsEndWithTwoAndASentence) {
    const auto expectWrong = [this](const Arguments& arguments, const std::string& sentence) {
        const Ended ended = runPlain(arguments);
        EXPECT_EQ(ended.exitStatus, 2);
        EXPECT_EQ(ended.output, "");
        EXPECT_EQ(ended.errors, "quorvane: " + sentence + "\n");
    };

    expectWrong({"replay"}, "TRACK is required");
    expectWrong({"replay", ""}, "TRACK takes a text that is not empty");
    expectWrong({"replay", ride, "--options", "continous"},
                "--options takes continuous, responsive, efficient or the name of a .json file, not \"continous\"");
    expectWrong({"replay", ride, "--options"}, "--options needs a value");
    expectWrong({"replay", ride, "--places", ""}, "--places takes a text that is not empty");
    expectWrong({"replay", ride, "--format", "xml"}, "--format takes text, json or html, not \"xml\"");
    expectWrong({"replay", ride, "--output", ""}, "--output takes a text that is not empty");
    expectWrong({"replay", ride, ride}, "the following argument was not expected: " + ride);
}

} // namespace
} // namespace quorvane::tool
