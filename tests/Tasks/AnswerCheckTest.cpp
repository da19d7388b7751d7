#include <limits>

#include <gtest/gtest.h>

#include "Tasks/AnswerCheck.h"

namespace quorvane {
namespace {

using Error = QVTaskSubmitError;
using Type = QVQuestionType;

constexpr std::int64_t largest = std::numeric_limits<std::int64_t>::max();

class AnswerCheck : public ::testing::Test {
protected:
    AnswerCheck() { task.key = "task-1"; }

    [[nodiscard]] std::optional<Error> check(const AnswerInput& input) const {
        return checkAnswer(task, question, input);
    }
    [[nodiscard]] std::optional<Error> checkText(const std::string& text) const { return check({{}, text, false}); }
    [[nodiscard]] std::optional<Error> checkPicks(const std::vector<std::string>& keys) const {
        return check({keys, "", false});
    }

    void ask(Type type) { question.type = type; }

    void offer(const std::vector<std::string>& keys) {
        for (const std::string& key : keys) {
            auto answer = std::make_shared<QVAnswer>();
            answer->key = key;
            question.answers.push_back(answer);
        }
    }

    void requirePhoto() {
        question.photoCaptureOptions = std::make_shared<QVPhotoCaptureOptions>();
        question.photoCaptureOptions->mustProvidePhoto = true;
    }

