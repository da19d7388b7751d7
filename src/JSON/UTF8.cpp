#include "JSON/UTF8.h"

#include <simdjson.h>

namespace quorvane::json {

bool isValidUTF8(std::string_view text) {
    return simdjson::validate_utf8(text.data(), text.size());
}

} // namespace quorvane::json
