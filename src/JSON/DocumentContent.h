#pragma once

#include <simdjson.h>

#include "JSON/JSON.h"

namespace quorvane::json {

/// What a document holds: the parser's tape and text buffer. They need neither the parser nor the text any longer.
struct Document::Content {
    simdjson::dom::document parsed;

    [[nodiscard]] simdjson::dom::element root() const { return parsed.root(); }
};

} // namespace quorvane::json
