#include <limits>
#include <memory>

#include <gtest/gtest.h>

#include "Models/Equality.h"
#include "Models/ModelTesting.h"
#include "Tasks/QVTask.h"

namespace quorvane {
namespace {

std::shared_ptr<QVTask> taskOf(const std::string& key, const std::string& locationKey) {
    auto task = std::make_shared<QVTask>();
    task->key = key;
    task->locationKey = locationKey;
    return task;
}

std::shared_ptr<QVTask> taskOf(const std::string& key, const std::string& locationKey, const std::string& campaign) {
    auto task = taskOf(key, locationKey);
    task->owners = std::make_shared<QVOwners>();
    task->owners->campaign = campaign;
    return task;
}

TEST(QVTask, EveryKeyIsReadAndWritten) {
    const std::string text =
        R"({"associatesOnly":true,"claimDistanceOverride":1.5,"created":1,"completed":2,"description":"Look",)"
        R"("distance":2.5,"due":3,"key":"t1","location":{"city":"Town","confidence":1,"latitude":46.5,)"
        R"("longitude":-14.25,"formattedAddress":" Town,   "},"locationKey":"l1","logo":"logo.png","modified":4,)"
        R"("nextQuestion":"q1","owners":{"campaign":"c1"},"questions":[{"allowDecimals":false,"answerOrder":"",)"
        R"("answers":[],"criticalAnswers":[],"images":[],"openTextSuggestions":[],"question":"Open?",)"
        R"("scoreIntervals":[],"showUnitsOnLeft":false,"thresholdAnswers":[],"type":"openEnded"}],)"
        R"("rewards":[{"key":"r1"}],"state":"running","taskRequirements":["Bring a camera."],)"
        R"("time":{"max":20,"min":10},"title":"Shelf check","version":5})";

    const auto task = json::decode<QVTask>(text);

    EXPECT_TRUE(task.associatesOnly);
    EXPECT_EQ(task.claimDistanceOverride, 1.5);
    EXPECT_EQ(task.created, 1);
    EXPECT_EQ(task.completed, 2);
    EXPECT_EQ(task.description, "Look");
    EXPECT_EQ(task.distance, 2.5);
    EXPECT_EQ(task.due, 3);
    EXPECT_EQ(task.key, "t1");
    ASSERT_TRUE(task.location);
    EXPECT_EQ(task.location->coordinate, (platform::Coordinate{46.5, -14.25}));
    EXPECT_EQ(task.locationKey, "l1");
    EXPECT_EQ(task.logo, "logo.png");
    EXPECT_EQ(task.modified, 4);
    EXPECT_EQ(task.nextQuestion, "q1");
    ASSERT_TRUE(task.owners);
    EXPECT_EQ(task.owners->campaign, "c1");
    ASSERT_EQ(task.questions.size(), 1U);
    EXPECT_EQ(task.questions[0]->question, "Open?");
    ASSERT_EQ(task.rewards.size(), 1U);
    EXPECT_EQ(task.rewards[0]->key, "r1");
    EXPECT_EQ(task.state, QVTask::State::running);
    EXPECT_EQ(task.taskRequirements, std::vector<std::string>{"Bring a camera."});
    ASSERT_TRUE(task.time);
    EXPECT_EQ(task.time->max, 20);
    EXPECT_EQ(task.title, "Shelf check");
    EXPECT_EQ(task.version, 5);
    EXPECT_EQ(json::encode(task), text);
}

TEST(QVTask, ANewOneIsEmptyAndOfUnknownState) {
    const std::string empty =
        R"({"associatesOnly":false,"distance":0.0,"locationKey":"","questions":[],"rewards":[],"state":"unknown",)"
        R"("taskRequirements":[]})";

    EXPECT_EQ(json::encode(QVTask()), empty);
    EXPECT_EQ(recoded<QVTask>("{}"), empty);
}

TEST(QVTask, AStateThatIsNoneFailsIt) {
    EXPECT_EQ(failureOf<QVTask>(R"({"state":"paused"})"), "state: expected a task state, found \"paused\"");
}

TEST(QVTask, AQuestionOfNoTypeFailsItAndTheMessageSaysWhere) {
    EXPECT_EQ(failureOf<QVTask>(R"({"questions":[{"type":"date"},{"type":"time"},{"type":"slider"}]})"),
              "questions[2].type: expected a question type, found \"slider\"");
}

TEST(QVTask, AnAnswerOfTheWrongKindFailsItAndTheMessageSaysWhere) {
    EXPECT_EQ(failureOf<QVTask>(R"({"questions":[{"answers":[{},{"photoCaptureOptions":{"photoLevelType":3}}]}]})"),
              "questions[0].answers[1].photoCaptureOptions.photoLevelType: expected a photo level type, found 3");
}

TEST(QVTask, AMalformedLocationKeyDoesNotFailIt) {
    const auto task = json::decode<QVTask>(R"({"location":{"zipCode":90000,"city":"Town","latitude":1}})");

    ASSERT_TRUE(task.location);
    EXPECT_EQ(task.location->city, "Town");
    EXPECT_EQ(task.location->coordinate, platform::Coordinate::invalid);
}

TEST(QVTask, EveryStateIsReadFromItsTextAndWrittenAsIt) {
    for (const char* const state :
         {"cancelled", "completed", "continue", "error", "generated", "invalid", "rejected", "running", "unknown"}) {
        const std::string member = std::string(R"("state":")") + state + "\"";
        EXPECT_NE(recoded<QVTask>("{" + member + "}").find(member), std::string::npos) << state;
    }
    EXPECT_EQ(json::fromRawValue<QVTask::State>("continue"), QVTask::State::continue_);
    EXPECT_FALSE(json::fromRawValue<QVTask::State>("continue_"));
    EXPECT_FALSE(json::fromRawValue<QVTask::State>("Running"));
}

TEST(QVTask, TheDistanceTextSaysMilesEvenWhenItIsInKilometres) {
    QVTask task;
    task.distance = 2.0;

    EXPECT_EQ(task.distanceText(false), "2.00 miles away");
    EXPECT_EQ(task.distanceText(true), "3.22 miles away");
}

TEST(QVTask, TheDistanceTextOfNothingHasItsDecimals) {
    EXPECT_EQ(QVTask().distanceText(true), "0.00 miles away");
    EXPECT_EQ(QVTask().distanceText(false), "0.00 miles away");
}

TEST(QVTask, TheDistanceTextOfTheLargestDoubleIsWrittenOut) {
    QVTask task;
    task.distance = std::numeric_limits<double>::max();

    EXPECT_EQ(task.distanceText(false).size(), std::string(".00 miles away").size() + 309);
    EXPECT_EQ(task.distanceText(true), "inf miles away");
}

TEST(QVTask, TasksOfOneCampaignAtOnePlaceAreEqualWhateverTheirKeys) {
    EXPECT_EQ(*taskOf("t1", "l1", "c1"), *taskOf("t2", "l1", "c1"));
    EXPECT_NE(*taskOf("t1", "l1", "c1"), *taskOf("t1", "l2", "c1"));
    EXPECT_NE(*taskOf("t1", "l1", "c1"), *taskOf("t1", "l1", "c2"));
}

TEST(QVTask, ATaskWithoutACampaignDiffersFromOneWithACampaign) {
    EXPECT_NE(*taskOf("t1", "l1"), *taskOf("t1", "l1", "c1"));
    EXPECT_NE(*taskOf("t1", "l1", "c1"), *taskOf("t1", "l1"));
}

TEST(QVTask, OwnersWithoutACampaignEqualNoOwners) {
    auto owned = taskOf("t1", "l1");
    owned->owners = std::make_shared<QVOwners>();

    EXPECT_EQ(*owned, *taskOf("t2", "l1"));
    EXPECT_TRUE(haveEqualObjects(owned, taskOf("t2", "l1")));
}

} // namespace
} // namespace quorvane
