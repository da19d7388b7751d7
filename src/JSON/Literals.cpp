#include "JSON/Literals.h"

#include <algorithm>
#include <charconv>

#include "JSON/Tape.h"

namespace quorvane::json {

namespace {

/// The digits of the largest integer.
constexpr std::int64_t mostDigits = 19;

/// The digits before and behind the point as one run, where in it the point stands, and the sign.
struct Digits {
    std::string run;
    std::int64_t point = 0;
    bool isNegative = false;
};

std::optional<Digits> digitsOf(std::string_view literal) {
    Digits digits;
    digits.isNegative = literal.starts_with('-');
    literal.remove_prefix(digits.isNegative ? 1 : 0);
    std::int64_t exponent = 0;
    if (const std::size_t mark = literal.find_first_of("eE"); mark != std::string_view::npos) {
        std::string_view text = literal.substr(mark + 1);
        text.remove_prefix(text.starts_with('+') ? 1 : 0);
        if (std::from_chars(text.data(), text.data() + text.size(), exponent).ec != std::errc()) {
            return std::nullopt;
        }
        literal = literal.substr(0, mark);
    }
    const std::size_t whole = std::min(literal.find('.'), literal.size());
    digits.run = literal.substr(0, whole);
    digits.run += whole < literal.size() ? literal.substr(whole + 1) : std::string_view();
    const std::size_t zeros = std::min(digits.run.find_first_not_of('0'), digits.run.size());
    digits.run.erase(0, zeros);
    if (__builtin_add_overflow(static_cast<std::int64_t>(whole) - static_cast<std::int64_t>(zeros), exponent,
                               &digits.point)) {
        return std::nullopt;
    }
    return digits;
}

} // namespace

std::optional<std::int64_t> exactInteger(std::string_view literal) {
    std::optional<Digits> digits = digitsOf(literal);
    if (!digits) {
        return std::nullopt;
    }
    if (digits->run.empty()) {
        return 0;
    }
    if (digits->point <= 0 || digits->point > mostDigits) {
        return std::nullopt;
    }
    const auto length = static_cast<std::size_t>(digits->point);
    if (digits->run.find_first_not_of('0', length) != std::string::npos) {
        return std::nullopt;
    }
    digits->run.resize(length, '0');
    const std::string text = (digits->isNegative ? "-" : "") + digits->run;
    std::int64_t integer = 0;
    if (std::from_chars(text.data(), text.data() + text.size(), integer).ec != std::errc()) {
        return std::nullopt;
    }
    return integer;
}

std::optional<std::int64_t> Element::integerAsWritten() const {
    return tape->literals->integerAt(index);
}

std::optional<std::int64_t> Literals::integerAt(std::size_t index) const {
    std::call_once(once, [this] { find(); });
    const auto found = integers.find(index);
    return found == integers.end() ? std::nullopt : std::optional(found->second);
}

void Literals::find() const {
    // The numbers stand on the tape in the order of the text.
    std::size_t index = 1;
    const auto nextNumber = [&] {
        while (!isNumber(Element(tape, index).type())) {
            ++index;
        }
        const Element number(tape, index);
        index += 2;
        return number;
    };
    visitNumbers(text, [&](std::size_t, std::string_view literal) {
        const Element number = nextNumber();
        if (number.type() == ElementType::decimal && !isToldByDouble(number.decimal())) {
            if (const std::optional<std::int64_t> integer = exactInteger(literal)) {
                integers.emplace(index - 2, *integer);
            }
        }
    });
}

} // namespace quorvane::json
