#pragma once

#include <simdjson.h>

#include "JSON/JSON.h"
#include "JSON/Tape.h"

namespace quorvane::json {

/// What a document holds: the parser's tape and text buffer. They need neither the parser nor the text any longer. Each
/// thread keeps the memory of the last one that it dropped for its next one, unless that is large.
struct Document::Content {
    Content();
    Content(const Content&) = delete;
    Content& operator=(const Content&) = delete;
    ~Content();

    simdjson::dom::document parsed;
    Tape tape;
};

} // namespace quorvane::json