    QVTask task;
    QVQuestion question;
};

TEST_F(AnswerCheck, ATaskWithoutAKeyIsToldFirst) {
    task.key = std::nullopt;
    requirePhoto();
    EXPECT_EQ(check({}), Error::MISSING_TASK_KEY());
}

TEST_F(AnswerCheck, ARequiredPhotoIsMissedEvenWhereTheQuestionIsOptional) {
    ask(Type::openEnded);
    requirePhoto();
    question.isOptional = true;
    EXPECT_EQ(checkText("text"), Error::MISSING_PHOTO());
    EXPECT_EQ(check({{}, "text", true}), std::nullopt);
}

TEST_F(AnswerCheck, WhatIsMissingIsNamedByTheQuestionsType) {
    const std::vector<std::pair<Type, Error>> expected{
        {Type::date, Error::MISSING_DATE()},
        {Type::time, Error::MISSING_TIME()},
        {Type::barcodeScan, Error::MISSING_BARCODE()},
        {Type::ratingScale, Error::MISSING_RATING()},
        {Type::ratingScaleWithText, Error::MISSING_RATING()},
        {Type::numericOpenEnded, Error::INVALID_VALUE()},
        {Type::openEnded, Error::INVALID_VALUE()},
        {Type::singleAnswer, Error::INVALID_RANGE_ANSWER(1, 1)},
        {Type::multipleAnswers, Error::INVALID_RANGE_ANSWER(0, largest)},
        {Type::undefined, Error::UNKNOWN()},
    };
    for (const auto& [type, error] : expected) {
        ask(type);
        EXPECT_EQ(check({}), error) << json::rawValue(type);
        EXPECT_EQ(checkText(" \t\n"), error) << json::rawValue(type);
    }
}

TEST_F(AnswerCheck, NothingEnteredForAnOptionalQuestionIsRightWhateverItsType) {
    question.isOptional = true;
    for (const auto& [type, text] : json::rawValues<Type>) {
        ask(type);
        EXPECT_EQ(check({}), std::nullopt) << text;
    }
}

TEST_F(AnswerCheck, WhatIsEnteredForAnOptionalQuestionIsChecked) {
    ask(Type::numericOpenEnded);
    question.isOptional = true;
    EXPECT_EQ(checkText("many"), Error::INVALID_NUMBER_FORMAT());
}

TEST_F(AnswerCheck, ADateATimeAndABarcodeThatAreThereAreTakenAsTheyAre) {
    for (const Type type : {Type::date, Type::time, Type::barcodeScan}) {
        ask(type);
        EXPECT_EQ(checkText("4006381333931"), std::nullopt);
    }
}

TEST_F(AnswerCheck, ANumberThatDoesNotParseHasAWrongFormat) {
    ask(Type::numericOpenEnded);
    question.allowDecimals = true;
    for (const char* text : {"abc", "1,5", "1.2.3", "--1", "+-1", "1e5", "inf", "nan", "0x10", "1 2", "."}) {
        EXPECT_EQ(checkText(text), Error::INVALID_NUMBER_FORMAT()) << text;
    }
    for (const char* text : {"12", " 12 ", "+12", "-0", "12.5", ".5", "5."}) {
        EXPECT_EQ(checkText(text), std::nullopt) << text;
    }
}

TEST_F(AnswerCheck, DecimalsAreAWrongFormatWhereTheQuestionDoesNotAllowThem) {
    ask(Type::numericOpenEnded);
    EXPECT_EQ(checkText("12.5"), Error::INVALID_NUMBER_FORMAT());
    EXPECT_EQ(checkText("12.0"), Error::INVALID_NUMBER_FORMAT());
    EXPECT_EQ(checkText("12"), std::nullopt);
}

TEST_F(AnswerCheck, ANumberLiesBetweenTheBoundsTheBoundsIncluded) {
    ask(Type::numericOpenEnded);
    question.allowDecimals = true;
    question.minValue = -5;
    question.maxValue = 10;
    for (const char* text : {"-5", "10", "10.0", "0", "9.99"}) {
        EXPECT_EQ(checkText(text), std::nullopt) << text;
    }
    for (const char* text : {"-6", "11", "10.01", "-5.5", "99999999999999999999"}) {
        EXPECT_EQ(checkText(text), Error::INVALID_RANGE_NUMBER(-5, 10)) << text;
    }
}

TEST_F(AnswerCheck, AMissingBoundStandsInTheMessageAsZeroOrTheLargestInteger) {
    ask(Type::numericOpenEnded);
    question.maxValue = 10;
    EXPECT_EQ(checkText("11"), Error::INVALID_RANGE_NUMBER(0, 10));
    question.maxValue = std::nullopt;
    question.minValue = 3;
    EXPECT_EQ(checkText("2"), Error::INVALID_RANGE_NUMBER(3, largest));
}

TEST_F(AnswerCheck, NumbersAreComparedWithTheBoundsWithoutRounding) {
    ask(Type::numericOpenEnded);
    EXPECT_EQ(checkText("9223372036854775807"), std::nullopt);
    EXPECT_EQ(checkText("9223372036854775808"), Error::INVALID_RANGE_NUMBER(0, largest));
    EXPECT_EQ(checkText(std::string(400, '9')), Error::INVALID_RANGE_NUMBER(0, largest));
    question.maxValue = 10;
    question.allowDecimals = true;
    EXPECT_EQ(checkText("10.0000000000000000000"), std::nullopt);
    EXPECT_EQ(checkText("10.0000000000000000001"), Error::INVALID_RANGE_NUMBER(0, 10));
}

TEST_F(AnswerCheck, ANumberWithoutALowerBoundMayBeNegative) {
    ask(Type::numericOpenEnded);
    EXPECT_EQ(checkText("-40"), std::nullopt);
}

TEST_F(AnswerCheck, ARatingIsAWholeNumberFromOneToTheNumberOfStars) {
    ask(Type::ratingScale);
    question.numStars = 5;
    EXPECT_EQ(checkText("1"), std::nullopt);
    EXPECT_EQ(checkText("5"), std::nullopt);
    EXPECT_EQ(checkText("0"), Error::INVALID_RANGE_NUMBER(1, 5));
    EXPECT_EQ(checkText("6"), Error::INVALID_RANGE_NUMBER(1, 5));
    EXPECT_EQ(checkText("4.5"), Error::INVALID_NUMBER_FORMAT());
    EXPECT_EQ(checkText("good"), Error::INVALID_NUMBER_FORMAT());
}

TEST_F(AnswerCheck, ARatingWithoutANumberOfStarsEndsAtTheLargestInteger) {
    ask(Type::ratingScaleWithText);
    EXPECT_EQ(checkText("1"), std::nullopt);
    EXPECT_EQ(checkText("9223372036854775807"), std::nullopt);
    EXPECT_EQ(checkText("0"), Error::INVALID_RANGE_NUMBER(1, largest));
    EXPECT_EQ(checkText("9223372036854775808"), Error::INVALID_RANGE_NUMBER(1, largest));
}

TEST_F(AnswerCheck, ABoundThatATextsLengthLacksStandsInTheMessageAsZeroOrTheLargestInteger) {
    ask(Type::openEnded);
    question.maxValue = 3;
    EXPECT_EQ(checkText("abcd"), Error::INVALID_RANGE_CHARACTERS(0, 3));
    question.maxValue = std::nullopt;
    question.minValue = 3;
    EXPECT_EQ(checkText("ab"), Error::INVALID_RANGE_CHARACTERS(3, largest));
}

TEST_F(AnswerCheck, TheLengthOfATextIsCountedInCharactersAndNotInBytes) {
    ask(Type::openEnded);
    question.minValue = 3;
    question.maxValue = 5;
    EXPECT_EQ(checkText("žšč"), std::nullopt);
    EXPECT_EQ(checkText("日本語日本"), std::nullopt);
    EXPECT_EQ(checkText("žš"), Error::INVALID_RANGE_CHARACTERS(3, 5));
    EXPECT_EQ(checkText("abcdef"), Error::INVALID_RANGE_CHARACTERS(3, 5));
}

TEST_F(AnswerCheck, ATextIsOneOfTheSuggestionsWhereItMustBe) {
    ask(Type::openEnded);
    question.openTextSuggestions = {"Red", "Blue"};
    EXPECT_EQ(checkText("Green"), std::nullopt);
    question.mustPickSuggestion = true;
    EXPECT_EQ(checkText("Green"), Error::INVALID_VALUE());
    EXPECT_EQ(checkText("Blue"), std::nullopt);
}

TEST_F(AnswerCheck, ASingleAnswerIsExactlyOneOfTheChoices) {
    ask(Type::singleAnswer);
    offer({"a", "b"});
    EXPECT_EQ(checkPicks({"a"}), std::nullopt);
    EXPECT_EQ(checkPicks({"a", "a"}), std::nullopt);
    EXPECT_EQ(checkPicks({"a", "b"}), Error::INVALID_RANGE_ANSWER(1, 1));
    EXPECT_EQ(checkPicks({"c"}), Error::INVALID_VALUE());
}

TEST_F(AnswerCheck, APickIsAChoiceOfTheQuestionWhateverItsType) {
    for (const auto& [type, text] : json::rawValues<Type>) {
        ask(type);
        EXPECT_EQ(check({{"ghost"}, "4", false}), Error::INVALID_VALUE()) << text;
        EXPECT_EQ(checkPicks({"ghost"}), Error::INVALID_VALUE()) << text;
    }
    ask(Type::openEnded);
    question.isOptional = true;
    EXPECT_EQ(checkPicks({"ghost"}), Error::INVALID_VALUE());
    offer({"ghost"});
    EXPECT_EQ(check({{"ghost"}, "text", false}), std::nullopt);
}

TEST_F(AnswerCheck, AsManyChoicesArePickedAsTheQuestionAsksFor) {
    ask(Type::multipleAnswers);
    offer({"a", "b", "c", "d"});
    question.minMultipleAnswers = 2;
    question.maxMultipleAnswers = 3;
    EXPECT_EQ(checkPicks({"a"}), Error::INVALID_RANGE_ANSWER(2, 3));
    EXPECT_EQ(checkPicks({"a", "b"}), std::nullopt);
    EXPECT_EQ(checkPicks({"a", "b", "c"}), std::nullopt);
    EXPECT_EQ(checkPicks({"a", "b", "c", "d"}), Error::INVALID_RANGE_ANSWER(2, 3));
    EXPECT_EQ(checkPicks({"a", "b", "x"}), Error::INVALID_VALUE());
}

TEST_F(AnswerCheck, AMissingBoundOfThePicksStandsInTheMessageAsZeroOrTheLargestInteger) {
    ask(Type::multipleAnswers);
    offer({"a", "b", "c"});
    question.maxMultipleAnswers = 2;
    EXPECT_EQ(checkPicks({"a", "b", "c"}), Error::INVALID_RANGE_ANSWER(0, 2));
    question.maxMultipleAnswers = std::nullopt;
    question.minMultipleAnswers = 2;
    EXPECT_EQ(checkPicks({"a"}), Error::INVALID_RANGE_ANSWER(2, largest));
}

TEST_F(AnswerCheck, NothingPickedIsAnErrorAndReadsAsBetweenZeroAndTheUpperBoundWhereThereIsNoLowerOne) {
    ask(Type::multipleAnswers);
    offer({"a", "b", "c"});
    EXPECT_EQ(checkPicks({}), Error::INVALID_RANGE_ANSWER(0, largest));
    EXPECT_EQ(checkPicks({"a", "b", "c"}), std::nullopt);
    question.maxMultipleAnswers = 2;
    EXPECT_EQ(checkPicks({}), Error::INVALID_RANGE_ANSWER(0, 2));
    question.isOptional = true;
    EXPECT_EQ(checkPicks({}), std::nullopt);
}

TEST_F(AnswerCheck, NothingPickedIsRightWhereTheQuestionItselfAsksForZeroOrMore) {
    ask(Type::multipleAnswers);
    offer({"a", "b", "c"});
    question.minMultipleAnswers = 0;
    question.maxMultipleAnswers = 2;
    EXPECT_EQ(checkPicks({}), std::nullopt);
    EXPECT_EQ(checkPicks({"a"}), std::nullopt);
    EXPECT_EQ(checkPicks({"a", "b", "c"}), Error::INVALID_RANGE_ANSWER(0, 2));
}

TEST_F(AnswerCheck, ATextCountsAsAPickWhereThereIsAnOtherChoice) {
    ask(Type::singleAnswer);
    offer({"a"});
    EXPECT_EQ(checkText("something else"), Error::INVALID_RANGE_ANSWER(1, 1));
    question.hasOther = true;
    EXPECT_EQ(checkText("something else"), std::nullopt);
    EXPECT_EQ(check({{"a"}, "something else", false}), Error::INVALID_RANGE_ANSWER(1, 1));
}

} // namespace
} // namespace quorvane
