#include <algorithm>
#include <tuple>

#include "tools/ProgramTest.h"

namespace quorvane::tool {
namespace {

class SearchPlacesTest : public ProgramTest {
protected:
    /// The query of the last request for places.
    [[nodiscard]] std::string lastQuery() const {
        std::string query;
        for (const auto& request : service->requests()) {
            if (request.path() == "/locations/find") {
                query = request.target.substr(request.target.find('?') + 1);
            }
        }
        return query;
    }
};

TEST_F(SearchPlacesTest, PlacesAreListedNearestFirst) {
    serve();

    const AnyCodable::Dictionary found =
        run({"search", "places", "--near", "46.05,14.5", "--radius", "1500", "--json"}).document();

    std::vector<double> distances;
    for (const AnyCodable& entry : listIn(found, "places")) {
        const AnyCodable::Dictionary object = objectIn(entry);
        distances.push_back(numberIn(object, "distance"));
        EXPECT_FALSE(textIn(objectIn(object, "place"), "name").empty());
    }
    EXPECT_EQ(textIn(found, "status"), "SUCCESS");
    EXPECT_GT(distances.size(), 1U);
    EXPECT_TRUE(std::is_sorted(distances.begin(), distances.end()));
    EXPECT_LE(distances.back(), 1500.0);
    EXPECT_EQ(numberIn(objectIn(found, "near"), "latitude"), 46.05);
}

TEST_F(SearchPlacesTest, TheTableHasOneLineForEachPlaceBelowItsHeading) {
    serve();
    const Arguments search = {"search", "places", "--near", "46.05,14.5", "--radius", "1500"};
    Arguments asJSON = search;
    asJSON.emplace_back("--json");
    const std::size_t count = listIn(run(asJSON).document(), "places").size();

    const Ended ended = run(search);

    const std::vector<std::string> lines = linesOf(ended.output);
    ASSERT_EQ(lines.size(), count + 2) << ended.output;
    EXPECT_EQ(lines[0], std::to_string(count) + " places within 1.5 km of 46.05000, 14.50000");
    EXPECT_TRUE(lines[1].starts_with("  distance  place")) << lines[1];
    EXPECT_EQ(ended.errors, "");
}

TEST_F(SearchPlacesTest, PointAndRadiusReachTheService) {
    serve();

    EXPECT_EQ(run({"search", "places", "--near", "-33.5,18.25", "--radius", "70"}).exitStatus, 0);

    EXPECT_NE(lastQuery().find("lat=-33.5"), std::string::npos) << lastQuery();
    EXPECT_NE(lastQuery().find("lng=18.25"), std::string::npos) << lastQuery();
    EXPECT_NE(lastQuery().find("rad=70"), std::string::npos) << lastQuery();
}

TEST_F(SearchPlacesTest, NothingFoundIsASuccessWithoutATable) {
    serve();

    const Ended ended = run({"search", "places", "--near", "-33.5,18.25"});

    EXPECT_EQ(ended.exitStatus, 0);
    EXPECT_EQ(ended.output, "0 places within 1.0 km of -33.50000, 18.25000\n");
}

TEST_F(SearchPlacesTest, WithoutAPointTheDeviceIsAskedAndItsAnswerHandedOn) {
    serve();

    const Ended ended = run({"search", "places"});

    EXPECT_EQ(ended.exitStatus, 1);
    EXPECT_EQ(ended.errors,
              "quorvane: ERROR_PERMISSIONS: the device does not tell where it is; name a point with --near\n");
    EXPECT_EQ(requestsFor("/locations/find"), 0U);
}

TEST_F(SearchPlacesTest, AHomeInWhichNoStoreForPlacesCanBeMadeIsOneSentenceAndNoRequest) {
    serve();
    makeCachesAFile();

    const Ended ended = run({"search", "places", "--near", "46.05,14.5"});

    EXPECT_EQ(ended.exitStatus, 1);
    EXPECT_EQ(ended.output, "");
    EXPECT_EQ(ended.errors, "quorvane: the store for places of your own, " + (home / "caches").string() +
                                "/qvplaces.cache, cannot be made: Not a directory\n");
    EXPECT_EQ(service->requests().size(), 0U);
}

TEST_F(SearchPlacesTest, AFailedSignInEndsTheSearch) {
    serve({"/token:status=402"});

    const Ended ended = run({"search", "places", "--near", "46.05,14.5"});

    EXPECT_EQ(ended.exitStatus, 1);
    EXPECT_TRUE(ended.errors.starts_with("quorvane: ERROR_PAYMENT_REQUIRED: ")) << ended.errors;
    EXPECT_EQ(requestsFor("/locations/find"), 0U);
}

using Trouble = std::tuple<std::string, std::string>;

class FailedSearch : public ProgramTest, public ::testing::WithParamInterface<Trouble> {};

TEST_P(FailedSearch, EndsWithOneAndTheFullNameOfItsStatus) {
    const auto& [fault, status] = GetParam();
    serve({"/locations/find:" + fault, "/generate/tasks:" + fault});

    const Ended places = run({"search", "places", "--near", "46.05,14.5"});
    const Ended tasks = run({"search", "tasks", "--near", "46.05,14.5", "--json"});

    EXPECT_EQ(places.exitStatus, 1);
    EXPECT_EQ(places.output, "");
    EXPECT_TRUE(places.errors.starts_with("quorvane: " + status + ": ")) << places.errors;
    EXPECT_EQ(tasks.exitStatus, 1);
    EXPECT_EQ(textIn(tasks.document(), "status"), status);
}

INSTANTIATE_TEST_SUITE_P(
    Faults, FailedSearch,
    ::testing::Values(Trouble{"status=400", "ERROR_BAD_REQUEST"}, Trouble{"status=403", "ERROR_FORBIDDEN"},
                      Trouble{"status=404", "ERROR_NOT_FOUND"}, Trouble{"status=500", "ERROR_SERVER"},
                      Trouble{"status=600", "ERROR_UNKNOWN"}, Trouble{"drop", "ERROR_NETWORK"},
                      Trouble{"expired-token", "ERROR_UNAUTHORIZED"}, Trouble{"invalid-json", "ERROR_SERIALIZATION"}));

} // namespace
} // namespace quorvane::tool
