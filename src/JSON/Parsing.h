#pragma once

#include <string>

#include <simdjson.h>

namespace quorvane::json {

/// Parses a text with the parser of this thread into @p document, which then needs neither. Throws a `DecodingError` of
/// kind `malformed`.
void parseInto(simdjson::dom::document& document, std::string text);

} // namespace quorvane::json
