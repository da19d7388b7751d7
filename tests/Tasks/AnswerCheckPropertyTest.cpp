#include <random>
#include <string>

#include <gtest/gtest.h>

#include "Tasks/AnswerCheck.h"

namespace quorvane {
namespace {

class AnswerCheckProperty : public ::testing::TestWithParam<unsigned> {
protected:
    AnswerCheckProperty() : random(GetParam()) { task.key = "task-1"; }

    std::int64_t pick(std::int64_t low, std::int64_t high) {
        return std::uniform_int_distribution<std::int64_t>(low, high)(random);
    }

    std::optional<std::int64_t> maybe(std::int64_t low, std::int64_t high) {
        return pick(0, 2) == 0 ? std::nullopt : std::optional(pick(low, high));
    }

    std::mt19937_64 random;
    QVTask task;
    QVQuestion question;
};

TEST_P(AnswerCheckProperty, AWholeNumberIsRightExactlyWhenItLiesWithinTheBoundsThatAreThere) {
    question.type = QVQuestionType::numericOpenEnded;
    for (int i = 0; i < 2000; ++i) {
        question.minValue = maybe(-50, 50);
        question.maxValue = maybe(-50, 50);
        question.allowDecimals = pick(0, 1) == 1;
        const std::int64_t number = pick(-60, 60);
        const bool isInside =
            number >= question.minValue.value_or(number) && number <= question.maxValue.value_or(number);

        const auto error = checkAnswer(task, question, {{}, std::to_string(number), false});

        EXPECT_EQ(error.has_value(), !isInside) << number;
    }
}

TEST_P(AnswerCheckProperty, ATextIsRightExactlyWhenItsCharactersAreWithinTheBounds) {
    question.type = QVQuestionType::openEnded;
    for (int i = 0; i < 2000; ++i) {
        question.minValue = maybe(0, 12);
        question.maxValue = maybe(0, 12);
        const std::int64_t length = pick(1, 14);
        std::string text;
        for (std::int64_t c = 0; c < length; ++c) {
            static constexpr const char* letters[] = {"a", "ž", "語", "😀"};
            text += letters[pick(0, 3)];
        }
        const bool isInside =
            length >= question.minValue.value_or(length) && length <= question.maxValue.value_or(length);

        EXPECT_EQ(checkAnswer(task, question, {{}, text, false}).has_value(), !isInside) << text;
    }
}

TEST_P(AnswerCheckProperty, APickIsRightExactlyWhenItsKeysExistAndAreAsManyAsAskedFor) {
    question.type = QVQuestionType::multipleAnswers;
    for (const char* key : {"a", "b", "c", "d", "e"}) {
        auto answer = std::make_shared<QVAnswer>();
        answer->key = key;
        question.answers.push_back(answer);
    }
    for (int i = 0; i < 2000; ++i) {
        question.minMultipleAnswers = maybe(0, 6);
        question.maxMultipleAnswers = maybe(0, 6);
        std::vector<std::string> picked;
        bool areKnown = true;
        for (const char key : {'a', 'b', 'c', 'd', 'e', 'x'}) {
            if (pick(0, key == 'x' ? 9 : 1) == 0) {
                picked.emplace_back(1, key);
                areKnown = areKnown && key != 'x';
            }
        }
        const auto count = static_cast<std::int64_t>(picked.size());
        const bool isInside = count >= std::max<std::int64_t>(question.minMultipleAnswers.value_or(1), 1) &&
                              count <= question.maxMultipleAnswers.value_or(count);

        EXPECT_EQ(checkAnswer(task, question, {picked, "", false}).has_value(), !(areKnown && isInside));
    }
}

INSTANTIATE_TEST_SUITE_P(Seeds, AnswerCheckProperty, ::testing::Values(1U, 2U, 3U, 4U));

} // namespace
} // namespace quorvane
