#include <fstream>
#include <set>

#include "tools/Pictures.h"
#include "tools/ProgramTest.h"

namespace quorvane::tool {
namespace {

class DemoTaskTest : public ProgramTest {};

TEST_F(DemoTaskTest, TheWayOfATaskIsToldStepByStep) {
    const Ended ended = runPlain({"demo"});

    EXPECT_EQ(ended.exitStatus, 0) << ended.errors;
    std::size_t at = 0;
    for (const char* const text : {"\nPlaces of your own, near ",
                                   "  SUCCESS   2 places stored on the device\n",
                                   "  Our bicycle shed  ",
                                   "  yes\n",
                                   "\nA task, near ",
                                   "  chosen    A tour of ",
                                   ", 11 questions\n",
                                   "\nClaiming it\n",
                                   "  ERROR_TASK_OUT_OF_RANGE  it is 5.6 km away and can be claimed within 161 m\n",
                                   "  data      POST  /tasks                       200\n",
                                   "  SUCCESS   claimed, and running\n",
                                   "\nWhat it asks\n",
                                   "  I will have to answer 11 question(s).\n",
                                   "  task-00000-q2  Why is it closed?  (one choice)\n",
                                   "\ntask-00000-q1: Is the shop open?\n",
                                   "  wrong     Yes and Only in part: Selected answers must be between 1 and 1.\n",
                                   "  answer    Yes\n",
                                   "  data      POST  /tasks/task-00000/responses  200\n",
                                   "  SUCCESS   5 points, next task-00000-q3\n",
                                   "\ntask-00000-q10: Scan the code on the shelf.\n"}) {
        const std::size_t found = ended.output.find(text, at);
        ASSERT_NE(found, std::string::npos) << text << "\n" << ended.output;
        at = found;
    }
    const std::vector<const char*> ending =
        knowsPictures() ? std::vector<const char*>{", with a photo of 1600 × 1200 pixels\n",
                                                   "  SUCCESS   0 points, completed\n",
                                                   "  photo     half of it, stored as http://127.0.0.1:",
                                                   "\nThe reward\n",
                                                   "  completed  A hot drink (earned)\n",
                                                   "  reward    A hot drink (earned)\n",
                                                   "  score     23 points in total\n",
                                                   "\nSummary\n"}
                        : std::vector<const char*>{
                              "  skipped   this quorvane was built without Qt and has no photo to send: the task "
                              "stays open\n",
                              "\nSummary\n"};
    for (const char* const text : ending) {
        const std::size_t found = ended.output.find(text, at);
        ASSERT_NE(found, std::string::npos) << text << "\n" << ended.output;
        at = found;
    }
}

TEST_F(DemoTaskTest, TheJSONDocumentHasEveryAnswerAndTheReward) {
    const AnyCodable::Dictionary account = runPlain({"demo", "--json"}).document();

    const AnyCodable::Dictionary task = objectIn(account, "task");
    EXPECT_EQ(textIn(task, "key"), "task-00000");
    EXPECT_EQ(listIn(task, "requirements").size(), 3U);
    EXPECT_EQ(listIn(task, "questions").size(), 11U);
    std::set<std::string> types;
    for (const AnyCodable& answer : listIn(task, "answers")) {
        types.insert(textIn(objectIn(answer), "type"));
    }
    EXPECT_EQ(types.size(), 9U) << "every type of question";
    EXPECT_GT(listIn(account, "ownPlaces").size(), 2U);
    EXPECT_EQ(task.at("completed"), AnyCodable(knowsPictures()));
    if (knowsPictures()) {
        EXPECT_EQ(listIn(task, "answers").size(), 10U);
        EXPECT_EQ(numberIn(task, "score"), 23);
        EXPECT_EQ(textIn(objectIn(listIn(task, "rewards").at(0)), "state"), "earned");
    }
}

TEST_F(DemoTaskTest, AStepThatFailsEndsTheDemoWithoutSuccess) {
    EXPECT_EQ(runPlain({"demo", "--home", home}).exitStatus, 0);
    std::filesystem::path cache;
    for (const auto& entry : std::filesystem::recursive_directory_iterator(home)) {
        cache = entry.path().filename() == "qvplaces.cache" ? entry.path() : cache;
    }
    std::filesystem::remove_all(cache);
    std::ofstream(cache) << "a file in the place of the folder";

    const Ended ended = runPlain({"demo", "--home", home});

    EXPECT_EQ(ended.exitStatus, 1);
    EXPECT_NE(ended.errors.find("quorvane: the store for places of your own, " + cache.string() + ", cannot be made: "),
              std::string::npos)
        << ended.errors;
    EXPECT_NE(ended.output.find("\nSign-in\n"), std::string::npos) << ended.output;
    EXPECT_EQ(ended.output.find("Summary"), std::string::npos) << ended.output;
}

} // namespace
} // namespace quorvane::tool
