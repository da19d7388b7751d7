#include <gmock/gmock.h>

#include "JSON/JSON.h"
#include "Tasks/QVTaskService.h"
#include "Tasks/TaskEndpoints.h"
#include "support/APITest.h"

namespace quorvane {
namespace {

using ::testing::ElementsAre;
using ::testing::IsEmpty;
using Error = QVTaskResponse::SubmitError;

/// A picture whose encodings tell its size.
class TestImage : public platform::Image {
public:
    TestImage(int theWidth, int theHeight) : imageWidth(theWidth), imageHeight(theHeight) {}

    [[nodiscard]] int width() const override { return imageWidth; }
    [[nodiscard]] int height() const override { return imageHeight; }
    [[nodiscard]] std::shared_ptr<const Image> half() const override {
        if (halfFails) {
            return nullptr;
        }
        auto image = std::make_shared<TestImage>(imageWidth / 2, imageHeight / 2);
        image->encodingFails = encodingFails;
        return image;
    }
    [[nodiscard]] std::optional<std::string> jpeg(double quality) const override {
        return encodingFails ? std::nullopt
                             : std::optional("jpeg " + size() + " at " + std::to_string(quality).substr(0, 3));
    }
    [[nodiscard]] std::optional<std::string> png() const override { return "png " + size(); }

    bool halfFails = false;
    /// Of it and of its half.
    bool encodingFails = false;

private:
    [[nodiscard]] std::string size() const { return std::to_string(imageWidth) + "x" + std::to_string(imageHeight); }

    int imageWidth;
    int imageHeight;
};

class SubmitTest : public APITest {
protected:
    SubmitTest() {
        storeTokens(3600);
        task.key = "task-1";
        task.owners = std::make_shared<QVOwners>();
        task.owners->campaign = "campaign-1";
        question->key = "question-1";
        transport().answer("POST", "/tasks/task-1/responses", Answer::json(R"({"taskKey":"task-1","nextKey":"q2"})"));
    }

    void requirePhoto() {
        question->photoCaptureOptions = std::make_shared<QVPhotoCaptureOptions>();
        question->photoCaptureOptions->mustProvidePhoto = true;
    }

    void submit(const std::shared_ptr<platform::Image>& image = nullptr) {
        QVTaskService::shared().submit(task, question, std::vector<std::string>{"a1"}, "typed", image,
                                       submitted.record());
        phone->runUntilIdle();
    }

    void expectRefused(QVStatus status, const Error& error) {
        ASSERT_EQ(submitted.count(), 1U);
        EXPECT_EQ(submitted.first<0>(), status);
        EXPECT_EQ(submitted.first<1>(), nullptr);
        EXPECT_EQ(submitted.first<2>(), error);
    }

    [[nodiscard]] QVTaskResponse sent() {
        return json::decode<QVTaskResponse>(transport().requests().at(0).request.body);
    }

    QVTask task;
    std::shared_ptr<QVQuestion> question = std::make_shared<QVQuestion>();
    const Calls<QVStatus, std::shared_ptr<QVTaskResponse>, std::optional<Error>> submitted;
};

TEST_F(SubmitTest, AnAnswerIsSentWithItsTaskQuestionPicksAndTextAndNothingElse) {
    submit();

    ASSERT_THAT(requestLines(), ElementsAre("POST /tasks/task-1/responses"));
    const QVTaskResponse response = sent();
    EXPECT_THAT(*response.answers, ElementsAre("a1"));
    EXPECT_EQ(response.owners->campaign, "campaign-1");
    EXPECT_EQ(response.question->key, "question-1");
    EXPECT_EQ(response.taskKey, "task-1");
    EXPECT_EQ(response.userAnswer, "typed");
    EXPECT_EQ(response.state, QVTask::State::continue_);
    EXPECT_EQ(response.base64, std::nullopt);
    EXPECT_EQ(response.key, std::nullopt);
}

TEST_F(SubmitTest, TheBodyIsTheWholeAnswerAndNotACharacterMore) {
    submit(std::make_shared<TestImage>(4, 2));

    EXPECT_EQ(transport().requests().at(0).request.body, R"({
  "answers": [
    "a1"
  ],
  "base64": "data:image/jpeg;base64,anBlZyAyeDEgYXQgMC45",
  "owners": {
    "campaign": "campaign-1"
  },
  "question": {
    "allowDecimals": false,
    "answerOrder": "",
    "answers": [],
    "criticalAnswers": [],
    "images": [],
    "key": "question-1",
    "openTextSuggestions": [],
    "question": "",
    "scoreIntervals": [],
    "showUnitsOnLeft": false,
    "thresholdAnswers": [],
    "type": "undefined"
  },
  "state": "continue",
  "taskKey": "task-1",
  "userAnswer": "typed"
})");
}

TEST_F(SubmitTest, PicksTextAndPhotoThatAreAbsentHaveNoKeyInTheBody) {
    QVTaskService::shared().submit(task, nullptr, std::nullopt, std::nullopt, nullptr, submitted.record());
    phone->runUntilIdle();

    EXPECT_EQ(transport().requests().at(0).request.body, R"({
  "owners": {
    "campaign": "campaign-1"
  },
  "state": "continue",
  "taskKey": "task-1"
})");
    EXPECT_EQ(submitted.first<0>(), QVStatus::SUCCESS);
}

