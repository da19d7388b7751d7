#include "tools/Questions.h"

#include <algorithm>
#include <cstdint>
#include <limits>
#include <optional>
#include <vector>

#include "JSON/JSON.h"
#include "Tasks/TaskQuestions.h"
#include "tools/Terminal.h"
#include "tools/Text.h"

namespace quorvane::tool {
namespace {

/// "from 0 to 20", "of at least 3", "of at most 200"; empty without bounds.
std::string boundsText(const std::optional<std::int64_t>& low, const std::optional<std::int64_t>& high) {
    if (low && high) {
        return " from " + std::to_string(*low) + " to " + std::to_string(*high);
    }
    if (low) {
        return " of at least " + std::to_string(*low);
    }
    return high ? " of at most " + std::to_string(*high) : "";
}

std::string textText(const QVQuestion& question) {
    const std::string bounds = boundsText(question.minValue, question.maxValue);
    return question.mustPickSuggestion.value_or(false) ? "one of the suggestions"
                                                       : "text" + bounds + (bounds.empty() ? "" : " characters");
}

std::string choicesText(const QVQuestion& question) {
    const std::int64_t low = std::max<std::int64_t>(question.minMultipleAnswers.value_or(1), 0);
    const std::int64_t high = question.maxMultipleAnswers.value_or(static_cast<std::int64_t>(question.answers.size()));
    return (low == high ? std::to_string(low) : std::to_string(low) + " to " + std::to_string(high)) + " choices";
}

std::string kindText(const QVQuestion& question) {
    switch (question.type) {
        case QVQuestionType::barcodeScan:
            return "barcode";
        case QVQuestionType::date:
            return "date";
        case QVQuestionType::time:
            return "time";
        case QVQuestionType::ratingScale:
        case QVQuestionType::ratingScaleWithText:
            return question.numStars ? "1 to " + std::to_string(*question.numStars) + " stars" : "stars, at least one";
        case QVQuestionType::numericOpenEnded:
            return (question.allowDecimals ? "number" : "whole number") +
                   boundsText(question.minValue, question.maxValue);
        case QVQuestionType::openEnded:
            return textText(question);
        case QVQuestionType::singleAnswer:
            return "one choice";
        case QVQuestionType::multipleAnswers:
            return choicesText(question);
        case QVQuestionType::undefined:
            break;
    }
    return "of no known type";
}

} // namespace

std::string titleOf(const QVTask& task) {
    return printable(task.title.value_or(task.key.value_or("an untitled task")));
}

std::string answerText(const QVQuestion& question) {
    std::string text = kindText(question);
    if (question.hasOther.value_or(false)) {
        text += ", or another answer";
    }
    if (question.isOptional.value_or(false)) {
        text += ", optional";
    }
    if (question.photoCaptureOptions) {
        text += needsPhoto(question) ? ", with a photo" : ", a photo if you like";
    }
    return text;
}

std::string questionText(const QVTask& task, const std::string& key) {
    const std::shared_ptr<QVQuestion> question = questionOf(task, key);
    return printable(question ? key + ": " + question->question : key);
}

void printQuestion(const QVQuestion& question, Terminal& terminal, std::size_t indent) {
    const std::string margin(indent, ' ');
    terminal.line(margin + printable(question.key.value_or("(no key)")) + "  " + printable(question.question) + "  " +
                  terminal.painted("(" + answerText(question) + ")", Paint::faint));
    std::size_t column = 0;
    for (const auto& answer : question.answers) {
        column = answer ? std::max(column, width(printable(answer->key.value_or("")))) : column;
    }
    for (const auto& answer : question.answers) {
        if (answer) {
            terminal.line(margin + "    " + padded(printable(answer->key.value_or("")), column) + "  " +
                          printable(answer->displayText));
        }
    }
}

AnyCodable documentOf(const QVQuestion& question) {
    return json::readExactly(json::encode(question));
}

} // namespace quorvane::tool
