#pragma once

#include "JSON/Reading.h"

namespace quorvane::json {

enum class Numbers {
    /// 3.0 is an integer.
    byValue,
    /// 3.0 is a double.
    asWritten,
};

/// Any value as a value of its own; null is an empty AnyCodable.
AnyCodable valueOf(Element value, Numbers numbers);

/// A JSON number as an integer where it is whole and fits, else as a double.
AnyCodable numberOf(Element value);

} // namespace quorvane::json
