#include "tools/TaskTest.h"

namespace quorvane::tool {
namespace {

class TaskReadingTest : public TaskTest {
protected:
    /// Everything here is done without a service.
    std::string offline() {
        std::string file = taskFile();
        std::filesystem::remove_all(home);
        service.reset();
        return file;
    }
};

TEST_F(TaskReadingTest, TheRequirementsAreTheLibrarysSentences) {
    const std::string file = offline();

    const Ended ended = tasks("requirements", file);

    EXPECT_EQ(ended.exitStatus, 0) << ended.errors;
    const std::vector<std::string> lines = linesOf(ended.output);
    ASSERT_EQ(lines.size(), 4U) << ended.output;
    EXPECT_TRUE(lines[0].starts_with("3 requirements of ")) << lines[0];
    EXPECT_EQ(lines[1], "  I will have to answer 11 question(s).");
    EXPECT_EQ(lines[2], "  I will have to take 1 picture(s).");
    EXPECT_EQ(lines[3], "  Ask before you take photographs.");
    EXPECT_EQ(listIn(tasks("requirements", file, {"--json"}).document(), "requirements").size(), 3U);
}

TEST_F(TaskReadingTest, AKeyMakesATask) {
    const Ended ended = tasks("questions", makeFile("bare.json", R"({"key":"k"})"));

    EXPECT_EQ(ended.exitStatus, 0) << ended.errors;
    EXPECT_TRUE(ended.output.starts_with("0 questions of k")) << ended.output;
}

TEST_F(TaskReadingTest, TheQuestionsStandWithWhatTheirAnswersHaveToBe) {
    const std::string file = offline();

    const Ended ended = tasks("questions", file);

    EXPECT_EQ(ended.exitStatus, 0) << ended.errors;
    for (const char* const text :
         {"11 questions of ", "  task-00000-q1  Is the shop open?  (one choice)\n",
          "      task-00000-q1-a1  Yes\n      task-00000-q1-a2  Only in part\n      task-00000-q1-a3  No\n",
          "  (1 to 3 choices)\n", "  (number from 0 to 20)\n", "  (1 to 5 stars)\n",
          "  (text from 3 to 200 characters)\n", "  (date)\n", "  (time)\n", "  (barcode)\n",
          "  (text of at most 500 characters, optional, with a photo)\n"}) {
        EXPECT_NE(ended.output.find(text), std::string::npos) << text << "\n" << ended.output;
    }
    const AnyCodable::List questions = listIn(tasks("questions", file, {"--json"}).document(), "questions");
    ASSERT_EQ(questions.size(), 11U);
    EXPECT_EQ(textIn(objectIn(questions[3]), "type"), "numericOpenEnded");
}

TEST_F(TaskReadingTest, TheNextQuestionIsTheOneWhoseParentIsNamed) {
    const std::string file = offline();

    const Ended next = tasks("next", file, {"--question", "task-00000-q1"});
    const Ended last = tasks("next", file, {"--question", "task-00000-q11"});

    EXPECT_EQ(next.exitStatus, 0) << next.errors;
    EXPECT_TRUE(next.output.starts_with("next after task-00000-q1\n  task-00000-q2  Why is it closed?")) << next.output;
    EXPECT_EQ(
        textIn(objectIn(tasks("next", file, {"--question", "task-00000-q1", "--json"}).document(), "question"), "key"),
        "task-00000-q2");
    EXPECT_EQ(last.exitStatus, 0);
    EXPECT_EQ(last.output, "no question has task-00000-q11 as its parent\n");
    EXPECT_EQ(tasks("next", file, {"--question", "task-00000-q11", "--json"}).document().count("question"), 0U);
}

TEST_F(TaskReadingTest, AQuestionThatTheTaskDoesNotHaveIsOneSentence) {
    const std::string file = offline();
    for (const char* const verb : {"next", "check", "answer"}) {
        const Ended ended = tasks(verb, file, {"--question", "q99"});

        EXPECT_EQ(ended.exitStatus, 1) << verb;
        EXPECT_EQ(ended.errors, "quorvane: the task has no question \"q99\"; tasks questions lists those it has\n");
    }
}

} // namespace
} // namespace quorvane::tool
