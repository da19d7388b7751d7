#pragma once

#include <optional>
#include <string>
#include <string_view>
#include <utility>

#include "Platform/Clock.h"

namespace quorvane::testing {

constexpr bool isDigit(char c) {
    return c >= '0' && c <= '9';
}

/// Whether it is a blank, a tabulator or a line break.
constexpr bool isBlank(int c) {
    return c == ' ' || c == '\t' || c == '\r' || c == '\n';
}

/// @p c in lower case, where it is ASCII.
constexpr char lowered(char c) {
    return c >= 'A' && c <= 'Z' ? static_cast<char>(c - 'A' + 'a') : c;
}

/// @p text without what would move the cursor of a terminal: each control character and mark of direction is "?", and
/// so is each byte beyond ASCII of a text that is no UTF-8.
[[nodiscard]] std::string printable(std::string_view text);

/// @p text in quotes, on one line and of a readable length.
[[nodiscard]] std::string quoted(std::string_view text);

/// The decimal number that is all of @p text but for blanks around it; a sign and an exponent are allowed. None when it
/// is no number or not finite.
[[nodiscard]] std::optional<double> readDecimal(std::string_view text);

/// Two such numbers with a comma between them and no blanks, such as "46.05,14.5"; none when @p text is anything else.
[[nodiscard]] std::optional<std::pair<double, double>> readPair(std::string_view text);

/// @p text without the blanks and line breaks around it.
[[nodiscard]] std::string_view trimmed(std::string_view text);

/// @p text in lower case, as far as it is ASCII.
[[nodiscard]] std::string lowered(std::string_view text);

/// A date and time as `readDate` takes it, with a blank in place of its "T" allowed, or the seconds since 1970 with an
/// optional fraction; from 100,000,000,000 on they count as milliseconds. None when @p text is neither, or beyond the
/// years 1678 to 2261.
[[nodiscard]] std::optional<platform::Date> readMoment(std::string_view text);

} // namespace quorvane::testing
