#include "Facade/Quorvane.h"
#include "support/Calls.h"
#include "support/SimulatedTest.h"

namespace quorvane {
namespace {

template <class T>
using List = std::optional<std::vector<std::shared_ptr<T>>>;

/// The namespace operations that this version does not provide.
class NamespacesTest : public SimulatedTest {
protected:
    /// Runs @p check without a key and with one.
    template <class Check>
    void inBothWorlds(Check check) {
        check(QVStatus::ERROR_PUBLISHABLE_KEY);
        store("quorvane_access_key", "");
        check(QVStatus::ERROR_UNIMPLEMENTED);
        EXPECT_TRUE(transport().requests().empty());
    }

    /// A task of one question, whose parent is @p parent.
    static std::shared_ptr<QVTask> taskWithAQuestionAfter(const std::string& parent) {
        auto task = std::make_shared<QVTask>();
        task->questions = {std::make_shared<QVQuestion>()};
        task->questions[0]->parentKey = parent;
        return task;
    }
};

TEST_F(NamespacesTest, UsersAnswerBeforeTheyReturn) {
    inBothWorlds([](QVStatus status) {
        const Calls<QVStatus, std::shared_ptr<QVUser>> got;
        Quorvane::Users::get("u1", got.record());
        EXPECT_EQ(got.first<0>(), status);
        EXPECT_EQ(got.first<1>(), nullptr);

        const Calls<QVStatus, List<QVUser>> listed;
        Quorvane::Users::list(10, std::nullopt, quorvane::testing::SimulatedClock::start, listed.record());
        EXPECT_EQ(listed.first<0>(), status);
        EXPECT_EQ(listed.first<1>(), std::nullopt);

        const Calls<QVStatus, bool> deleted;
        Quorvane::Users::delete_("u1", deleted.record());
        EXPECT_EQ(deleted.first<0>(), status);
        EXPECT_FALSE(deleted.first<1>());
    });
}

TEST_F(NamespacesTest, TasksAreRefusedBeforeTheyReturnWithoutAKey) {
    const auto task = taskWithAQuestionAfter("q1");
    const Calls<QVStatus, std::shared_ptr<QVTask>> claimed;
    Quorvane::Tasks::claim(task, claimed.record());
    EXPECT_EQ(claimed.first<0>(), QVStatus::ERROR_PUBLISHABLE_KEY);
    EXPECT_EQ(claimed.first<1>(), nullptr);

    const Calls<QVStatus, std::shared_ptr<QVTaskResponse>, std::optional<QVTaskResponse::SubmitError>> saved;
    Quorvane::Tasks::saveResponse(task, nullptr, std::nullopt, "3", nullptr, saved.record());
    EXPECT_EQ(saved.first<0>(), QVStatus::ERROR_PUBLISHABLE_KEY);
    EXPECT_EQ(saved.first<1>(), nullptr);
    EXPECT_EQ(saved.first<2>(), QVTaskResponse::SubmitError::UNKNOWN());

    EXPECT_TRUE(Quorvane::Tasks::getRequirements(task).empty());
    EXPECT_EQ(Quorvane::Tasks::nextQuestion(task, "q1"), nullptr);
}

TEST_F(NamespacesTest, TasksForwardToTheTaskService) {
    store("quorvane_access_key", "");
    const auto task = taskWithAQuestionAfter("q1");
    task->taskRequirements = {"Bring receipt"};

    const Calls<QVStatus, std::shared_ptr<QVTask>> claimed;
    Quorvane::Tasks::claim(task, claimed.record());
    EXPECT_EQ(claimed.first<0>(), QVStatus::ERROR_LOCATION);

    const Calls<QVStatus, std::shared_ptr<QVTaskResponse>, std::optional<QVTaskResponse::SubmitError>> saved;
    Quorvane::Tasks::saveResponse(task, nullptr, std::nullopt, "3", nullptr, saved.record());
    EXPECT_EQ(saved.first<0>(), QVStatus::ERROR_BAD_REQUEST);
    EXPECT_EQ(saved.first<2>(), QVTaskResponse::SubmitError::MISSING_TASK_KEY());

    EXPECT_EQ(Quorvane::Tasks::getRequirements(task),
              (std::vector<std::string>{"I will have to answer 1 question(s).", "Bring receipt"}));
    EXPECT_EQ(Quorvane::Tasks::nextQuestion(task, "q1"), task->questions.at(0));
    EXPECT_TRUE(transport().requests().empty());
}

TEST_F(NamespacesTest, PlacesAreRefusedBeforeTheyReturnWithoutAKey) {
    const auto place = std::make_shared<QVPlace>();
    const Calls<QVStatus, List<QVPlace>> created;
    Quorvane::Places::create(place, QVStorageType::LOCAL, created.record());
    Quorvane::Places::create(std::vector{place, place}, QVStorageType::REMOTE, created.record());
    ASSERT_EQ(created.count(), 2U);
    for (std::size_t i = 0; i < 2; ++i) {
        EXPECT_EQ(std::get<0>(created[i]), QVStatus::ERROR_PUBLISHABLE_KEY);
        EXPECT_EQ(std::get<1>(created[i]), std::nullopt);
    }
}

TEST_F(NamespacesTest, PlacesForwardToThePlaceStore) {
    store("quorvane_access_key", "");
    const auto place = std::make_shared<QVPlace>();
    const Calls<QVStatus, List<QVPlace>> created;
    Quorvane::Places::create(place, QVStorageType::LOCAL, created.record());
    Quorvane::Places::create(std::vector{place, place}, QVStorageType::REMOTE, created.record());

    ASSERT_EQ(created.count(), 2U);
    EXPECT_EQ(std::get<0>(created[0]), QVStatus::SUCCESS);
    EXPECT_EQ(std::get<1>(created[0]), std::vector{place});
    EXPECT_EQ(std::get<0>(created[1]), QVStatus::ERROR_UNIMPLEMENTED);
    EXPECT_EQ(std::get<1>(created[1]), std::nullopt);
}

} // namespace
} // namespace quorvane
