#include "Tasks/TaskSandboxFixture.h"

namespace quorvane {
namespace {

class TaskSandboxTest : public TaskSandboxFixture {};

TEST_F(TaskSandboxTest, AClaimedTaskComesBackRunningWithItsFirstQuestion) {
    const auto [status, claimed] = claim();

    EXPECT_EQ(status, QVStatus::SUCCESS);
    ASSERT_NE(claimed, nullptr);
    EXPECT_EQ(claimed->state, QVTask::State::running);
    EXPECT_EQ(claimed->nextQuestion, "task-00000-q1");
    EXPECT_EQ(found(key)->state, QVTask::State::running);
}

TEST_F(TaskSandboxTest, AClaimWhoseReplyIsLostCanBeMadeAgain) {
    addFault("/tasks:lost-reply:count=1");

    EXPECT_EQ(claim().first, QVStatus::ERROR_NETWORK);
    EXPECT_EQ(claim().first, QVStatus::SUCCESS);
}

TEST_F(TaskSandboxTest, TheServiceLeadsWhereThePickedChoiceLeadsAndTheLibraryToTheChildOfAQuestion) {
    ASSERT_EQ(claim().first, QVStatus::SUCCESS);

    const Submission submission = answer();

    expectSubmitted(submission);
    EXPECT_EQ(QVTaskService::shared().nextQuestion(*task, "task-00000-q1")->key, "task-00000-q2");
}

TEST_F(TaskSandboxTest, AnAnswerThatTheServiceRefusesIsASubmitFailure) {
    expectFailed(answer()); // not claimed
    ASSERT_EQ(claim().first, QVStatus::SUCCESS);

    const Submission submission;
    QVTaskService::shared().submit(*task, question("q4"), std::nullopt, "0.95", nullptr, submission.record());
    ASSERT_TRUE(runUntil([&] { return submission.count() > 0; }));

    expectFailed(submission); // not the question that is due
    expectSubmitted(answer());
}

TEST_F(TaskSandboxTest, ATaskIsAnsweredUnderAKeyOfAnyCharacters) {
    const std::string odd = "../a b/c?d=e#f%2F&ž;";
    sandbox::SandboxOptions options;
    options.tasks = {R"({"key": ")" + odd + R"(", "state": "generated",
                         "location": {"latitude": 46.05, "longitude": 14.5}, "locationKey": "odd",
                         "questions": [{"key": "q1", "question": "Well?", "type": "openEnded"}]})"};
    service = std::move(std::get<0>(sandbox::Sandbox::start(std::move(options))));
    startPlatform();
    QVAuthService::shared().logout();
    ASSERT_EQ(signIn(), Outcome::Call(QVStatus::SUCCESS, true));
    phone->fixedLocations().setLastLocation(here);
    task = found(odd);
    ASSERT_NE(task, nullptr);
    ASSERT_EQ(claim().first, QVStatus::SUCCESS);

    const Submission submission;
    QVTaskService::shared().submit(*task, task->questions.at(0), std::nullopt, "Well.", nullptr, submission.record());
    ASSERT_TRUE(runUntil([&] { return submission.count() > 0; }));

    EXPECT_EQ(submission.first<0>(), QVStatus::SUCCESS);
    EXPECT_EQ(submission.first<1>()->taskKey, odd);
    EXPECT_EQ(submission.first<1>()->state, QVTask::State::completed);
}

} // namespace
} // namespace quorvane
