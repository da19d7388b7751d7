#include <algorithm>
#include <charconv>
#include <cstdlib>
#include <iterator>
#include <limits>
#include <random>
#include <string>
#include <string_view>

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

TEST_P(AnswerCheckProperty, ADecimalIsRightExactlyWhenItLiesWithinTheBoundsThatAreThere) {
    question.type = QVQuestionType::numericOpenEnded;
    question.allowDecimals = true;
    for (int i = 0; i < 2000; ++i) {
        question.minValue = maybe(-50, 50);
        question.maxValue = maybe(-50, 50);
        const std::int64_t thousandths = pick(-60'000, 60'000);
        const bool isInside = thousandths >= question.minValue.value_or(-60) * 1000 &&
                              thousandths <= question.maxValue.value_or(60) * 1000;
        const std::string text = (thousandths < 0 ? "-" : "") + std::to_string(std::abs(thousandths) / 1000) + "." +
                                 std::to_string(1000 + std::abs(thousandths) % 1000).substr(1);

        EXPECT_EQ(checkAnswer(task, question, {{}, text, false}).has_value(), !isInside) << text;
    }
}

/// Numbers in ascending order; those that an integer can be are bounds too.
constexpr const char* ascending[] = {"-100000000000000000000000000000",
                                     "-18446744073709551617",
                                     "-9223372036854775809",
                                     "-9223372036854775808.0000000000000000001",
                                     "-9223372036854775808",
                                     "-9223372036854775807.9999999999999999999",
                                     "-9223372036854775807",
                                     "-10.0000000000000000001",
                                     "-10",
                                     "-9.9999999999999999999",
                                     "-0.0000000000000000001",
                                     "0",
                                     "0.9999999999999999999",
                                     "1",
                                     "1.0000000000000000001",
                                     "9.9999999999999999999",
                                     "10",
                                     "10.0000000000000000001",
                                     "9223372036854775806",
                                     "9223372036854775806.9999999999999999999",
                                     "9223372036854775807",
                                     "9223372036854775807.0000000000000000001",
                                     "9223372036854775808",
                                     "18446744073709551615",
                                     "18446744073709551616",
                                     "100000000000000000000000000000"};
constexpr std::int64_t lastPlace = std::ssize(ascending) - 1;

/// The integer that stands at @p place, if one does.
std::optional<std::int64_t> integerAt(std::int64_t place) {
    const std::string_view text = ascending[place];
    std::int64_t number = 0;
    const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), number);
    return error == std::errc() && end == text.data() + text.size() ? std::optional(number) : std::nullopt;
}

/// The place of the largest integer.
std::int64_t largestPlace() {
    std::int64_t place = lastPlace;
    while (!integerAt(place)) {
        --place;
    }
    return place;
}

class AnswerCheckLimits : public AnswerCheckProperty {
protected:
    /// The number at @p place, written with zeros that change nothing.
    std::string written(std::int64_t place) {
        std::string text = ascending[place];
        const bool isNegative = text.starts_with('-');
        const std::string sign = isNegative ? "-" : (pick(0, 1) == 0 ? "+" : "");
        text = sign + std::string(static_cast<std::size_t>(pick(0, 25)), '0') + text.substr(isNegative ? 1 : 0);
        if (question.allowDecimals && text.find('.') == std::string::npos && pick(0, 1) == 0) {
            text += '.';
        }
        return text.find('.') == std::string::npos ? text
                                                   : text + std::string(static_cast<std::size_t>(pick(0, 25)), '0');
    }
};

TEST_P(AnswerCheckLimits, NumbersAtAndBeyondTheLimitsOfAnIntegerAreComparedExactly) {
    question.type = QVQuestionType::numericOpenEnded;
    question.allowDecimals = true;
    for (int i = 0; i < 20'000; ++i) {
        const std::int64_t low = pick(0, lastPlace);
        const std::int64_t high = pick(0, lastPlace);
        question.minValue = integerAt(low);
        question.maxValue = integerAt(high);
        const std::int64_t place = pick(0, lastPlace);
        const bool isInside =
            (!question.minValue || place >= low) && place <= (question.maxValue ? high : largestPlace());

        const std::string text = written(place);
        const auto error = checkAnswer(task, question, {{}, text, false});

        const auto expected = QVTaskSubmitError::INVALID_RANGE_NUMBER(
            question.minValue.value_or(0), question.maxValue.value_or(std::numeric_limits<std::int64_t>::max()));
        EXPECT_EQ(error, isInside ? std::nullopt : std::optional(expected)) << text;
    }
}

TEST_P(AnswerCheckLimits, RatingsAtAndBeyondTheLimitsOfAnIntegerAreComparedExactly) {
    question.type = QVQuestionType::ratingScale;
    for (int i = 0; i < 20'000; ++i) {
        const std::int64_t high = pick(0, lastPlace);
        question.numStars = integerAt(high);
        const std::int64_t place = pick(0, lastPlace);
        const bool isInside = place >= std::find(std::begin(ascending), std::end(ascending), std::string_view("1")) -
                                           std::begin(ascending) &&
                              place <= (question.numStars ? high : largestPlace());

        const std::string text = written(place);
        const auto error = checkAnswer(task, question, {{}, text, false});

        if (text.find('.') != std::string::npos) {
            EXPECT_EQ(error, QVTaskSubmitError::INVALID_NUMBER_FORMAT()) << text;
        } else {
            EXPECT_EQ(error.has_value(), !isInside) << text;
        }
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
        const bool isInside =
            count >= question.minMultipleAnswers.value_or(1) && count <= question.maxMultipleAnswers.value_or(count);

        EXPECT_EQ(checkAnswer(task, question, {picked, "", false}).has_value(), !(areKnown && isInside));
    }
}

TEST_P(AnswerCheckProperty, AnAnswerThatIsRightWithoutPicksIsRightWithThoseThatExistAndNoOthers) {
    auto answer = std::make_shared<QVAnswer>();
    answer->key = "a";
    question.answers.push_back(answer);
    constexpr QVQuestionType types[] = {QVQuestionType::openEnded,   QVQuestionType::numericOpenEnded,
                                        QVQuestionType::ratingScale, QVQuestionType::ratingScaleWithText,
                                        QVQuestionType::date,        QVQuestionType::time,
                                        QVQuestionType::barcodeScan};
    for (int i = 0; i < 2000; ++i) {
        question.type = types[pick(0, std::ssize(types) - 1)];
        std::vector<std::string> picked(static_cast<std::size_t>(pick(0, 3)), "a");
        const bool areKnown = pick(0, 1) == 0;
        if (!areKnown) {
            picked.insert(picked.begin() + pick(0, std::ssize(picked)), "x");
        }

        const auto error = checkAnswer(task, question, {picked, "4", false});

        EXPECT_EQ(error, areKnown ? std::nullopt : std::optional(QVTaskSubmitError::INVALID_VALUE()));
    }
}

INSTANTIATE_TEST_SUITE_P(Seeds, AnswerCheckLimits, ::testing::Values(1U, 2U, 3U, 4U));
INSTANTIATE_TEST_SUITE_P(Seeds, AnswerCheckProperty, ::testing::Values(1U, 2U, 3U, 4U));

} // namespace
} // namespace quorvane
