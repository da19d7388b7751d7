#include <algorithm>
#include <csignal>
#include <cstdlib>
#include <filesystem>
#include <fstream>

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include "tools/Pictures.h"
#include "tools/PortTest.h"
#include "tools/ProgramTest.h"

namespace quorvane::tool {
namespace {

class DemoTest : public ProgramTest {
protected:
    static void expectAscending(const AnyCodable::List& places) {
        std::vector<double> distances;
        for (const AnyCodable& place : places) {
            distances.push_back(numberIn(objectIn(place), "distance"));
        }
        EXPECT_TRUE(std::is_sorted(distances.begin(), distances.end()));
    }

    /// Without pictures the last answer is not sent, and the reward not looked at. 88 are those of tracking.
    static std::size_t requestCount() { return (knowsPictures() ? 29 : 27) + 88; }

    static const std::string oneFix;
};

const std::string DemoTest::oneFix =
    R"(<gpx version="1.1" xmlns="http://www.topografix.com/GPX/1/1"><trk><trkseg>)"
    R"(<trkpt lat="46" lon="14"><time>2024-05-18T08:30:00Z</time></trkpt></trkseg></trk></gpx>)";

TEST_F(DemoTest, TheInventedRideIsToldFromSignInToSummary) {
    const Ended ended = runPlain({"demo"});

    EXPECT_EQ(ended.exitStatus, 0);
    EXPECT_EQ(ended.errors, "");
    for (const char* const text :
         {"A ride with the Quorvane SDK\n", "An invented ride: ", "Sign-in\n",
          "  identity  GET   /authorize                   200\n",
          "  identity  POST  /token                       200\n",
          " Quorvane initializing | backgroundTimeRemaining = 180.0\n", " Quorvane QuorvaneSDK -> authenticated | ",
          "  SUCCESS   signed in as ", "  data      GET   /locations/find              200\n",
          "  data      GET   /generate/tasks              200\n", " places within 400 m\n", " miles away  generated",
          "Summary\n", " at 6 points of the ride\n", "  2 log lines told to the delegate\n"}) {
        EXPECT_NE(ended.output.find(text), std::string::npos) << text << "\n" << ended.output;
    }
    const std::string count = std::to_string(requestCount());
    EXPECT_NE(ended.output.find("  " + count + " requests, answered " + count + " × 200\n"), std::string::npos)
        << ended.output;
}

TEST_F(DemoTest, TheSameAccountIsOneJSONDocument) {
    const AnyCodable::Dictionary account = runPlain({"demo", "--json"}).document();

    EXPECT_EQ(textIn(account, "status"), "SUCCESS");
    EXPECT_EQ(listIn(account, "log").size(), 2U);
    const AnyCodable::List requests = listIn(account, "requests");
    ASSERT_EQ(requests.size(), requestCount());
    for (const AnyCodable& request : requests) {
        EXPECT_EQ(numberIn(objectIn(request), "status"), 200);
    }
    EXPECT_TRUE(textIn(objectIn(requests[0]), "target").starts_with("/authorize?"));
    EXPECT_EQ(textIn(objectIn(requests[1]), "target"), "/token");
    const AnyCodable::List stops = listIn(account, "stops");
    ASSERT_EQ(stops.size(), 6U);
    for (const AnyCodable& stop : stops) {
        EXPECT_FALSE(listIn(objectIn(stop), "places").empty());
        expectAscending(listIn(objectIn(stop), "places"));
    }
}

TEST_F(DemoTest, ItsPlacesAndTasksAreTheSameEachTime) {
    const AnyCodable::List first = listIn(runPlain({"demo", "--json"}).document(), "stops");
    const AnyCodable::List second = listIn(runPlain({"demo", "--json"}).document(), "stops");

    EXPECT_FALSE(first.empty());
    EXPECT_EQ(first, second);
}

TEST_F(DemoTest, AHomeThatIsNamedIsKeptAndSignedOutOf) {
    EXPECT_EQ(runPlain({"demo", "--home", home}).exitStatus, 0);
    const AnyCodable::Dictionary stored = objectIn(run({"device", "--json"}).document(), "stored");

    EXPECT_FALSE(textIn(stored, "quorvane_user_id").empty());
    EXPECT_EQ(stored.count("quorvane_access_token"), 0U);
    EXPECT_EQ(stored.count("quorvane_log_level"), 0U);
}

TEST_F(DemoTest, TheSecondRideInOneHomeSignsInAnewAndFetchesTheConfiguration) {
    EXPECT_EQ(runPlain({"demo", "--home", home}).exitStatus, 0);

    const Ended second = runPlain({"demo", "--home", home});

    EXPECT_EQ(second.exitStatus, 0) << second.errors;
    EXPECT_NE(second.output.find("  identity  POST  /token                       200\n"), std::string::npos)
        << second.output;
    EXPECT_NE(second.output.find("  data      GET   /config                      200\n"), std::string::npos)
        << second.output;
}

TEST_F(DemoTest, ALogLevelThatIsNamedSendsTheLogToStandardErrorAsWell) {
    const Ended ended = runPlain({"--log-level", "info", "demo"});

    EXPECT_EQ(ended.exitStatus, 0);
    const std::vector<std::string> lines = linesOf(ended.errors);
    EXPECT_NE(lines.front().find("QuorvaneSDK -> authenticated"), std::string::npos) << ended.errors;
    EXPECT_TRUE(lines.at(1).starts_with("2024-05-18 08:30:00 GMT ")) << "that of the phone, in its time";
    EXPECT_NE(ended.errors.find("skipping sync: can't exit"), std::string::npos);
    EXPECT_NE(ended.output.find("  1 log line told to the delegate\n"), std::string::npos) << ended.output;
}

TEST_F(DemoTest, ATrackOfOneFixIsARideWithOneStop) {
    const Ended ended = runPlain({"demo", "--track", makeFile("one.gpx", oneFix)});

    EXPECT_EQ(ended.exitStatus, 0) << ended.errors;
    EXPECT_NE(ended.output.find(" at 1 point of the ride\n"), std::string::npos) << ended.output;
}

TEST_F(DemoTest, ATrackThatCannotBeReadIsOneSentenceAndNoSuccess) {
    for (const std::string& path : {(scratch / "nowhere.gpx").string(), scratch.string(), makeFile("empty.gpx", ""),
                                    makeFile("text.gpx", "a ride"), makeFile("cut.gpx", oneFix.substr(0, 100)),
                                    makeFile("none.gpx", R"(<gpx version="1.1"/>)")}) {
        const Ended ended = runPlain({"demo", "--track", path});

        EXPECT_EQ(ended.exitStatus, 1) << path;
        EXPECT_EQ(ended.output, "") << path;
        EXPECT_EQ(linesOf(ended.errors).size(), 1U) << ended.errors;
        EXPECT_TRUE(ended.errors.starts_with("quorvane: " + path)) << ended.errors;
    }
}

TEST_F(DemoTest, APortThatIsTakenIsOneSentenceAndNoSuccess) {
    const HeldPort taken(HeldPort::Use::listening);
    const std::string port = std::to_string(taken.number());

    for (const char* const option : {"--data-port", "--identity-port"}) {
        const Ended ended = runPlain({"demo", option, port});

        EXPECT_EQ(ended.exitStatus, 1);
        EXPECT_EQ(ended.output, "");
        EXPECT_EQ(linesOf(ended.errors).size(), 1U) << ended.errors;
        EXPECT_NE(ended.errors.find(port), std::string::npos) << ended.errors;
    }
}

TEST_F(DemoTest, OnePortForBothServicesIsAWrongForm) {
    const Ended ended = runPlain({"demo", "--data-port", "45678", "--identity-port", "45678"});

    EXPECT_EQ(ended.exitStatus, 2);
    EXPECT_EQ(ended.errors,
              "quorvane: the demo's services need a port each; --data-port and --identity-port are both "
              "45678\n");
}

/// A demo that waits for its track until `go`.
class WaitingDemoTest : public DemoTest {
protected:
    void begin(const Streams& streams = {}) {
        ASSERT_EQ(mkfifo(track.c_str(), 0600), 0);
        running = start({"demo", "--track", track}, streams);
        // Opens once the program has opened the other end.
        pipe = open(track.c_str(), O_WRONLY | O_CLOEXEC);
        ASSERT_GE(pipe, 0);
    }

