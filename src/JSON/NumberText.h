#pragma once

#include <string>

namespace quorvane::json {

/// The text of a double everywhere in the library: the shortest decimal form that reads back as the same double, with
/// ".0" where the value is whole ("46.0", "0.1", "1e+300", "-0.0", "nan", "inf").
[[nodiscard]] std::string textOf(double value);

}  // namespace quorvane::json
