#include "testing/TrackText.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <chrono>
#include <cmath>
#include <cstdint>
#include <system_error>

#include "testing/DateText.h"

namespace quorvane::testing {
namespace {

constexpr bool isDigit(char c) {
    return c >= '0' && c <= '9';
}

constexpr bool isBlank(char c) {
    return c == ' ' || c == '\t' || c == '\r' || c == '\n';
}

/// Nanoseconds of the @p digits behind a decimal point, that point being worth @p unit nanoseconds.
std::int64_t fraction(std::string_view digits, std::int64_t unit) {
    std::int64_t result = 0;
    for (const char c : digits) {
        unit /= 10;
        result += unit * (c - '0');
    }
    return result;
}

std::optional<platform::Date> readSeconds(std::string_view text) {
    using namespace std::chrono;
    constexpr std::int64_t firstMilliseconds = 100'000'000'000;
    constexpr sys_seconds first = sys_days{year{1678} / 1 / 1};
    constexpr sys_seconds last = sys_days{year{2262} / 1 / 1};
    const bool isNegative = text.starts_with('-');
    text.remove_prefix(isNegative ? 1 : 0);
    const std::size_t point = text.find('.');
    const std::string_view whole = text.substr(0, point);
    const std::string_view part = point == std::string_view::npos ? "" : text.substr(point + 1);
    std::int64_t value = 0;
    const auto [end, problem] = std::from_chars(whole.data(), whole.data() + whole.size(), value);
    if (problem != std::errc() || end != whole.data() + whole.size() || !isDigit(whole.front()) ||
        !std::all_of(part.begin(), part.end(), isDigit)) {
        return std::nullopt;
    }
    const std::int64_t unit = value >= firstMilliseconds ? 1'000'000 : 1'000'000'000;
    const std::int64_t seconds = value / (1'000'000'000 / unit);
    if (seconds > 1'000'000'000'000) {
        return std::nullopt;
    }
    const sys_seconds moment(std::chrono::seconds(isNegative ? -seconds : seconds));
    if (moment <= first || moment >= last) {
        return std::nullopt;
    }
    const std::int64_t rest = value % (1'000'000'000 / unit) * unit + fraction(part, unit);
    return moment + nanoseconds(isNegative ? -rest : rest);
}

} // namespace

std::string quoted(std::string_view text) {
    constexpr std::size_t longest = 40;
    std::string result = "\"";
    for (const char c : text.substr(0, longest)) {
        result += c >= ' ' && c <= '~' ? c : '?';
    }
    return result + (text.size() > longest ? "...\"" : "\"");
}

std::string_view trimmed(std::string_view text) {
    while (!text.empty() && isBlank(text.front())) {
        text.remove_prefix(1);
    }
    while (!text.empty() && isBlank(text.back())) {
        text.remove_suffix(1);
    }
    return text;
}

std::string lowered(std::string_view text) {
    std::string result(text);
    std::transform(result.begin(), result.end(), result.begin(),
                   [](char c) { return c >= 'A' && c <= 'Z' ? static_cast<char>(c - 'A' + 'a') : c; });
    return result;
}

std::optional<double> readDecimal(std::string_view text) {
    std::string_view digits = trimmed(text);
    if (digits.size() > 1 && digits[0] == '+' && digits[1] != '-') {
        digits.remove_prefix(1);
    }
    double value = 0;
    const auto [end, problem] = std::from_chars(digits.data(), digits.data() + digits.size(), value);
    if (problem != std::errc() || end != digits.data() + digits.size() || !std::isfinite(value)) {
        return std::nullopt;
    }
    return value;
}

std::optional<platform::Date> readMoment(std::string_view text) {
    constexpr std::size_t dateLength = 10;
    const std::string_view content = trimmed(text);
    std::array<char, 40> copy{};
    if (content.size() <= dateLength || content.size() > copy.size() || content[4] != '-') {
        return readSeconds(content);
    }
    if (content[dateLength] != ' ') {
        return readDate(content);
    }
    std::copy(content.begin(), content.end(), copy.begin());
    copy[dateLength] = 'T';
    return readDate({copy.data(), content.size()});
}

} // namespace quorvane::testing
