#include <algorithm>
#include <cstdlib>
#include <filesystem>
#include <set>

#include "tools/ProgramTest.h"

namespace quorvane::tool {
namespace {

/// What the demo tells of tracking, each preset against the service of the same program.
class DemoTrackingTest : public ProgramTest {
protected:
    AnyCodable::Dictionary demo(const Arguments& more = {}) {
        Arguments arguments{"demo", "--json"};
        arguments.insert(arguments.end(), more.begin(), more.end());
        const Ended ended = runPlain(arguments);
        EXPECT_EQ(ended.exitStatus, 0) << ended.errors;
        return ended.document();
    }

    static AnyCodable::Dictionary preset(const AnyCodable::Dictionary& document, const std::string& name) {
        for (const AnyCodable& one : listIn(document, "tracking")) {
            if (textIn(objectIn(one), "options") == name) {
                return objectIn(one);
            }
        }
        ADD_FAILURE() << "no " << name;
        return {};
    }

    /// The names of what events of that type are about, in their order.
    static std::vector<std::string> namesOf(const AnyCodable::Dictionary& tracked, const std::string& type) {
        std::vector<std::string> names;
        for (const AnyCodable& sync : listIn(tracked, "syncs")) {
            for (const AnyCodable& event : listIn(objectIn(sync), "events")) {
                if (textIn(objectIn(event), "type") == type) {
                    const AnyCodable::Dictionary one = objectIn(event);
                    names.push_back(one.contains("name") ? textIn(one, "name") : "");
                }
            }
        }
        return names;
    }

    static std::size_t syncsWithEvents(const AnyCodable::Dictionary& tracked) {
        const AnyCodable::List syncs = listIn(tracked, "syncs");
        return static_cast<std::size_t>(std::count_if(syncs.begin(), syncs.end(), [](const AnyCodable& sync) {
            return !listIn(objectIn(sync), "events").empty();
        }));
    }

    static double calls(const AnyCodable::Dictionary& tracked, const std::string& name) {
        return numberIn(objectIn(tracked, "delegate"), name);
    }

    static double fixesOf(const AnyCodable::Dictionary& tracked) {
        return numberIn(objectIn(objectIn(tracked, "summary"), "fixes"), "processed");
    }

    /// That one of the sentences has that text in it.
    static void expectReason(const AnyCodable::Dictionary& tracked, const std::string& text) {
        const AnyCodable::List reasons = listIn(tracked, "reasons");
        EXPECT_TRUE(std::any_of(reasons.begin(), reasons.end(), [&](const AnyCodable& reason) {
            return std::get<std::string>(reason.value).find(text) != std::string::npos;
        })) << text;
    }

