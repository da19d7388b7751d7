#include "JSON/Reading.h"

#include <algorithm>
#include <utility>

#include "JSON/NumberText.h"

namespace quorvane::json {

namespace {

constexpr std::size_t longestQuote = 40;

/// A text as a message shows it: on one line, and not the whole of a long one.
std::string quoted(std::string_view text) {
    std::string result = "\"";
    std::size_t length = std::min(text.size(), longestQuote);
    while (length < text.size() && length > 0 && (static_cast<unsigned char>(text[length]) & 0xC0) == 0x80) {
        --length;
    }
    for (const char c : text.substr(0, length)) {
        if (static_cast<unsigned char>(c) < 0x20 || c == 0x7F) {
            result += '?';
        } else {
            result += c;
        }
    }
    return result + (length < text.size() ? "...\"" : "\"");
}

std::string inWords(Element value) {
    switch (value.type()) {
        case ElementType::array:
            return "a list";
        case ElementType::object:
            return "an object";
        case ElementType::int64:
            return std::to_string(value.integer());
        case ElementType::uint64:
            return std::to_string(value.naturalNumber());
        case ElementType::decimal:
            return textOf(value.decimal());
        case ElementType::string:
            return quoted(value.text());
        case ElementType::true_:
            return "true";
        case ElementType::false_:
            return "false";
        case ElementType::null:
            break;
    }
    return "null";
}

std::string expectation(std::string_view expected, Element found) {
    const bool startsWithVowel = std::string_view("aeiou").find(expected.front()) != std::string_view::npos;
    std::string text = startsWithVowel ? "expected an " : "expected a ";
    text += expected;
    return text + ", found " + inWords(found);
}

} // namespace

bool Reading::mismatch(std::string_view expected, Element found) {
    return quietness == 0 ? fail(DecodingError::Kind::typeMismatch, expected, expectation(expected, found)) : false;
}

bool Reading::corrupted(std::string_view expected, Element found) {
    return quietness == 0 ? fail(DecodingError::Kind::dataCorrupted, expected, expectation(expected, found)) : false;
}

bool Reading::fail(DecodingError::Kind theKind, std::string_view expected, std::string theDescription) {
    if (quietness == 0) {
        kind = theKind;
        expectedType = expected;
        description = std::move(theDescription);
        path.clear();
    }
    return false;
}

void Reading::within(std::string_view key) {
    if (quietness == 0) {
        path.push_back({std::string(key), std::nullopt});
    }
}

void Reading::within(std::size_t index) {
    if (quietness == 0) {
        path.push_back({std::to_string(index), static_cast<std::int64_t>(index)});
    }
}

void Reading::raise() {
    std::reverse(path.begin(), path.end());
    throw DecodingError(kind, std::move(expectedType), std::move(description), std::move(path));
}

} // namespace quorvane::json
