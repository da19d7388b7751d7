#include "sandbox/OwnTasks.h"
#include "sandbox/TaskFixture.h"

namespace quorvane::sandbox::test {
namespace {

using ::testing::HasSubstr;

std::string problemWith(const std::vector<std::string>& tasks) {
    auto started = Sandbox::start({.tasks = tasks});
    auto* sentence = std::get_if<std::string>(&started);
    return sentence == nullptr ? "" : *sentence;
}

class OwnTasksTest : public TaskTest {};

TEST_F(OwnTasksTest, ATaskOfOnesOwnIsFoundBesideTheInventedOnes) {
    startWith({.tasks = {R"({"key":"own","state":"running","distance":7,"owners":{"campaign":"mine"},)"
                         R"("location":{"latitude":46.05,"longitude":14.5},"locationKey":"own-place","extra":1.0})"}});

    const QVTask task = found("own");

    EXPECT_EQ(task.state, QVTask::State::generated);
    EXPECT_EQ(task.distance, 0);
    EXPECT_THAT(find("/generate/tasks?cid=mine").body(), HasSubstr(R"("extra":1.0)"));
    EXPECT_THAT(find("/generate/tasks?lid=own-place").body(), HasSubstr(R"("key":"own")"));
    EXPECT_EQ(found(tourKey).key, tourKey);
}

TEST_F(OwnTasksTest, ATaskWithoutAPlaceIsWhereTheClaimRuleMeasuresIt) {
    startWith({.tasks = {R"({"key":"own"})"}});
    EXPECT_THAT(find("/generate/tasks?lat=0&lng=0&rad=1").body(), HasSubstr(R"("key":"own")"));
}

TEST_F(OwnTasksTest, WhatIsNoTaskIsSaidInOneSentence) {
    EXPECT_EQ(problemWith({"{}"}), "The sandbox cannot start: a task of one's own has no key.");
    EXPECT_EQ(problemWith({R"({"key":""})"}), "The sandbox cannot start: a task of one's own has no key.");
    EXPECT_THAT(problemWith({"[1]"}), HasSubstr("cannot be read"));
    EXPECT_THAT(problemWith({"{"}), HasSubstr("cannot be read"));
    EXPECT_THAT(problemWith({R"({"key":"a","questions":1})"}), HasSubstr("cannot be read: questions"));
    EXPECT_THAT(problemWith({R"({"key":"a"})", R"({"key":"a"})"}), HasSubstr("tasks.key"));
}

} // namespace
} // namespace quorvane::sandbox::test
