#pragma once

#include <string>

#include <simdjson.h>

namespace quorvane::json {

/// Parses a text with the parser of this thread into @p document, which then needs neither. Gives @p text the spare
/// capacity that the parser asks for, and leaves it as it is otherwise. Throws a `DecodingError` of kind `malformed`.
void parseInto(simdjson::dom::document& document, std::string& text);

} // namespace quorvane::json
