#include "Tasks/AnswerCheck.h"

#include <algorithm>
#include <charconv>
#include <compare>
#include <cstdint>
#include <limits>
#include <set>
#include <string_view>

#include "Tasks/TaskQuestions.h"

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

/// A number as it was typed, to be compared with integers without rounding.
struct Decimal {
    bool isNegative = false;
    bool hasPoint = false;
    /// Whether a digit behind the point is not zero.
    bool hasFraction = false;
    /// The digits before the point, without the sign. What is too large stands as the largest, beyond every bound.
    std::uint64_t whole = 0;

    [[nodiscard]] std::strong_ordering compare(std::int64_t bound) const {
        if (whole == 0 && !hasFraction) {
            return std::int64_t{0} <=> bound;
        }
        if (isNegative != (bound < 0)) {
            return isNegative ? std::strong_ordering::less : std::strong_ordering::greater;
        }
        const std::uint64_t size =
            bound < 0 ? 0 - static_cast<std::uint64_t>(bound) : static_cast<std::uint64_t>(bound);
        const bool isLarger = whole > size || (whole == size && hasFraction);
        if (!isLarger && whole == size) {
            return std::strong_ordering::equal;
        }
        return isLarger == isNegative ? std::strong_ordering::less : std::strong_ordering::greater;
    }
    [[nodiscard]] bool isBelow(std::int64_t bound) const { return std::is_lt(compare(bound)); }
    [[nodiscard]] bool isAbove(std::int64_t bound) const { return std::is_gt(compare(bound)); }
};

/// Digits with one sign before them and one point among them at most.
std::optional<Decimal> parse(std::string_view text) {
    Decimal number;
    if (text.starts_with('+') || text.starts_with('-')) {
        number.isNegative = text.front() == '-';
        text.remove_prefix(1);
    }
    const std::string_view whole = text.substr(0, text.find('.'));
    number.hasPoint = whole.size() < text.size();
    const std::string_view fraction = text.substr(number.hasPoint ? whole.size() + 1 : whole.size());
    constexpr std::string_view digits = "0123456789";
    if (whole.size() + fraction.size() == 0 || whole.find_first_not_of(digits) != std::string_view::npos ||
        fraction.find_first_not_of(digits) != std::string_view::npos) {
        return std::nullopt;
    }
    number.hasFraction = fraction.find_first_not_of('0') != std::string_view::npos;
    if (std::from_chars(whole.data(), whole.data() + whole.size(), number.whole).ec == std::errc::result_out_of_range) {
        number.whole = std::numeric_limits<std::uint64_t>::max();
    }
    return number;
}

Outcome checkNumber(const QVQuestion& question, std::string_view text) {
    if (text.empty()) {
        return Error::INVALID_VALUE();
    }
    const auto number = parse(text);
    if (!number || (number->hasPoint && !question.allowDecimals)) {
        return Error::INVALID_NUMBER_FORMAT();
    }
    const Bounds bounds(question.minValue, question.maxValue);
    const bool isOutside = (question.minValue && number->isBelow(bounds.low)) || number->isAbove(bounds.high);
    return isOutside ? Error::INVALID_RANGE_NUMBER(bounds.low, bounds.high) : Outcome();
}

Outcome checkRating(const QVQuestion& question, std::string_view text) {
    if (text.empty()) {
        return Error::MISSING_RATING();
    }
    const auto rating = parse(text);
    if (!rating || rating->hasPoint) {
        return Error::INVALID_NUMBER_FORMAT();
    }
    const Bounds bounds(1, question.numStars);
    const bool isOutside = rating->isBelow(bounds.low) || rating->isAbove(bounds.high);
    return isOutside ? Error::INVALID_RANGE_NUMBER(bounds.low, bounds.high) : Outcome();
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

bool arePicksKnown(const QVQuestion& question, const AnswerInput& input) {
    return std::ranges::all_of(input.picked, [&](const std::string& key) {
        return std::ranges::any_of(question.answers, [&](const auto& answer) { return answer && answer->key == key; });
    });
}

/// How many choices were picked, with the text of an "other" choice.
std::int64_t countPicks(const QVQuestion& question, const AnswerInput& input) {
    const std::set<std::string> picked(input.picked.begin(), input.picked.end());
    const bool hasOther = question.hasOther.value_or(false) && !trimmed(input.text).empty();
    return static_cast<std::int64_t>(picked.size()) + (hasOther ? 1 : 0);
}

Outcome checkChoices(const QVQuestion& question, const AnswerInput& input, const Bounds& bounds, bool needsOne) {
    const std::int64_t count = countPicks(question, input);
    const bool isRight = bounds.hold(count) && (count > 0 || !needsOne);
    return isRight ? Outcome() : Error::INVALID_RANGE_ANSWER(bounds.low, bounds.high);
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
            return checkChoices(question, input, Bounds(1, 1), true);
        case QVQuestionType::multipleAnswers:
            return checkChoices(question, input, Bounds(question.minMultipleAnswers, question.maxMultipleAnswers),
                                !question.minMultipleAnswers);
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
    if (needsPhoto(question) && !input.hasPhoto) {
        return Error::MISSING_PHOTO();
    }
    if (question.isOptional.value_or(false) && input.picked.empty() && trimmed(input.text).empty()) {
        return std::nullopt;
    }
    if (!arePicksKnown(question, input)) {
        return Error::INVALID_VALUE();
    }
    return checkByType(question, input);
}

} // namespace quorvane