    static void expectEachSyncAtTheService(const AnyCodable::Dictionary& document);
};

std::string searchAt(const AnyCodable::Dictionary& coordinate) {
    const AnyCodable latitude = coordinate.at("latitude");
    return "/locations/find?lat=" + std::to_string(std::get<double>(latitude.value));
}

void DemoTrackingTest::expectEachSyncAtTheService(const AnyCodable::Dictionary& document) {
    const AnyCodable::List requests = listIn(document, "requests");
    std::size_t syncs = 0;
    for (const char* const name : {"continuous", "responsive", "efficient"}) {
        const AnyCodable::Dictionary tracked = preset(document, name);
        for (const AnyCodable& sync : listIn(tracked, "syncs")) {
            const AnyCodable::Dictionary one = objectIn(sync);
            EXPECT_EQ(textIn(one, "status"), "SUCCESS");
            EXPECT_EQ(numberIn(one, "answer"), 200);
            // "lat=52.0931...": six decimals, the last of which may be rounded there.
            const std::string begin = searchAt(objectIn(one, "at"));
            EXPECT_TRUE(std::any_of(requests.begin(), requests.end(), [&](const AnyCodable& request) {
                return textIn(objectIn(request), "target").starts_with(begin.substr(0, begin.size() - 3)) &&
                       numberIn(objectIn(request), "status") == 200;
            })) << begin;
            ++syncs;
        }
        EXPECT_EQ(numberIn(tracked, "secondsInFlight"), 0) << "the clock stands while a request is in flight";
    }
    const auto isSync = [](const AnyCodable& request) {
        return textIn(objectIn(request), "target").find("&rad=5000") != std::string::npos;
    };
    EXPECT_EQ(static_cast<std::size_t>(std::count_if(requests.begin(), requests.end(), isSync)), syncs);
    EXPECT_GT(syncs, 0U);
}

TEST_F(DemoTrackingTest, EachSyncIsARequestThatTheServiceHasAnswered) {
    expectEachSyncAtTheService(demo());
}

TEST_F(DemoTrackingTest, ContinuousDetectsTheStopsOfTheRide) {
    const AnyCodable::Dictionary tracked = preset(demo(), "continuous");

    const AnyCodable::List stops = listIn(tracked, "stops");
    ASSERT_EQ(stops.size(), 2U);
    EXPECT_EQ(textIn(objectIn(stops[0]), "begin"), "2024-05-18T08:46:00Z");
    EXPECT_EQ(textIn(objectIn(stops[0]), "end"), "2024-05-18T08:51:30Z");
    EXPECT_EQ(textIn(objectIn(stops[1]), "begin"), "2024-05-18T08:59:00Z");
    EXPECT_EQ(namesOf(tracked, "USER_STOPPED_TRAVELING").size(), 2U);
    EXPECT_EQ(namesOf(tracked, "USER_STARTED_TRAVELING").size(), 2U);
}

TEST_F(DemoTrackingTest, ContinuousEntersAndLeavesPlacesAndGeofences) {
    const AnyCodable::Dictionary tracked = preset(demo(), "continuous");

    for (const char* const type :
         {"USER_ENTERED_PLACE", "USER_EXITED_PLACE", "USER_ENTERED_GEOFENCE", "USER_EXITED_GEOFENCE"}) {
        const std::vector<std::string> names = namesOf(tracked, type);
        EXPECT_GE(names.size(), 5U) << type;
        EXPECT_TRUE(std::none_of(names.begin(), names.end(), [](const std::string& name) { return name.empty(); }));
        EXPECT_GE(std::set<std::string>(names.begin(), names.end()).size(), 3U) << type;
    }
    // Each place is left that was entered, but for the one at the end.
    const std::vector<std::string> entered = namesOf(tracked, "USER_ENTERED_PLACE");
    const std::vector<std::string> left = namesOf(tracked, "USER_EXITED_PLACE");
    ASSERT_EQ(entered.size(), left.size() + 1);
    EXPECT_TRUE(std::equal(left.begin(), left.end(), entered.begin()));
}

TEST_F(DemoTrackingTest, TheDelegateHearsOfEachFixEachSyncAndEachSyncWithEvents) {
    const AnyCodable::Dictionary document = demo();

    for (const char* const name : {"continuous", "responsive", "efficient"}) {
        const AnyCodable::Dictionary tracked = preset(document, name);
        EXPECT_GT(fixesOf(tracked), 0) << name;
        EXPECT_EQ(calls(tracked, "onClientLocationUpdated"), fixesOf(tracked)) << name;
        EXPECT_EQ(calls(tracked, "onLocationUpdated"), listIn(tracked, "syncs").size()) << name;
        EXPECT_EQ(calls(tracked, "onEventsReceived"), syncsWithEvents(tracked)) << name;
        EXPECT_GT(calls(tracked, "onEventsReceived"), 0) << name;
        EXPECT_EQ(calls(tracked, "onError"), 0) << name;
    }
}

TEST_F(DemoTrackingTest, ResponsiveAndEfficientDoWhatTheirRulesAllowAndSayWhyTheyDidLess) {
    const AnyCodable::Dictionary document = demo();
    const AnyCodable::Dictionary continuous = preset(document, "continuous");
    const AnyCodable::Dictionary responsive = preset(document, "responsive");
    const AnyCodable::Dictionary efficient = preset(document, "efficient");

    EXPECT_EQ(listIn(continuous, "syncs").size(), 77U);
    EXPECT_TRUE(listIn(continuous, "reasons").empty());
    EXPECT_EQ(listIn(responsive, "syncs").size(), 3U);
    EXPECT_EQ(listIn(responsive, "stops").size(), 2U);
    expectReason(responsive, "Its timer asks every 150 s and not every 30 s.");
    expectReason(responsive, "At a stop it does not ask at all: the phone suspends the application");
    expectReason(responsive, "It sent the first location of all and 2 new stops.");
    expectReason(responsive, "fewer than 140 s had passed since the last one (desiredSyncInterval).");
    expectReason(
        responsive,
        "16 locations were not sent: the user was on the way, and the service never allowed exits (cantExit).");
    expectReason(responsive, "a stop is sent once (alreadyStopped).");
    EXPECT_EQ(listIn(efficient, "syncs").size(), 2U);
    expectReason(efficient,
                 "It has no timer, so the phone suspends the application: only visits can wake it, which happened "
                 "4 times.");
    expectReason(efficient, "So it decided on 4 fixes and not on 77, with the receiver on for 0 s and not for 385 s.");
}

TEST_F(DemoTrackingTest, TheAccountOfTheSameRideIsTheSameEachTime) {
    const AnyCodable::List first = listIn(demo(), "tracking");

    EXPECT_EQ(first.size(), 3U);
    EXPECT_EQ(first, listIn(demo(), "tracking"));
}

TEST_F(DemoTrackingTest, AReaderGetsATableForEachPresetAllSideBySideAndTheReasons) {
    const Ended ended = runPlain({"demo"});

    EXPECT_EQ(ended.exitStatus, 0) << ended.errors;
    std::size_t at = 0;
    for (const char* const text :
         {"\nTracking the ride, CONTINUOUS\n  rules     a fix every 30 s, on the way and at a stop\n",
          "  time      answer  events\n  08:30:32     200  entered ", "  08:46:00     200  stopped\n",
          "  syncs     77, each a request to the service, answered 77 × 200; ",
          "  stops     08:46:00 to 08:51:30, near ",
          "  delegate  77 × onClientLocationUpdated, 77 × onLocationUpdated, ",
          "  phone     woken 0 times by what it monitors, ", "receiver on for 385 s\n", "  network   79 requests, ",
          " bytes sent; the virtual clock went on by 0 s while they were in flight\n",
          "\nTracking the ride, RESPONSIVE\n", "\nTracking the ride, EFFICIENT\n", "  phone     woken 4 times",
          "\nThe presets side by side\n", "CONTINUOUS  RESPONSIVE  EFFICIENT\n", "\nWhy RESPONSIVE did less\n",
          "\nWhy EFFICIENT did less\n", "\nSummary\n", "  82 locations sent while tracking, "}) {
        const std::size_t found = ended.output.find(text, at);
        ASSERT_NE(found, std::string::npos) << text << "\n" << ended.output;
        at = found;
    }
    EXPECT_EQ(ended.output.find("rateLimit"), std::string::npos) << "what is nothing everywhere is not shown";
}

TEST_F(DemoTrackingTest, ARideTooShortForAFixHasNothingToExplain) {
    const std::string track =
        makeFile("one.csv.gpx", R"(<gpx version="1.1" xmlns="http://www.topografix.com/GPX/1/1">)"
                                R"(<trk><trkseg><trkpt lat="46" lon="14"/></trkseg></trk></gpx>)");

    const AnyCodable::Dictionary document = demo({"--track", track});

    for (const char* const name : {"continuous", "responsive", "efficient"}) {
        EXPECT_TRUE(listIn(preset(document, name), "syncs").empty());
        EXPECT_TRUE(listIn(preset(document, name), "reasons").empty());
    }
}

TEST_F(DemoTrackingTest, OfAVeryLongRideTheBeginningIsTracked) {
    std::string points;
    for (const char* const time : {"2024-05-18T00:00:00Z", "2024-05-18T00:10:00Z", "2024-08-18T00:00:00Z"}) {
        points += R"(<trkpt lat="46" lon="14"><time>)" + std::string(time) + "</time></trkpt>";
    }
    const std::string track = makeFile("long.gpx", R"(<gpx version="1.1" xmlns="http://www.topografix.com/GPX/1/1">)"
                                                   "<trk><trkseg>" +
                                                       points + "</trkseg></trk></gpx>");

    const Ended ended = runPlain({"demo", "--track", track});

    EXPECT_EQ(ended.exitStatus, 0) << ended.errors;
    EXPECT_NE(ended.output.find("\nOf this long ride the first 12 h are tracked.\n"), std::string::npos);
    EXPECT_NE(ended.output.find(" 610.0 s "), std::string::npos) << ended.output;
}

TEST_F(DemoTrackingTest, ARealRecordingIsTrackedAsWell) {
    const char* const data = std::getenv("QUORVANE_TEST_DATA");
    if (data == nullptr) {
        GTEST_SKIP() << "QUORVANE_TEST_DATA names no folder with recordings";
    }

    const AnyCodable::Dictionary document = demo({"--track", std::filesystem::path(data) / "cerknicko-jezero.gpx"});

    expectEachSyncAtTheService(document);
    const AnyCodable::Dictionary continuous = preset(document, "continuous");
    EXPECT_EQ(listIn(continuous, "syncs").size(), 240U);
    EXPECT_EQ(listIn(continuous, "stops").size(), 8U);
    for (const char* const type :
         {"USER_ENTERED_PLACE", "USER_EXITED_PLACE", "USER_ENTERED_GEOFENCE", "USER_EXITED_GEOFENCE"}) {
        EXPECT_FALSE(namesOf(continuous, type).empty()) << type;
    }
    for (const char* const name : {"responsive", "efficient"}) {
        const AnyCodable::Dictionary tracked = preset(document, name);
        EXPECT_FALSE(listIn(tracked, "syncs").empty()) << name;
        EXPECT_LT(listIn(tracked, "syncs").size(), 20U) << name;
        EXPECT_GT(numberIn(objectIn(tracked, "summary"), "wakeUps"), 0) << name;
        expectReason(tracked, "(cantExit).");
    }
}

} // namespace
} // namespace quorvane::tool
