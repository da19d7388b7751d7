#include "tools/demo/SampleAnswers.h"

#include <algorithm>
#include <cstdint>

namespace quorvane::tool {
namespace {

/// The first choices, so many of them.
std::vector<std::string> firstChoices(const QVQuestion& question, std::size_t count) {
    std::vector<std::string> keys;
    for (const auto& answer : question.answers) {
        if (answer && answer->key && keys.size() < count) {
            keys.push_back(*answer->key);
        }
    }
    return keys;
}

std::size_t fittingCount(const QVQuestion& question) {
    const std::int64_t most = question.maxMultipleAnswers.value_or(2);
    return static_cast<std::size_t>(std::max<std::int64_t>(std::min<std::int64_t>(most, 2), 1));
}

std::string text(std::int64_t number) {
    return std::to_string(number);
}

} // namespace

Entry fittingAnswer(const QVQuestion& question) {
    switch (question.type) {
        case QVQuestionType::singleAnswer:
            return {.picked = firstChoices(question, 1)};
        case QVQuestionType::multipleAnswers:
            return {.picked = firstChoices(question, fittingCount(question))};
        case QVQuestionType::numericOpenEnded:
            return {.text = question.allowDecimals ? "0.95" : text(question.minValue.value_or(1))};
        case QVQuestionType::ratingScale:
        case QVQuestionType::ratingScaleWithText:
            return {.text = text(question.numStars.value_or(1))};
        case QVQuestionType::date:
            return {.text = "2026-11-21"};
        case QVQuestionType::time:
            return {.text = "18:30"};
        case QVQuestionType::barcodeScan:
            return {.text = "4006381333931"};
        case QVQuestionType::openEnded:
        case QVQuestionType::undefined:
            break;
    }
    return {.text = "Tidy, and everything is there"};
}

Entry wrongAnswer(const QVQuestion& question) {
    switch (question.type) {
        case QVQuestionType::singleAnswer:
            return {.picked = firstChoices(question, 2)};
        case QVQuestionType::multipleAnswers:
            return {.picked = firstChoices(question, question.answers.size())};
        case QVQuestionType::numericOpenEnded:
            return {.text = "almost one"};
        case QVQuestionType::ratingScale:
            return {.text = text(question.numStars.value_or(0) + 1)};
        case QVQuestionType::openEnded:
            return {.text = "ok"};
        default:
            return {};
    }
}

} // namespace quorvane::tool
