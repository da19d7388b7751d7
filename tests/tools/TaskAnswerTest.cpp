#include <tuple>

#include "JSON/JSON.h"
#include "tools/DrawnFile.h"
#include "tools/Pictures.h"
#include "tools/TaskTest.h"

namespace quorvane::tool {
namespace {

class TaskAnswerTest : public TaskTest {
protected:
    Ended answer(const std::string& file, const std::string& question, Arguments more) {
        more.insert(more.end(), {"--question", key + "-" + question});
        return tasks("answer", file, more);
    }

    Ended check(const std::string& file, const std::string& question, Arguments more) {
        more.insert(more.end(), {"--question", key + "-" + question});
        return tasks("check", file, more);
    }
};

TEST_F(TaskAnswerTest, AnAnswerIsSentAndTheResponseShown) {
    const Ended ended = answer(claimed(), "q1", {"--answers", "task-00000-q1-a1"});

    EXPECT_EQ(ended.exitStatus, 0) << ended.errors;
    EXPECT_EQ(ended.output,
              "answered task-00000-q1: Is the shop open?\n"
              "  score           5\n"
              "  state           continue\n"
              "  next question   task-00000-q3: What stands in front of the shop?\n");
}

TEST_F(TaskAnswerTest, TheResponseAsJSONHasTheServicesNextQuestion) {
    const Ended ended = answer(claimed(), "q1", {"--answers", "task-00000-q1-a3", "--json"});

    const AnyCodable::Dictionary response = objectIn(ended.document(), "response");
    EXPECT_EQ(textIn(response, "nextKey"), "task-00000-q2");
    EXPECT_EQ(textIn(response, "state"), "continue");
    EXPECT_EQ(listIn(response, "answers"), AnyCodable::List{"task-00000-q1-a3"});
}

TEST_F(TaskAnswerTest, ATaskIsAnsweredByHandUpToItsReward) {
    if (!knowsPictures()) {
        EXPECT_NE(answer(claimed(), "q11", {"--photo", "photo.png"}).exitStatus, 0);
        return;
    }
    const std::string file = claimed();
    const std::vector<std::pair<std::string, Arguments>> answers{
        {"q1", {"--answers", "task-00000-q1-a1"}},
        {"q3", {"--answers", "task-00000-q3-a1,task-00000-q3-a2"}},
        {"q4", {"--answer", "0.95"}},
        {"q5", {"--answer", "4"}},
        {"q6", {"--answer", "5"}},
        {"q7", {"--answer", "Tidy, Žan says"}},
        {"q8", {"--answer", "2026-11-21"}},
        {"q9", {"--answer", "18:30"}},
        {"q10", {"--answer", "4006381333931"}},
    };
    for (const auto& [question, options] : answers) {
        EXPECT_EQ(check(file, question, options).exitStatus, 0) << question;
        const Ended ended = answer(file, question, options);
        EXPECT_EQ(ended.exitStatus, 0) << question << ended.errors;
    }

    const Ended last = answer(file, "q11", {"--photo", drawnFile(scratch / "photo.jpg", 64, 48)});

    EXPECT_EQ(last.exitStatus, 0) << last.errors;
    EXPECT_NE(last.output.find("  state           completed\n"), std::string::npos) << last.output;
    EXPECT_NE(last.output.find("  photo           http://127.0.0.1:"), std::string::npos) << last.output;
    EXPECT_NE(last.output.find("  next question   none\n"), std::string::npos) << last.output;
    EXPECT_NE(searched("--log-level=none").find("completed  A hot drink (earned)"), std::string::npos);
}

TEST_F(TaskAnswerTest, ADrawingIsNoPhoto) {
    const std::string drawing = makeFile(
        "photo.png", R"(<svg xmlns="http://www.w3.org/2000/svg" width="9" height="9"><text y="8">a</text></svg>)");

    const Ended ended = answer(claimed(), "q11", {"--photo", drawing});

    EXPECT_EQ(ended.exitStatus, 1) << ended.errors;
    EXPECT_TRUE(!knowsPictures() || ended.errors.find("this is a drawing") != std::string::npos) << ended.errors;
}

TEST_F(TaskAnswerTest, TheSameAnswerAgainIsTheSameResponse) {
    const std::string file = claimed();
    const Ended once = answer(file, "q1", {"--answers", "task-00000-q1-a1", "--json"});

    const Ended twice = answer(file, "q1", {"--answers", "task-00000-q1-a1", "--json"});

    EXPECT_EQ(once.exitStatus, 0) << once.errors;
    EXPECT_EQ(objectIn(once.document(), "response"), objectIn(twice.document(), "response"));
}

TEST_F(TaskAnswerTest, WhatTheServiceRefusesEndsInOneSentence) {
    const std::string sentence =
        "quorvane: ERROR_TASK_RESPONSE_SUBMIT_FAILURE: the response to the task could not be submitted; is the task "
        "claimed and not completed, is this the question that is due, does tasks check find nothing, and is the "
        "service there?\n";

    const Ended unclaimed = answer(taskFile(), "q1", {"--answers", "task-00000-q1-a1"});
    const Ended wrong = answer(claimed(), "q1", {"--answer", "yes"});

    EXPECT_EQ(unclaimed.exitStatus, 1);
    EXPECT_EQ(unclaimed.errors, sentence);
    EXPECT_EQ(wrong.exitStatus, 1);
    EXPECT_EQ(wrong.errors, sentence);
}

TEST_F(TaskAnswerTest, AMissingPhotoAndAMissingTaskKeyAreRefusedByTheLibraryItself) {
    const Ended photo = answer(taskFile(), "q11", {"--answer", "nothing"});
    const std::string file = makeFile("keyless.json", R"({"questions":[{"key":"task-00000-q1"}]})");
    const Ended keyless = answer(file, "q1", {});

    EXPECT_EQ(photo.exitStatus, 1);
    EXPECT_EQ(photo.errors, "quorvane: ERROR_QUESTION_SUBMIT_FAILURE: A photo is required for this question.\n");
    EXPECT_EQ(keyless.exitStatus, 1);
    EXPECT_EQ(keyless.errors, "quorvane: ERROR_BAD_REQUEST: A task key is required.\n");
    EXPECT_EQ(requestsFor("/tasks/task-00000/responses"), 0U);
}

TEST_F(TaskAnswerTest, ACheckSaysWhetherAnAnswerFitsAndSendsNothing) {
    const std::string file = taskFile();
    service->clearRequests();
    const std::vector<std::tuple<std::string, Arguments, std::string>> cases{
        {"q1", {}, "Selected answers must be between 1 and 1."},
        {"q1", {"--answers", "somebody"}, "Unable to determine value."},
        {"q1", {"--answers", "task-00000-q1-a1"}, ""},
        {"q3",
         {"--answers", "task-00000-q3-a1,task-00000-q3-a2,task-00000-q3-a3,task-00000-q3-a4"},
         "Selected answers must be between 1 and 3."},
        {"q4", {"--answer", "cheap"}, "Unable to convert to numeric format."},
        {"q4", {"--answer", "-1"}, "Answer must be between 0 and 20."},
        {"q4", {"--answer", "19.99"}, ""},
        {"q5", {}, "A rating is required for this question."},
        {"q5", {"--answer", "6"}, "Answer must be between 1 and 5."},
        {"q7", {"--answer", "Žž"}, "Answer must be between 3 and 200 characters."},
        {"q7", {"--answer", "Žžž"}, ""},
        {"q8", {"--answer", ""}, "An date must be provided!"},
        {"q9", {}, "A time is required for this question."},
        {"q10", {}, "An barcode must be provided!"},
        {"q11", {}, "A photo is required for this question."},
    };
    for (const auto& [question, options, message] : cases) {
        SCOPED_TRACE(question);
        const Ended ended = check(file, question, options);

        EXPECT_EQ(ended.exitStatus, message.empty() ? 0 : 1);
        EXPECT_EQ(ended.errors, message.empty() ? "" : "quorvane: " + message + "\n");
        EXPECT_EQ(ended.output.starts_with("the answer fits task-00000-" + question + ": "), message.empty());
    }
    EXPECT_EQ(service->requests().size(), 0U);
}

TEST_F(TaskAnswerTest, ACheckAsJSONHasTheMessageAsItsError) {
    const std::string file = taskFile();

    const AnyCodable::Dictionary wrong = check(file, "q8", {"--json"}).document();
    const AnyCodable::Dictionary right = check(file, "q8", {"--json", "--answer", "today"}).document();

    EXPECT_EQ(wrong, (AnyCodable::Dictionary{{"error", "An date must be provided!"}}));
    EXPECT_EQ(textIn(right, "status"), "SUCCESS");
    EXPECT_EQ(textIn(right, "question"), "task-00000-q8");
}

TEST_F(TaskAnswerTest, AFileThatIsNoPhotoIsOneSentenceAndNothingIsSent) {
    const std::string file = taskFile();
    service->clearRequests();
    const std::string text = makeFile("text.jpg", "a text");
    const std::string absent = (scratch / "absent.jpg").string();
    for (const char* const verb : {"check", "answer"}) {
        const Arguments question{"--question", key + "-q11", "--photo"};
        Arguments wrong = question;
        wrong.push_back(text);
        Arguments none = question;
        none.push_back(absent);

        const Ended refused = tasks(verb, file, wrong);
        const Ended missing = tasks(verb, file, none);

        EXPECT_EQ(refused.exitStatus, 1);
        EXPECT_EQ(refused.output, "");
        const std::string without = "quorvane: this quorvane was built without Qt and knows no pictures\n";
        EXPECT_EQ(refused.errors,
                  knowsPictures() ? "quorvane: " + text + ": this is no picture, or of a kind that is not known here\n"
                                  : without);
        EXPECT_EQ(missing.errors, knowsPictures() ? "quorvane: " + absent + ": No such file or directory\n" : without);
    }
    EXPECT_EQ(service->requests().size(), 0U);
}

} // namespace
} // namespace quorvane::tool
