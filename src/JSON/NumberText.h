#pragma once

#include <cstddef>
#include <string>

namespace quorvane::json {

/// The text of a double everywhere in the library: the shortest decimal form that reads back as the same double, with
/// ".0" where the value is whole ("46.0", "0.1", "-0.0", "nan", "inf"). Magnitudes below 0.0001 and from 1e+16 on stand
/// with an exponent ("1e-05", "1e+300").
[[nodiscard]] std::string textOf(double value);

/// Room for the longest text of a double.
inline constexpr std::size_t numberTextCapacity = 32;

/// Writes the same text to @p out, which has room for `numberTextCapacity` characters; returns its end.
char* writeNumber(char* out, double value);
/// The shortest text that reads back as the same float.
char* writeNumber(char* out, float value);

} // namespace quorvane::json
