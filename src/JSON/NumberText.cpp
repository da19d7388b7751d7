#include "JSON/NumberText.h"

#include <algorithm>
#include <charconv>
#include <cmath>
#include <cstdint>
#include <cstring>
#include <string_view>

namespace quorvane::json {

namespace {

char* put(char* out, std::string_view text) {
    std::memcpy(out, text.data(), text.size());
    return out + text.size();
}

/// Below this a number stands with an exponent.
template <class Number>
constexpr auto smallestPlain = static_cast<Number>(1e-4);

constexpr std::int64_t powerOfTen(int exponent) {
    return exponent == 0 ? 1 : 10 * powerOfTen(exponent - 1);
}

/// Most doubles that are written are decimals of few digits. Where a whole number of at most 15 digits over a power of
/// ten is the double, that decimal is its shortest text: no two decimals of so few digits are the same double, and both
/// the whole number and the power of ten are exact, so that the division rounds only once. Null where there is none.
char* writeShortDecimal(char* out, double value) {
    constexpr int places = 6;
    constexpr std::int64_t scale = powerOfTen(places);
    constexpr double largest = 1e15 / static_cast<double>(scale);
    const double magnitude = std::fabs(value);
    const bool isPlain = magnitude == 0 || (magnitude >= smallestPlain<double> && magnitude < largest);
    if (!isPlain) {
        return nullptr;
    }
    const auto units = std::llrint(magnitude * static_cast<double>(scale));
    if (static_cast<double>(units) / static_cast<double>(scale) != magnitude) {
        return nullptr;
    }
    if (std::signbit(value)) {
        *out++ = '-';
    }
    out = std::to_chars(out, out + numberTextCapacity, units / scale).ptr;
    *out++ = '.';
    std::int64_t rest = units % scale;
    std::int64_t unit = scale / 10;
    do {
        *out++ = static_cast<char>('0' + rest / unit);
        rest %= unit;
        unit /= 10;
    } while (rest != 0);
    return out;
}

template <class Number>
char* write(char* out, Number value) {
    if (std::isnan(value)) {
        return put(out, "nan");
    }
    if (std::isinf(value)) {
        return put(out, value < 0 ? "-inf" : "inf");
    }
    const Number magnitude = std::fabs(value);
    const bool hasExponent =
        magnitude != 0 && (magnitude < smallestPlain<Number> || magnitude >= static_cast<Number>(1e16));
    char* const limit = out + numberTextCapacity;
    if (hasExponent) {
        return std::to_chars(out, limit, value, std::chars_format::scientific).ptr;
    }
    char* const end = std::to_chars(out, limit, value, std::chars_format::fixed).ptr;
    return std::find(out, end, '.') == end ? put(end, ".0") : end;
}

} // namespace

char* writeNumber(char* out, double value) {
    char* const end = writeShortDecimal(out, value);
    return end != nullptr ? end : write(out, value);
}

char* writeNumber(char* out, float value) {
    return write(out, value);
}

std::string textOf(double value) {
    char text[numberTextCapacity];
    return {text, writeNumber(text, value)};
}

} // namespace quorvane::json
