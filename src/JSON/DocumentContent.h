#pragma once

#include <optional>

#include <simdjson.h>

#include "JSON/JSON.h"
#include "JSON/Literals.h"
#include "JSON/Tape.h"

namespace quorvane::json {

/// What a document holds: the parser's tape and text buffer. They do not need the parser any longer, and the
/// text only for numbers that the tape does not hold exactly. Each thread keeps the memory of the last one that it
/// dropped for its next one, unless that is large.
struct Document::Content {
    Content();
    Content(const Content&) = delete;
    Content& operator=(const Content&) = delete;
    ~Content();

    simdjson::dom::document parsed;
    Tape tape;
    std::optional<Literals> literals;
};

} // namespace quorvane::json
