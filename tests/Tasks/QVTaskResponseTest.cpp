#include <cstdint>
#include <limits>

#include <gtest/gtest.h>

#include "Models/ModelTesting.h"
#include "Tasks/QVTaskResponse.h"

namespace quorvane {
namespace {

using SubmitError = QVTaskResponse::SubmitError;

TEST(QVTaskResponse, EveryKeyIsReadAndWritten) {
    const std::string text =
        R"({"answers":["a1","a2"],"base64":"data:image/jpeg;base64,AA==","created":1,"key":"r1","modified":2,)"
        R"("nextKey":"q2","owners":{"user":"u1"},"photoUrl":"photo.jpg","question":{"allowDecimals":false,)"
        R"("answerOrder":"","answers":[],"criticalAnswers":[],"images":[],"openTextSuggestions":[],)"
        R"("question":"Open?","scoreIntervals":[],"showUnitsOnLeft":false,"thresholdAnswers":[],"type":"time"},)"
        R"("score":3,"state":"completed","taskKey":"t1","userAnswer":"12:30","version":4})";

    const auto response = json::decode<QVTaskResponse>(text);

    EXPECT_EQ(response.answers, (std::vector<std::string>{"a1", "a2"}));
    EXPECT_EQ(response.base64, "data:image/jpeg;base64,AA==");
    EXPECT_EQ(response.created, 1);
    EXPECT_EQ(response.key, "r1");
    EXPECT_EQ(response.modified, 2);
    EXPECT_EQ(response.nextKey, "q2");
    ASSERT_TRUE(response.owners);
    EXPECT_EQ(response.owners->user, "u1");
    EXPECT_EQ(response.photoUrl, "photo.jpg");
    ASSERT_TRUE(response.question);
    EXPECT_EQ(response.question->type, QVQuestion::QuestionType::time);
    EXPECT_EQ(response.score, 3);
    EXPECT_EQ(response.state, QVTaskResponse::State::completed);
    EXPECT_EQ(response.taskKey, "t1");
    EXPECT_EQ(response.userAnswer, "12:30");
    EXPECT_EQ(response.version, 4);
    EXPECT_EQ(json::encode(response), text);
}

TEST(QVTaskResponse, ANewOneContinuesNoTask) {
    EXPECT_EQ(QVTaskResponse().state, QVTaskResponse::State::continue_);
    EXPECT_EQ(json::encode(QVTaskResponse()), R"({"state":"continue","taskKey":""})");
    EXPECT_EQ(recoded<QVTaskResponse>("{}"), R"({"state":"continue","taskKey":""})");
}

TEST(QVTaskResponse, AnAnswerThatIsNoTextFailsIt) {
    EXPECT_EQ(failureOf<QVTaskResponse>(R"({"answers":["a1",2]})"), "answers[1]: expected a text, found 2");
}

TEST(QVTaskSubmitError, ARangeOfAnswersNamesItsBounds) {
    EXPECT_EQ(SubmitError::INVALID_RANGE_ANSWER(1, 3).message(), "Selected answers must be between 1 and 3.");
}

TEST(QVTaskSubmitError, ARangeOfCharactersNamesItsBounds) {
    EXPECT_EQ(SubmitError::INVALID_RANGE_CHARACTERS(3, 200).message(), "Answer must be between 3 and 200 characters.");
}

TEST(QVTaskSubmitError, ARangeOfNumbersNamesItsBounds) {
    EXPECT_EQ(SubmitError::INVALID_RANGE_NUMBER(0, 10).message(), "Answer must be between 0 and 10.");
    EXPECT_EQ(SubmitError::INVALID_RANGE_NUMBER(std::numeric_limits<std::int64_t>::min(),
                                                std::numeric_limits<std::int64_t>::max())
                  .message(),
              "Answer must be between -9223372036854775808 and 9223372036854775807.");
}

TEST(QVTaskSubmitError, EveryCaseWithoutBoundsHasItsMessage) {
    EXPECT_EQ(SubmitError::INVALID_NUMBER_FORMAT().message(), "Unable to convert to numeric format.");
    EXPECT_EQ(SubmitError::INVALID_VALUE().message(), "Unable to determine value.");
    EXPECT_EQ(SubmitError::MISSING_BARCODE().message(), "An barcode must be provided!");
    EXPECT_EQ(SubmitError::MISSING_DATE().message(), "An date must be provided!");
    EXPECT_EQ(SubmitError::MISSING_PHOTO().message(), "A photo is required for this question.");
    EXPECT_EQ(SubmitError::MISSING_RATING().message(), "A rating is required for this question.");
    EXPECT_EQ(SubmitError::MISSING_TIME().message(), "A time is required for this question.");
    EXPECT_EQ(SubmitError::MISSING_TASK_KEY().message(), "A task key is required.");
    EXPECT_EQ(SubmitError::UNKNOWN().message(), "An unknown error occurred saving this answer.");
}

TEST(QVTaskSubmitError, TwoAreEqualWhenTheirCaseAndTheirBoundsAre) {
    EXPECT_EQ(SubmitError::MISSING_DATE(), SubmitError::MISSING_DATE());
    EXPECT_NE(SubmitError::MISSING_DATE(), SubmitError::MISSING_TIME());
    EXPECT_EQ(SubmitError::INVALID_RANGE_ANSWER(1, 3), SubmitError::INVALID_RANGE_ANSWER(1, 3));
    EXPECT_NE(SubmitError::INVALID_RANGE_ANSWER(1, 3), SubmitError::INVALID_RANGE_ANSWER(1, 4));
    EXPECT_NE(SubmitError::INVALID_RANGE_ANSWER(1, 3), SubmitError::INVALID_RANGE_NUMBER(1, 3));
}

} // namespace
} // namespace quorvane
