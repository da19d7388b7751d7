#pragma once

#include <algorithm>
#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "API/RealServiceFixture.h"
#include "Tasks/QVTaskService.h"

namespace quorvane {

/// Signed in, beside the invented task that has a question of every type. Not claimed yet.
class TaskSandboxFixture : public RealServiceFixture {
protected:
    using Error = QVTaskResponse::SubmitError;
    using Submission = Calls<QVStatus, std::shared_ptr<QVTaskResponse>, std::optional<Error>>;

    static constexpr const char* key = "task-00000";
    static constexpr const char* responsesPath = "/tasks/task-00000/responses";

    void SetUp() override {
        ASSERT_EQ(signIn(), Outcome::Call(QVStatus::SUCCESS, true));
        task = found(key);
        ASSERT_NE(task, nullptr);
        phone->fixedLocations().setLastLocation(here);
    }

    /// The task under @p taskKey as a search near by tells it; null when it does not.
    [[nodiscard]] std::shared_ptr<QVTask> found(const std::string& taskKey) {
        const Calls<QVStatus, std::optional<platform::Location>, std::optional<QVTaskList>> calls;
        QVSearchService::shared().tasks(here, 1000, std::nullopt, calls.record());
        EXPECT_TRUE(runUntil([&] { return calls.count() > 0; }));
        const QVTaskList tasks = calls.first<2>().value_or(QVTaskList());
        const auto entry =
            std::find_if(tasks.begin(), tasks.end(), [&](const auto& one) { return one->key == taskKey; });
        return entry == tasks.end() ? nullptr : *entry;
    }

    /// What a claim came to.
    std::pair<QVStatus, std::shared_ptr<QVTask>> claim() {
        const Calls<QVStatus, std::shared_ptr<QVTask>> calls;
        QVTaskService::shared().claim(*task, calls.record());
        EXPECT_TRUE(runUntil([&] { return calls.count() > 0; }));
        settle();
        EXPECT_EQ(calls.count(), 1U);
        return {calls.first<0>(), calls.first<1>()};
    }

    [[nodiscard]] std::shared_ptr<QVQuestion> question(const std::string& name) const {
        const auto entry = std::find_if(task->questions.begin(), task->questions.end(),
                                        [&](const auto& one) { return one->key == key + ("-" + name); });
        return entry == task->questions.end() ? nullptr : *entry;
    }

    /// Starts to answer the first question with its first choice.
    void startAnswer(const Submission& submission) {
        QVTaskService::shared().submit(*task, question("q1"), std::vector<std::string>{"task-00000-q1-a1"},
                                       std::nullopt, nullptr, submission.record());
    }

    /// What that came to.
    [[nodiscard]] Submission answer() {
        Submission submission;
        startAnswer(submission);
        EXPECT_TRUE(runUntil([&] { return submission.count() > 0; }));
        return submission;
    }

    static void expectSubmitted(const Submission& submission) {
        ASSERT_EQ(submission.count(), 1U);
        EXPECT_EQ(submission.first<0>(), QVStatus::SUCCESS);
        ASSERT_NE(submission.first<1>(), nullptr);
        EXPECT_EQ(submission.first<1>()->nextKey, "task-00000-q3");
        EXPECT_EQ(submission.first<1>()->score, 5);
        EXPECT_EQ(submission.first<2>(), std::nullopt);
    }

    static void expectFailed(const Submission& submission) {
        ASSERT_EQ(submission.count(), 1U);
        EXPECT_EQ(submission.first<0>(), QVStatus::ERROR_TASK_RESPONSE_SUBMIT_FAILURE);
        EXPECT_EQ(submission.first<1>(), nullptr);
        EXPECT_EQ(submission.first<2>(), Error::UNKNOWN());
    }

    std::shared_ptr<QVTask> task;
};

} // namespace quorvane
