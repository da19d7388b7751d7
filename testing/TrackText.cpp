#include "testing/TrackText.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <chrono>
#include <cmath>
#include <cstdint>
#include <system_error>

#include "JSON/UTF8.h"
#include "testing/DateText.h"

namespace quorvane::testing {
namespace {

/// The bytes of the mark of direction that begins here, which would turn round what a terminal shows: U+061C, U+200E,
/// U+200F, U+202A to U+202E or U+2066 to U+2069. 0 for none.
std::size_t directionMark(std::string_view text) {
    if (text.starts_with("\xD8\x9C")) {
        return 2;
    }
    if (!text.starts_with("\xE2\x80") && !text.starts_with("\xE2\x81")) {
        return 0;
    }
    const auto last = static_cast<unsigned char>(text.size() > 2 ? text[2] : 0);
    const bool isMark = text[1] == '\x81' ? last >= 0xA6U && last <= 0xA9U
                                          : last == 0x8EU || last == 0x8FU || (last >= 0xAAU && last <= 0xAEU);
    return isMark ? 3 : 0;
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

std::string printable(std::string_view text) {
    const bool isUTF8 = json::isValidUTF8(text);
    std::string shown;
    shown.reserve(text.size());
    for (std::size_t i = 0; i < text.size(); ++i) {
        const auto byte = static_cast<unsigned char>(text[i]);
        // The characters U+0080 to U+009F, which some terminals obey, are C2 80 to C2 9F.
        const bool isSecondSet =
            byte == 0xC2U && i + 1 < text.size() && static_cast<unsigned char>(text[i + 1]) < 0xA0U;
        if (byte < 0x20U || byte == 0x7FU || (byte >= 0x80U && !isUTF8)) {
            shown += '?';
        } else if (isSecondSet) {
            shown += '?';
            ++i;
        } else if (const std::size_t mark = directionMark(text.substr(i)); mark != 0) {
            shown += '?';
            i += mark - 1;
        } else {
            shown += text[i];
        }
    }
    return shown;
}

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
    std::transform(result.begin(), result.end(), result.begin(), [](char c) { return lowered(c); });
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

std::optional<std::pair<double, double>> readPair(std::string_view text) {
    const std::size_t comma = text.find(',');
    if (comma == std::string_view::npos || text.find_first_of(" \t\r\n") != std::string_view::npos) {
        return std::nullopt;
    }
    const std::optional<double> first = readDecimal(text.substr(0, comma));
    const std::optional<double> second = readDecimal(text.substr(comma + 1));
    return first && second ? std::optional(std::pair(*first, *second)) : std::nullopt;
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
