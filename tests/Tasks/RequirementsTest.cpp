#include <gmock/gmock.h>

#include "Tasks/QVTaskService.h"
#include "Tasks/Strings.h"
#include "support/APITest.h"

namespace quorvane {
namespace {

using ::testing::ElementsAre;
using ::testing::IsEmpty;

class RequirementsTest : public APITest {
protected:
    void addQuestion(bool needsPhoto) {
        auto question = std::make_shared<QVQuestion>();
        question->photoCaptureOptions = std::make_shared<QVPhotoCaptureOptions>();
        question->photoCaptureOptions->mustProvidePhoto = needsPhoto;
        task.questions.push_back(question);
    }

    [[nodiscard]] std::vector<std::string> requirements() const {
        return QVTaskService::shared().getRequirements(task);
    }

    QVTask task;
};

TEST_F(RequirementsTest, QuestionsPhotosDistanceAndTheTasksOwnWordsStandInThisOrder) {
    addQuestion(true);
    addQuestion(false);
    addQuestion(true);
    task.claimDistanceOverride = 0.25;
    task.taskRequirements = {"Bring receipt"};

    EXPECT_THAT(requirements(),
                ElementsAre("I will have to answer 3 question(s).", "I will have to take 2 picture(s).",
                            "I will have to accept and complete the task while within 0.25 mile(s) of the location",
                            "Bring receipt"));
}

TEST_F(RequirementsTest, ATaskWithoutQuestionsAndWithoutALimitHasOnlyItsOwnWords) {
    task.taskRequirements = {"Bring receipt", "Be kind"};
    EXPECT_THAT(requirements(), ElementsAre("Bring receipt", "Be kind"));
}

TEST_F(RequirementsTest, QuestionsThatNeedNoPhotoAreNotCountedAsPictures) {
    addQuestion(false);
    task.questions.push_back(std::make_shared<QVQuestion>());
    EXPECT_THAT(requirements(), ElementsAre("I will have to answer 2 question(s)."));
}

TEST_F(RequirementsTest, AWholeLimitKeepsItsDecimal) {
    task.claimDistanceOverride = 1;
    EXPECT_THAT(requirements(),
                ElementsAre("I will have to accept and complete the task while within 1.0 mile(s) of the location"));
}

TEST_F(RequirementsTest, WithoutAKeyNothingIsRequired) {
    task.taskRequirements = {"Bring receipt"};
    preferences().remove("quorvane_access_key");
    EXPECT_THAT(requirements(), IsEmpty());
}

TEST_F(RequirementsTest, CountsAreWrittenInPlainDecimal) {
    EXPECT_EQ(Strings::questionRequirement(1234567), "I will have to answer 1234567 question(s).");
    EXPECT_EQ(Strings::photoRequirement(1), "I will have to take 1 picture(s).");
}

TEST_F(RequirementsTest, TheNextQuestionIsTheFirstWhoseParentHasTheKey) {
    for (const char* parent : {"q1", "q2", "q2"}) {
        auto question = std::make_shared<QVQuestion>();
        question->key = std::string("child of ") + parent;
        question->parentKey = parent;
        task.questions.push_back(question);
    }
    auto root = std::make_shared<QVQuestion>();
    root->key = "q9";
    task.questions.push_back(root);

    QVTaskService& service = QVTaskService::shared();
    EXPECT_EQ(service.nextQuestion(task, "q2"), task.questions[1]);
    EXPECT_EQ(service.nextQuestion(task, "q9"), nullptr);
    EXPECT_EQ(service.nextQuestion(task, "child of q1"), nullptr);
    EXPECT_EQ(service.nextQuestion(QVTask(), "q2"), nullptr);
    EXPECT_EQ(service.nextQuestion(task, ""), nullptr) << "a question without a parent follows none";
    preferences().remove("quorvane_access_key");
    EXPECT_EQ(service.nextQuestion(task, "q2"), task.questions[1]) << "the service needs no key";
}

} // namespace
} // namespace quorvane
