#include "JSON/Parsing.h"

#include <algorithm>
#include <charconv>
#include <cstdint>
#include <memory>
#include <string_view>
#include <utility>

#include "JSON/CodingErrors.h"
#include "JSON/Depth.h"
#include "JSON/Literals.h"
#include "JSON/PerThread.h"

namespace quorvane::json {

namespace {

/// What the parser does on this processor is chosen before the program makes its first static object, and so outlasts
/// them all: their destructors may encode and decode.
[[gnu::constructor(101)]] void chooseImplementation() {
    static_cast<void>(simdjson::get_active_implementation()->name());
}

std::size_t depthOf(std::string_view text) {
    std::size_t depth = 0;
    std::size_t deepestSeen = 0;
    visitOutsideStrings(text, [&](std::size_t i) {
        if (text[i] == '[' || text[i] == '{') {
            deepestSeen = std::max(deepestSeen, ++depth);
        } else if ((text[i] == ']' || text[i] == '}') && depth > 0) {
            --depth;
        }
    });
    return deepestSeen;
}

bool isBeyond64Bits(std::string_view integer) {
    std::int64_t value = 0;
    return std::from_chars(integer.data(), integer.data() + integer.size(), value).ec == std::errc::result_out_of_range;
}

/// The text with ".0" behind each integer beyond 64 bits.
std::string withLongIntegersAsDoubles(std::string_view text) {
    std::string result;
    std::size_t copied = 0;
    visitNumbers(text, [&](std::size_t position, std::string_view number) {
        if (number.find_first_of(".eE+") == std::string_view::npos && isBeyond64Bits(number)) {
            const std::size_t end = position + number.size();
            result += text.substr(copied, end - copied);
            result += ".0";
            copied = end;
        }
    });
    return result += text.substr(copied);
}

std::string_view sentenceFor(simdjson::error_code error) {
    switch (error) {
        case simdjson::DEPTH_ERROR:
            return "the text is nested more than 512 levels deep";
        case simdjson::CAPACITY:
        case simdjson::MEMALLOC:
            return "the text is too large";
        case simdjson::STRING_ERROR:
            return "a string in the text has a wrong escape";
        case simdjson::UNESCAPED_CHARS:
            return "a string in the text holds a control character";
        case simdjson::UNCLOSED_STRING:
            return "a string in the text has no end";
        case simdjson::NUMBER_ERROR:
            return "a number in the text is malformed or beyond a double";
        case simdjson::UTF8_ERROR:
            return "the text is not UTF-8";
        case simdjson::EMPTY:
            return "the text is empty";
        default:
            return "the text is no JSON document";
    }
}

[[noreturn]] void raise(simdjson::error_code error) {
    throw DecodingError(DecodingError::Kind::malformed, "", std::string(sentenceFor(error)));
}

/// Parses for one thread. What a large text made it allocate is not kept.
class Parser {
public:
    simdjson::error_code parse(simdjson::dom::document& document, std::string& text, std::size_t depth) {
        text.reserve(text.size() + simdjson::SIMDJSON_PADDING);
        simdjson::error_code error = simdjson::SUCCESS;
        if (depth != parser.max_depth()) {
            error = parser.allocate(parser.capacity(), depth);
        }
        if (error == simdjson::SUCCESS) {
            error = parser.parse_into_document(document, text.data(), text.size(), false).error();
        }
        if (parser.capacity() > largestKeptCapacity) {
            parser = simdjson::dom::parser();
        }
        return error;
    }

private:
    simdjson::dom::parser parser;
};

} // namespace

void parseInto(simdjson::dom::document& document, std::string& text) {
    Parser* const kept = PerThread<Parser>::get();
    const std::unique_ptr<Parser> own = kept == nullptr ? std::make_unique<Parser>() : nullptr;
    Parser& parser = kept == nullptr ? *own : *kept;
    simdjson::error_code error = parser.parse(document, text, deepest);
    std::string rewritten;
    std::string* last = &text;
    if (error == simdjson::NUMBER_ERROR) {
        rewritten = withLongIntegersAsDoubles(text);
        last = &rewritten;
        error = parser.parse(document, *last, deepest);
    }
    if (error == simdjson::DEPTH_ERROR && depthOf(*last) == deepest) {
        // The parser counts an innermost list or object only when it is not empty.
        error = parser.parse(document, *last, deepest + 1);
    }
    if (error != simdjson::SUCCESS) {
        raise(error);
    }
}

} // namespace quorvane::json