    Ended go() {
        EXPECT_EQ(::write(pipe, oneFix.data(), oneFix.size()), static_cast<ssize_t>(oneFix.size()));
        close(pipe);
        return finish(running);
    }

    const std::string track = scratch / "slow.gpx";
    Running running;
    int pipe = -1;
};

TEST_F(WaitingDemoTest, WhoeverInterruptsItFindsEverythingCleanedUp) {
    begin();

    EXPECT_EQ(kill(running.process, SIGTERM), 0);
    const Ended ended = go();

    EXPECT_EQ(ended.exitStatus, 128 + SIGTERM);
    EXPECT_EQ(ended.errors, "");
    EXPECT_EQ(ended.output.find("Summary"), std::string::npos) << ended.output;
}

TEST_F(WaitingDemoTest, AReaderThatGoesAwayLeavesNothingBehind) {
    const std::string output = scratch / "reader";
    ASSERT_EQ(mkfifo(output.c_str(), 0600), 0);
    const int reader = open(output.c_str(), O_RDONLY | O_NONBLOCK | O_CLOEXEC);
    begin({.output = output, .errors = {}, .input = {}});

    close(reader);
    const Ended ended = go();

    EXPECT_EQ(ended.exitStatus, 1);
    EXPECT_EQ(ended.errors, "");
}

TEST_F(DemoTest, ARealRecordingIsRiddenAsWell) {
    const char* const data = std::getenv("QUORVANE_TEST_DATA");
    if (data == nullptr) {
        GTEST_SKIP() << "QUORVANE_TEST_DATA names no folder with recordings";
    }
    const std::string track = std::filesystem::path(data) / "cerknicko-jezero.gpx";

    const Ended told = runPlain({"demo", "--track", track});
    const AnyCodable::Dictionary account = runPlain({"demo", "--track", track, "--json"}).document();

    EXPECT_EQ(told.exitStatus, 0) << told.errors;
    EXPECT_NE(told.output.find(", 296 fixes\n"), std::string::npos) << told.output;
    const AnyCodable::List stops = listIn(account, "stops");
    ASSERT_EQ(stops.size(), 6U);
    std::size_t places = 0;
    for (const AnyCodable& stop : stops) {
        places += listIn(objectIn(stop), "places").size();
        expectAscending(listIn(objectIn(stop), "places"));
    }
    EXPECT_GT(places, 6U);
}

} // namespace
} // namespace quorvane::tool
