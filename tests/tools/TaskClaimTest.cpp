#include "tools/TaskTest.h"

namespace quorvane::tool {
namespace {

class TaskClaimTest : public TaskTest {
protected:
    void expectRefused(const Ended& ended, const std::string& sentence) {
        EXPECT_EQ(ended.exitStatus, 1);
        EXPECT_EQ(ended.output, "");
        EXPECT_EQ(ended.errors, "quorvane: " + sentence + "\n");
    }
};

TEST_F(TaskClaimTest, ATaskIsClaimedOutOfWhatASearchPrintedByItsNumber) {
    const std::string search = searched();

    const Ended ended = tasks("claim", makeFile("found.json", search), {"--number", numberIn(search), "--at", here});

    EXPECT_EQ(ended.exitStatus, 0) << ended.errors;
    EXPECT_EQ(ended.errors, "");
    const std::vector<std::string> lines = linesOf(ended.output);
    ASSERT_EQ(lines.size(), 4U) << ended.output;
    EXPECT_TRUE(lines[0].starts_with("claimed ")) << lines[0];
    EXPECT_EQ(lines[1], "  key             task-00000");
    EXPECT_EQ(lines[2], "  state           running");
    EXPECT_EQ(lines[3], "  next question   task-00000-q1: Is the shop open?");
    EXPECT_EQ(requestsFor("/tasks"), 1U);
}

TEST_F(TaskClaimTest, TheNumbersAreThoseOfTheTable) {
    const std::string number = numberIn(searched());

    const Ended table = run({"search", "tasks", "--near", here, "--radius", "1000"});

    const std::string line = linesOf(table.output).at(std::stoul(number) + 1);
    EXPECT_EQ(line.substr(line.find_first_not_of(' '), number.size() + 1), number + " ") << table.output;
}

TEST_F(TaskClaimTest, TheClaimedTaskAsJSONIsAFileForTheOtherCommands) {
    const Ended ended = tasks("claim", taskFile(), {"--at", here, "--json"});

    const AnyCodable::Dictionary document = ended.document();
    EXPECT_EQ(textIn(document, "status"), "SUCCESS");
    EXPECT_EQ(textIn(objectIn(document, "task"), "state"), "running");
    EXPECT_EQ(tasks("questions", makeFile("claimed.json", ended.output)).exitStatus, 0);
}

TEST_F(TaskClaimTest, TheFileMayComeOnStandardInput) {
    const Ended ended =
        finish(start({"tasks", "questions", "--task", "-"}, {.output = {}, .errors = {}, .input = taskFile()}));

    EXPECT_EQ(ended.exitStatus, 0) << ended.errors;
    EXPECT_TRUE(ended.output.starts_with("11 questions of ")) << ended.output;
}

TEST_F(TaskClaimTest, OutOfRangeItSaysHowFarItIsAndSendsNoClaim) {
    expectRefused(tasks("claim", taskFile(), {"--at", far}),
                  "ERROR_TASK_OUT_OF_RANGE: the task's place is too far away; it is 5.6 km away and can be claimed "
                  "within 161 m");
    EXPECT_EQ(requestsFor("/tasks"), 0U);
}

TEST_F(TaskClaimTest, JustOutOfRangeBothDistancesAreToldApart) {
    const std::string file =
        makeFile("beside.json", R"({"key":"beside","location":{"latitude":46.05,"longitude":14.5}})");

    expectRefused(tasks("claim", file, {"--at", "46.0514497,14.5"}),
                  "ERROR_TASK_OUT_OF_RANGE: the task's place is too far away; it is 161.2 m away and can be claimed "
                  "within 160.9 m");
}

TEST_F(TaskClaimTest, AHomeInWhichNoStoreForPlacesCanBeMadeIsOneSentence) {
    const std::string file = taskFile();
    makeCachesAFile();

    expectRefused(tasks("claim", file, {"--at", here}), "the store for places of your own, " +
                                                            (home / "caches").string() +
                                                            "/qvplaces.cache, cannot be made: Not a directory");
    EXPECT_EQ(requestsFor("/tasks"), 0U);
}

TEST_F(TaskClaimTest, WithoutAPlaceTheDeviceHasNone) {
    expectRefused(tasks("claim", taskFile()),
                  "ERROR_LOCATION: the device does not tell where it is; name where you are with --at");
    EXPECT_EQ(requestsFor("/tasks"), 0U);
}

TEST_F(TaskClaimTest, ATaskThatTheServiceDoesNotKnowIsNotFound) {
    const std::string file =
        makeFile("unknown.json", R"({"key":"nobody's","questions":[],"claimDistanceOverride":9999})");

    expectRefused(tasks("claim", file, {"--at", here}),
                  "ERROR_NOT_FOUND: the service does not know what was asked for");
}

TEST_F(TaskClaimTest, WhatTheServiceForbidsIsSaidWithItsLikelyReasons) {
    serve({"/tasks:status=403"});

    expectRefused(tasks("claim", taskFile(), {"--at", here}),
                  "ERROR_FORBIDDEN: the service does not give the task to you; it may be done, over, cancelled, too "
                  "far away or meant for others");
}

TEST_F(TaskClaimTest, AServiceThatIsNotThereIsOneSentence) {
    serve({"/tasks:drop"});
    const std::string file = taskFile();

    const Ended ended = tasks("claim", file, {"--at", here});

    EXPECT_EQ(ended.exitStatus, 1);
    EXPECT_TRUE(ended.errors.starts_with("quorvane: ERROR_NETWORK: no whole answer came from the service; is "))
        << ended.errors;
}

TEST_F(TaskClaimTest, AFileThatHoldsNoTaskIsOneSentenceAndNoRequest) {
    service->clearRequests();
    const std::string several = makeFile("several.json", R"([{"questions":[]},{"questions":[]}])");
    const std::string wrong = makeFile("wrong.json", R"({"questions":[{"type":"slider"}]})");
    const std::string other = makeFile("other.json", R"({"status":"ERROR_NETWORK","error":"no answer"})");
    const std::string empty = makeFile("empty.json", R"({"tasks":[]})");
    const std::string text = makeFile("text.json", "a task");
    const std::string absent = (scratch / "absent.json").string();

    expectRefused(tasks("claim", several), several + " holds 2 tasks; choose one with --number");
    expectRefused(tasks("claim", several, {"--number", "3"}), several + " holds 2 tasks; there is no number 3");
    expectRefused(tasks("claim", other), other + " holds what is no task");
    expectRefused(tasks("claim", empty), empty + " holds no task");
    expectRefused(tasks("claim", absent), absent + ": No such file or directory");
    expectRefused(tasks("claim", scratch.string()), scratch.string() + ": Is a directory");
    expectRefused(tasks("claim", "-"), "standard input: the text is empty");
    EXPECT_TRUE(tasks("claim", text).errors.starts_with("quorvane: " + text + ": ")) << tasks("claim", text).errors;
    const Ended broken = tasks("claim", wrong);
    EXPECT_EQ(broken.errors,
              "quorvane: " + wrong + ": questions[0].type: expected a question type, found \"slider\"\n");
    EXPECT_EQ(service->requests().size(), 0U);
}

} // namespace
} // namespace quorvane::tool
