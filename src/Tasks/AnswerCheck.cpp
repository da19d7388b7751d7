#include "Tasks/AnswerCheck.h"

#include <algorithm>
#include <charconv>
#include <cstdint>
#include <limits>
#include <set>
#include <string_view>

namespace quorvane {
namespace {

using Error = QVTaskSubmitError;
using Outcome = std::optional<Error>;

constexpr std::int64_t largest = std::numeric_limits<std::int64_t>::max();

struct Bounds {
    std::int64_t low;
    std::int64_t high;

    Bounds(std::optional<std::int64_t> theLow, std::optional<std::int64_t> theHigh)
        : low(theLow.value_or(0)), high(theHigh.value_or(largest)) {}

    [[nodiscard]] bool hold(std::int64_t value) const { return value >= low && value <= high; }
};

std::string_view trimmed(std::string_view text) {
    constexpr std::string_view blanks = " \t\r\n";
    const std::size_t begin = text.find_first_not_of(blanks);
    return begin == std::string_view::npos ? std::string_view()
                                           : text.substr(begin, text.find_last_not_of(blanks) - begin + 1);
}

/// Unicode code points of a UTF-8 text.
std::int64_t characters(std::string_view text) {
    return std::ranges::count_if(text, [](char byte) { return (static_cast<unsigned char>(byte) & 0xC0U) != 0x80U; });
}

template <class Number>
std::optional<Number> parse(std::string_view text) {
    if (text.starts_with('+') && text.size() > 1 && text[1] != '-') {
        text.remove_prefix(1);
    }
    Number number{};
    const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), number);
    return error == std::errc() && end == text.data() + text.size() ? std::optional(number) : std::nullopt;
}

Outcome checkNumber(const QVQuestion& question, std::string_view text) {
    if (text.empty()) {
        return Error::INVALID_VALUE();
    }
    const Bounds bounds(question.minValue, question.maxValue);
    bool isInside = false;
    if (const auto whole = parse<std::int64_t>(text)) {
        isInside = (!question.minValue || *whole >= bounds.low) && *whole <= bounds.high;
    } else {
        const auto number = parse<double>(text);
        const bool isPlain = text.find_first_not_of("+-.0123456789") == std::string_view::npos;
        if (!number || !isPlain || (!question.allowDecimals && text.find('.') != std::string_view::npos)) {
            return Error::INVALID_NUMBER_FORMAT();
        }
        isInside = (!question.minValue || *number >= static_cast<double>(bounds.low)) &&
                   *number <= static_cast<double>(bounds.high);
    }
    return isInside ? Outcome() : Error::INVALID_RANGE_NUMBER(bounds.low, bounds.high);
}

Outcome checkRating(const QVQuestion& question, std::string_view text) {
    if (text.empty()) {
        return Error::MISSING_RATING();
    }
    const auto rating = parse<std::int64_t>(text);
    if (!rating) {
        return Error::INVALID_NUMBER_FORMAT();
    }
    const Bounds bounds(1, question.numStars);
    return bounds.hold(*rating) ? Outcome() : Error::INVALID_RANGE_NUMBER(bounds.low, bounds.high);
}

Outcome checkText(const QVQuestion& question, const std::string& text) {
    if (trimmed(text).empty()) {
        return Error::INVALID_VALUE();
    }
    const Bounds bounds(question.minValue, question.maxValue);
    if (!bounds.hold(characters(text))) {
        return Error::INVALID_RANGE_CHARACTERS(bounds.low, bounds.high);
    }
    if (question.mustPickSuggestion.value_or(false) &&
        std::ranges::find(question.openTextSuggestions, text) == question.openTextSuggestions.end()) {
        return Error::INVALID_VALUE();
    }
    return {};
}

Outcome checkChoices(const QVQuestion& question, const AnswerInput& input, Bounds bounds) {
    const std::set<std::string> picked(input.picked.begin(), input.picked.end());
    const bool areKnown = std::ranges::all_of(picked, [&](const std::string& key) {
        return std::ranges::any_of(question.answers, [&](const auto& answer) { return answer && answer->key == key; });
    });
    if (!areKnown) {
        return Error::INVALID_VALUE();
    }
    const bool hasOther = question.hasOther.value_or(false) && !trimmed(input.text).empty();
    const auto count = static_cast<std::int64_t>(picked.size()) + (hasOther ? 1 : 0);
    return bounds.hold(count) ? Outcome() : Error::INVALID_RANGE_ANSWER(bounds.low, bounds.high);
}

Outcome checkByType(const QVQuestion& question, const AnswerInput& input) {
    const std::string_view text = trimmed(input.text);
    switch (question.type) {
        case QVQuestionType::barcodeScan:
            return text.empty() ? Error::MISSING_BARCODE() : Outcome();
        case QVQuestionType::date:
            return text.empty() ? Error::MISSING_DATE() : Outcome();
        case QVQuestionType::time:
            return text.empty() ? Error::MISSING_TIME() : Outcome();
        case QVQuestionType::ratingScale:
        case QVQuestionType::ratingScaleWithText:
            return checkRating(question, text);
        case QVQuestionType::numericOpenEnded:
            return checkNumber(question, text);
        case QVQuestionType::openEnded:
            return checkText(question, input.text);
        case QVQuestionType::singleAnswer:
            return checkChoices(question, input, Bounds(1, 1));
        case QVQuestionType::multipleAnswers:
            return checkChoices(question, input,
                                Bounds(std::max<std::int64_t>(question.minMultipleAnswers.value_or(1), 1),
                                       question.maxMultipleAnswers));
        case QVQuestionType::undefined:
            break;
    }
    return Error::UNKNOWN();
}

} // namespace

std::optional<QVTaskSubmitError> checkAnswer(const QVTask& task, const QVQuestion& question, const AnswerInput& input) {
    if (!task.key) {
        return Error::MISSING_TASK_KEY();
    }
    if (question.photoCaptureOptions && question.photoCaptureOptions->mustProvidePhoto && !input.hasPhoto) {
        return Error::MISSING_PHOTO();
    }
    if (question.isOptional.value_or(false) && input.picked.empty() && trimmed(input.text).empty()) {
        return std::nullopt;
    }
    return checkByType(question, input);
}

} // namespace quorvane
