#include "tools/ProgramTest.h"

namespace quorvane::tool {
namespace {

class SearchTasksTest : public ProgramTest {
protected:
    [[nodiscard]] std::string lastQuery() const {
        std::string query;
        for (const auto& request : service->requests()) {
            if (request.path() == "/generate/tasks") {
                query = request.target.substr(request.target.find('?') + 1);
            }
        }
        return query;
    }
};

TEST_F(SearchTasksTest, TasksAroundAPointCarryTheirDistanceTexts) {
    serve();

    const AnyCodable::Dictionary found =
        run({"search", "tasks", "--near", "46.05,14.5", "--radius", "2000", "--json"}).document();

    const AnyCodable::List tasks = listIn(found, "tasks");
    EXPECT_EQ(textIn(found, "status"), "SUCCESS");
    EXPECT_FALSE(tasks.empty());
    for (const AnyCodable& entry : tasks) {
        EXPECT_TRUE(textIn(objectIn(entry), "distanceText").ends_with(" miles away"));
        EXPECT_FALSE(textIn(objectIn(objectIn(entry), "task"), "title").empty());
    }
}

TEST_F(SearchTasksTest, TheTableHasTitleDistanceStateAndRewards) {
    serve();

    const Ended ended = run({"search", "tasks", "--near", "46.05,14.5", "--radius", "2000"});

    const std::vector<std::string> lines = linesOf(ended.output);
    ASSERT_GT(lines.size(), 3U);
    EXPECT_TRUE(lines[0].ends_with(" tasks within 2.0 km of 46.05000, 14.50000")) << lines[0];
    for (const char* const column : {"task", "distance", "state", "rewards"}) {
        EXPECT_NE(lines[1].find(column), std::string::npos) << lines[1];
    }
    EXPECT_NE(lines[2].find(" miles away  generated"), std::string::npos) << lines[2];
}

TEST_F(SearchTasksTest, TheRadiusToExcludeReachesTheService) {
    serve();

    const Ended ended = run({"search", "tasks", "--near", "46.05,14.5", "--radius", "2000", "--exclude", "500"});

    EXPECT_EQ(ended.exitStatus, 0);
    EXPECT_NE(ended.output.find(" within 2.0 km but not within 500 m of "), std::string::npos) << ended.output;
    EXPECT_NE(lastQuery().find("rad=2000"), std::string::npos) << lastQuery();
    EXPECT_NE(lastQuery().find("min=500"), std::string::npos) << lastQuery();
}

TEST_F(SearchTasksTest, TheTasksOfACampaignNeedNoPoint) {
    serve();
    const AnyCodable::Dictionary around =
        run({"search", "tasks", "--near", "46.05,14.5", "--radius", "3000", "--json"}).document();
    ASSERT_FALSE(listIn(around, "tasks").empty());
    const AnyCodable::Dictionary first = objectIn(objectIn(listIn(around, "tasks").front()), "task");
    const std::string campaign = textIn(objectIn(first, "owners"), "campaign");

    const Ended ended = run({"search", "tasks", "--campaign", campaign, "--json"});

    const AnyCodable::List tasks = listIn(ended.document(), "tasks");
    EXPECT_FALSE(tasks.empty());
    for (const AnyCodable& entry : tasks) {
        EXPECT_EQ(textIn(objectIn(objectIn(objectIn(entry), "task"), "owners"), "campaign"), campaign);
    }
    EXPECT_EQ(lastQuery(), "cid=" + campaign);
    EXPECT_EQ(ended.document().count("near"), 0U);
}

TEST_F(SearchTasksTest, TheTasksOfAPlaceNeedNoPoint) {
    serve();

    const Ended ended = run({"search", "tasks", "--place", "no such place"});

    EXPECT_EQ(ended.exitStatus, 0) << ended.errors;
    EXPECT_EQ(ended.output, "0 tasks of place no such place\n");
    EXPECT_TRUE(lastQuery().starts_with("lid=no")) << lastQuery();
}

TEST_F(SearchTasksTest, WithoutAPointTheDeviceIsAskedAndItsAnswerHandedOn) {
    serve();

    const Ended ended = run({"search", "tasks", "--radius", "10"});

    EXPECT_EQ(ended.exitStatus, 1);
    EXPECT_TRUE(ended.errors.starts_with("quorvane: ERROR_PERMISSIONS: ")) << ended.errors;
}

} // namespace
} // namespace quorvane::tool
