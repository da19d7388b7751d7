#include "JSON/NumberText.h"

#include <algorithm>
#include <charconv>
#include <cmath>
#include <cstring>
#include <string_view>

namespace quorvane::json {

namespace {

char* put(char* out, std::string_view text) {
    std::memcpy(out, text.data(), text.size());
    return out + text.size();
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
        magnitude != 0 && (magnitude < static_cast<Number>(1e-4) || magnitude >= static_cast<Number>(1e16));
    char* const limit = out + numberTextCapacity;
    if (hasExponent) {
        return std::to_chars(out, limit, value, std::chars_format::scientific).ptr;
    }
    char* const end = std::to_chars(out, limit, value, std::chars_format::fixed).ptr;
    return std::find(out, end, '.') == end ? put(end, ".0") : end;
}

} // namespace

char* writeNumber(char* out, double value) {
    return write(out, value);
}

char* writeNumber(char* out, float value) {
    return write(out, value);
}

std::string textOf(double value) {
    char text[numberTextCapacity];
    return {text, writeNumber(text, value)};
}

} // namespace quorvane::json