TEST_F(SubmitTest, ASuccessWithoutABodyIsASuccessWithoutAResponseAndWithoutAnError) {
    transport().answer("POST", "/tasks/task-1/responses", Answer::with(204));

    submit();

    ASSERT_EQ(submitted.count(), 1U);
    EXPECT_EQ(submitted.first<0>(), QVStatus::SUCCESS);
    EXPECT_EQ(submitted.first<1>(), nullptr);
    EXPECT_EQ(submitted.first<2>(), std::nullopt);
}

TEST_F(SubmitTest, TheServicesResponseIsHandedOverWithoutAnError) {
    submit();

    ASSERT_EQ(submitted.count(), 1U);
    EXPECT_EQ(submitted.first<0>(), QVStatus::SUCCESS);
    EXPECT_EQ(submitted.first<1>()->nextKey, "q2");
    EXPECT_EQ(submitted.first<2>(), std::nullopt);
}

TEST_F(SubmitTest, WithoutAKeyNothingIsSentAndTheKeyIsMissedBeforeTheTasksKey) {
    preferences().remove("quorvane_access_key");
    task.key = std::nullopt;

    submit();

    expectRefused(QVStatus::ERROR_PUBLISHABLE_KEY, Error::UNKNOWN());
    EXPECT_THAT(requestLines(), IsEmpty());
}

TEST_F(SubmitTest, ATaskWithoutAKeyIsToldBeforeAMissingPhoto) {
    task.key = std::nullopt;
    requirePhoto();

    submit();

    expectRefused(QVStatus::ERROR_BAD_REQUEST, Error::MISSING_TASK_KEY());
    EXPECT_THAT(requestLines(), IsEmpty());
}

TEST_F(SubmitTest, AMissingKeyOfTheTaskIsToldBeforeSubmitReturns) {
    task.key = std::nullopt;

    QVTaskService::shared().submit(task, question, std::nullopt, "typed", nullptr, submitted.record());

    expectRefused(QVStatus::ERROR_BAD_REQUEST, Error::MISSING_TASK_KEY());
    phone->runUntilIdle();
    EXPECT_EQ(submitted.count(), 1U);
}

TEST_F(SubmitTest, ARequiredPhotoThatIsMissingIsToldAndNothingIsSent) {
    requirePhoto();

    submit();

    expectRefused(QVStatus::ERROR_QUESTION_SUBMIT_FAILURE, Error::MISSING_PHOTO());
    EXPECT_THAT(requestLines(), IsEmpty());
}

TEST_F(SubmitTest, ARequiredPhotoThatIsMissingIsToldBeforeSubmitReturns) {
    requirePhoto();

    QVTaskService::shared().submit(task, question, std::nullopt, "typed", nullptr, submitted.record());

    expectRefused(QVStatus::ERROR_QUESTION_SUBMIT_FAILURE, Error::MISSING_PHOTO());
    phone->runUntilIdle();
    EXPECT_EQ(submitted.count(), 1U);
    EXPECT_THAT(requestLines(), IsEmpty());
}

