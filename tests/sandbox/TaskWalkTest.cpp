#include <gtest/gtest.h>

#include "sandbox/TaskWalk.h"

namespace quorvane::sandbox::test {
namespace {

class TaskWalkTest : public ::testing::Test {
protected:
    /// A task with the questions "a", "b", "c" and "d", none of which leads anywhere.
    TaskWalkTest() {
        for (const char* key : {"a", "b", "c", "d"}) {
            task.questions.push_back(std::make_shared<QVQuestion>());
            task.questions.back()->key = key;
        }
    }

    QVQuestion& question(std::size_t index) { return *task.questions.at(index); }

    void addChoice(std::size_t index, const std::string& key, const std::string& next,
                   std::optional<std::int64_t> score = std::nullopt) {
        auto answer = std::make_shared<QVAnswer>();
        answer->key = key;
        answer->nextQuestionKey = next;
        answer->score = score;
        question(index).answers.push_back(answer);
    }

    void addInterval(std::optional<std::int64_t> low, std::optional<std::int64_t> high, std::int64_t score) {
        auto interval = std::make_shared<QVScoreInterval>();
        interval->lowerBound = low;
        interval->upperBound = high;
        interval->score = score;
        question(0).scoreIntervals.push_back(interval);
    }

    [[nodiscard]] std::int64_t scoreOfText(const std::string& text) {
        QVTaskResponse response;
        response.userAnswer = text;
        return scoreOf(question(0), response);
    }

    [[nodiscard]] std::int64_t scoreOfPicks(const std::vector<std::string>& picked) {
        QVTaskResponse response;
        response.answers = picked;
        return scoreOf(question(0), response);
    }

    QVTask task;
};

TEST_F(TaskWalkTest, TheFirstPickedChoiceInTheOrderOfTheQuestionDecides) {
    addChoice(0, "x", "d");
    addChoice(0, "y", "c");
    EXPECT_EQ(nextQuestion(task, question(0), {"y"}, {"a"}), "c");
    EXPECT_EQ(nextQuestion(task, question(0), {"y", "x"}, {"a"}), "d");
}

TEST_F(TaskWalkTest, AChoiceThatLeadsNowhereLeavesItToTheParentKeys) {
    addChoice(0, "x", "");
    addChoice(0, "y", "none");
    question(3).parentKey = "a";
    EXPECT_EQ(nextQuestion(task, question(0), {"x", "y"}, {"a"}), "d");
    EXPECT_EQ(nextQuestion(task, question(0), {}, {"a"}), "d");
}

TEST_F(TaskWalkTest, WithoutAChildTheNextInTheListFollows) {
    EXPECT_EQ(nextQuestion(task, question(1), {}, {"b"}), "c");
    EXPECT_EQ(nextQuestion(task, question(3), {}, {"d"}), "");
}

TEST_F(TaskWalkTest, NoQuestionIsAskedTwice) {
    addChoice(1, "x", "a");
    question(0).parentKey = "b";
    EXPECT_EQ(nextQuestion(task, question(1), {"x"}, {"a", "b"}), "c");
    EXPECT_EQ(nextQuestion(task, question(1), {"x"}, {"a", "b", "c", "d"}), "");
}

TEST_F(TaskWalkTest, PickedChoicesAddUpToTheMaximum) {
    addChoice(0, "x", "", 2);
    addChoice(0, "y", "", 3);
    addChoice(0, "z", "");
    EXPECT_EQ(scoreOfPicks({"x", "y", "z", "x"}), 5);
    EXPECT_EQ(scoreOfPicks({"z"}), 0);
    question(0).maxScore = 4;
    EXPECT_EQ(scoreOfPicks({"x", "y"}), 4);
}

TEST_F(TaskWalkTest, ANumberEarnsTheScoreOfTheFirstIntervalThatHoldsIt) {
    question(0).type = QVQuestion::QuestionType::numericOpenEnded;
    addInterval(std::nullopt, 10, 7);
    addInterval(10, 20, 5);
    addInterval(30, std::nullopt, 1);
    EXPECT_EQ(scoreOfText("-3"), 7);
    EXPECT_EQ(scoreOfText("10"), 7);
    EXPECT_EQ(scoreOfText(" +10.5 "), 5);
    EXPECT_EQ(scoreOfText("25"), 0);
    EXPECT_EQ(scoreOfText("1000000"), 1);
    EXPECT_EQ(scoreOfText("many"), 0);
    EXPECT_EQ(scoreOfText(""), 0);
}

TEST_F(TaskWalkTest, ATextEarnsNoIntervalThoughItIsANumber) {
    question(0).type = QVQuestion::QuestionType::openEnded;
    addInterval(std::nullopt, std::nullopt, 7);
    EXPECT_EQ(scoreOfText("5"), 0);
    question(0).type = QVQuestion::QuestionType::ratingScale;
    EXPECT_EQ(scoreOfText("5"), 7);
}

TEST_F(TaskWalkTest, ARandomDrawIsWonByAboutAsManyAsItSaysAndByTheSameEachTime) {
    int wins = 0;
    for (int i = 0; i < 1000; ++i) {
        const auto stateFor = [&] {
            QVTask drawn;
            drawn.rewards = {std::make_shared<QVReward>()};
            drawn.rewards.front()->key = "r";
            drawn.rewards.front()->isRandomDraw = true;
            drawn.rewards.front()->randomDrawRatio = 0.25;
            decideRewards(drawn, "user " + std::to_string(i));
            return drawn.rewards.front()->state.value_or("");
        };
        const std::string state = stateFor();
        EXPECT_TRUE(state == "earned" || state == "lost");
        EXPECT_EQ(stateFor(), state);
        wins += state == "earned" ? 1 : 0;
    }
    EXPECT_GT(wins, 200);
    EXPECT_LT(wins, 300);
}

} // namespace
} // namespace quorvane::sandbox::test
