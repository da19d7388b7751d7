#include <cmath>
#include <optional>

#include "Models/Base64.h"
#include "testing/SimulatedDigest.h"
#include "tools/ReplayTest.h"
#include "tools/replay/ReplayMap.h"

namespace quorvane::tool {
namespace {

class ReplayPageTest : public ReplayTest {
protected:
    std::string page(const std::string& track, Arguments more = {}) {
        more.insert(more.end(), {"--format", "html"});
        const Ended ended = replay(track, more);
        EXPECT_EQ(ended.exitStatus, 0) << ended.errors;
        return ended.output;
    }
};

/// What stands between @p from and @p to.
std::string between(const std::string& text, const std::string& from, const std::string& to) {
    const std::size_t begin = text.find(from);
    const std::size_t end = begin == std::string::npos ? begin : text.find(to, begin + from.size());
    EXPECT_NE(end, std::string::npos) << from;
    return end == std::string::npos ? "" : text.substr(begin + from.size(), end - begin - from.size());
}

std::string sourceOf(const std::string& text) {
    const auto digest = testing::SimulatedDigest().sha256(text);
    return "'sha256-" + base64(std::string(digest.begin(), digest.end())) + "'";
}

TEST_F(ReplayPageTest, TheMapHasTheWayTheFixesStopsEventsPlacesTheScaleAndTheNorth) {
    const std::string html = page(ride, {"--places", places()});
    const std::string map = between(html, "<svg id=\"map\"", "</svg>");

    EXPECT_EQ(linesWith(map, "<polyline class=\"way\" points=\""), 1U);
    EXPECT_EQ(linesWith(map, "class=\"mark sent\""), 77U);
    EXPECT_EQ(linesWith(map, "class=\"mark stop\""), 2U);
    EXPECT_EQ(linesWith(map, "class=\"mark event\""), 8U);
    EXPECT_EQ(linesWith(map, "<title>Market</title>"), 1U);
    EXPECT_EQ(linesWith(map, "Far away"), 0U) << "it is not on the map";
    EXPECT_EQ(linesWith(map, ">500 m</text>"), 1U);
    EXPECT_EQ(linesWith(map, ">N</text>"), 1U);
    EXPECT_EQ(linesWith(html, "<button type=\"button\" data-go="), 10U) << "two stops and eight events";
    EXPECT_EQ(linesWith(html, "<td>77</td>"), 7U) << "decided on, kept, sent, synced with success, granted, asked for";
}

TEST_F(ReplayPageTest, FixesThatAreNotSentAndGeofencesThatAreGoneAreDrawnAsSuch) {
    std::string track = "lat,lon,time\n";
    for (int minute = 0; minute < 40; ++minute) {
        // Ten minutes at home, some away, and the rest there.
        const int moved = std::min(std::max(minute - 10, 0), 10);
        track += "46.0" + std::to_string(10 + moved) + ",14.5," + std::to_string(1'700'000'000 + minute * 60) + "\n";
    }

    const std::string html = page(makeFile("errand.csv", track), {"--options", "responsive"});

    EXPECT_GT(linesWith(html, "class=\"mark kept\""), 0U);
    EXPECT_GT(linesWith(html, "class=\"fence\" data-t="), 1U);
    EXPECT_GT(linesWith(html, "data-e=\""), 0U);
}

TEST_F(ReplayPageTest, ThePageNeedsNoNetworkAndLetsInItsOwnStyleAndScriptOnly) {
    const std::string html = page(ride);

    const std::string policy = between(html, "Content-Security-Policy\" content=\"", "\"");
    EXPECT_EQ(policy, "default-src 'none'; style-src " + sourceOf(between(html, "<style>", "</style>")) +
                          "; script-src " + sourceOf(between(html, "<script>", "</script>")) +
                          "; base-uri 'none'; form-action 'none'");
    for (const char* const reference :
         {"http://", "https://", "src=\"", "href=\"", "url(http", "@import", " style=\""}) {
        EXPECT_EQ(html.find(reference), std::string::npos) << reference;
    }
}

TEST_F(ReplayPageTest, ThePresetsStandSideBySideInItsSummary) {
    const std::string html = page(ride, {"--compare", "--options", "responsive"});

    EXPECT_EQ(linesWith(html, "<th>continuous</th><th>responsive</th><th>efficient</th>"), 1U);
    EXPECT_EQ(linesWith(html, "<td>77</td><td>22</td><td>4</td>"), 2U) << "decided on and kept";
    EXPECT_EQ(linesWith(html, "<h1>Replay of ride.gpx, responsive</h1>"), 1U);
    EXPECT_EQ(linesWith(between(html, "<svg id=\"map\"", "</svg>"), "class=\"mark kept\""), 19U)
        << "the map is that of the options that were named";
}

TEST_F(ReplayPageTest, NamesAreTextAndNoMarkup) {
    const std::string hostile = makeFile("hostile.json", R"([{"id": "p", "name": "</script><script>alert(1)</script>",
        "latitude": 52.1030, "longitude": 5.6828}])");

    const std::string html = page(ride, {"--places", hostile});

    EXPECT_EQ(html.find("<script>alert"), std::string::npos);
    EXPECT_NE(html.find("&lt;/script&gt;&lt;script&gt;alert(1)"), std::string::npos);
}

TEST_F(ReplayPageTest, TheSameInputGivesTheSamePage) {
    const std::string first = page(ride, {"--compare"});
    environment.emplace_back("TZ", "Pacific/Auckland");

    EXPECT_EQ(first, page(ride, {"--compare"}));
    EXPECT_EQ(replayRide({"--format", "html", "--output", (scratch / "page.html").string(), "--compare"}).output, "");
    EXPECT_EQ(contentOf("page.html"), first);
}

TEST(ReplayMapTest, NorthIsUpEastIsRightAndAllDirectionsHaveOneScale) {
    const platform::Coordinate home{60, 10};
    const ReplayMap map({home, {60.01, 10}, {60, 10.02}});

    const ReplayMap::Point origin = map.at(home);
    const ReplayMap::Point north = map.at({60.01, 10});
    const ReplayMap::Point east = map.at({60, 10.02});
    EXPECT_NEAR(north.x, origin.x, 1e-6);
    EXPECT_LT(north.y, origin.y);
    EXPECT_NEAR(east.y, origin.y, 1e-6);
    // A degree of longitude is half as long as one of latitude there.
    EXPECT_NEAR(east.x - origin.x, origin.y - north.y, 1e-3);
}

TEST(ReplayMapTest, AWayAcrossTheDateLineIsNotTornApart) {
    const ReplayMap map({{0, 179.999}, {0, -179.999}});

    EXPECT_TRUE(map.holds({0, 179.999}));
    EXPECT_TRUE(map.holds({0, -179.999}));
    EXPECT_GT(map.at({0, -179.999}).x, map.at({0, 179.999}).x);
    EXPECT_FALSE(map.holds({0, 0}));
}

TEST(ReplayMapTest, OnePointAndThePolesHaveMapsToo) {
    for (const double latitude : {0.0, 90.0, -90.0}) {
        const ReplayMap map({{latitude, 5}, {latitude, 175}});
        EXPECT_TRUE(map.holds({latitude, 5}));
        EXPECT_TRUE(std::isfinite(map.at({latitude, 175}).x));
        EXPECT_EQ(map.svg().find("nan"), std::string::npos);
    }
    EXPECT_TRUE(ReplayMap({{46, 14}}).holds({46, 14}));
}

} // namespace
} // namespace quorvane::tool