TEST_F(SubmitTest, ThePhotoOptionsOfAPickedChoiceAreNotConsulted) {
    auto choice = std::make_shared<QVAnswer>();
    choice->key = "a1";
    choice->photoCaptureOptions = std::make_shared<QVPhotoCaptureOptions>();
    choice->photoCaptureOptions->mustProvidePhoto = true;
    question->answers = {choice};

    submit();

    EXPECT_EQ(submitted.first<0>(), QVStatus::SUCCESS);
}

TEST_F(SubmitTest, AnAnswerThatTheAnswerCheckWouldRefuseIsSentAllTheSame) {
    question->type = QVQuestion::QuestionType::numericOpenEnded;
    submit();
    EXPECT_EQ(submitted.first<0>(), QVStatus::SUCCESS);
}

TEST_F(SubmitTest, HalfThePhotoIsSentAsAJPEGAtNineTenthsInADataURL) {
    submit(std::make_shared<TestImage>(4000, 3000));

    // "jpeg 2000x1500 at 0.9"
    EXPECT_EQ(sent().base64, "data:image/jpeg;base64,anBlZyAyMDAweDE1MDAgYXQgMC45");
}

TEST_F(SubmitTest, APhotoOfWhichNoHalfComesOutIsLeftOut) {
    auto image = std::make_shared<TestImage>(4000, 3000);
    image->halfFails = true;

    submit(image);

    EXPECT_EQ(sent().base64, std::nullopt);
    EXPECT_EQ(submitted.first<0>(), QVStatus::SUCCESS);
}

TEST_F(SubmitTest, APhotoThatCannotBeEncodedIsLeftOut) {
    auto image = std::make_shared<TestImage>(4000, 3000);
    image->encodingFails = true;

    submit(image);

    EXPECT_EQ(sent().base64, std::nullopt);
    EXPECT_EQ(submitted.first<0>(), QVStatus::SUCCESS);
}

TEST_F(SubmitTest, AnyFailureOfTheRequestReadsAsASubmitFailureWithoutAResponse) {
    for (const Answer& answer :
         {Answer::with(400, R"({"taskKey":"task-1"})"), Answer::with(401), Answer::with(503),
          Answer::failure(Transport::connection), Answer::json("{\"taskKey\":7}"), Answer::json("no JSON")}) {
        const Calls<QVStatus, std::shared_ptr<QVTaskResponse>, std::optional<Error>> once;
        transport().answer("POST", "/tasks/task-1/responses", answer);
        QVTaskService::shared().submit(task, question, std::nullopt, std::nullopt, nullptr, once.record());
        phone->runUntilIdle();

        ASSERT_EQ(once.count(), 1U);
        EXPECT_EQ(once.first<0>(), QVStatus::ERROR_TASK_RESPONSE_SUBMIT_FAILURE);
        EXPECT_EQ(once.first<1>(), nullptr);
        EXPECT_EQ(once.first<2>(), Error::UNKNOWN());
    }
}

TEST_F(SubmitTest, ATasksKeyStaysOneComponentOfThePathWhateverItsCharacters) {
    QVTaskResponse response;
    const std::vector<std::pair<std::string, std::string>> paths{{"a/b", "/tasks/a%2Fb/responses"},
                                                                 {"a?b=c", "/tasks/a%3Fb%3Dc/responses"},
                                                                 {"..", "/tasks/%2E%2E/responses"},
                                                                 {"a b", "/tasks/a%20b/responses"},
                                                                 {"ž#%", "/tasks/%C5%BE%23%25/responses"}};
    for (const auto& [key, path] : paths) {
        response.taskKey = key;
        EXPECT_EQ(CreateTaskResponseEndpoint(response).path, path);
    }
}

TEST_F(SubmitTest, ATaskThatCannotBeEncodedIsClaimedWithoutABody) {
    task.distance = std::numeric_limits<double>::quiet_NaN();
    EXPECT_EQ(ClaimTaskEndpoint(task).body, "");
}

} // namespace
} // namespace quorvane
