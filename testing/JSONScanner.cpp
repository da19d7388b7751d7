#include "testing/JSONScanner.h"

#include <string_view>

#include "testing/TrackText.h"
#include "testing/UTF8.h"

namespace quorvane::testing {

JSONScanner::Token JSONScanner::next() {
    if (!failure.empty()) {
        return Token::error;
    }
    skipBlanks();
    if (expected == Expected::commaOrEnd && input.peek() == ',') {
        input.get();
        skipBlanks();
        expected = open.back() == '}' ? Expected::key : Expected::value;
    }
    tokenLine = input.lineNumber();
    tokenOffset = input.offset();
    const int byte = input.get();
    switch (expected) {
        case Expected::document:
            return byte == TrackInput::end ? Token::finished : value(byte);
        case Expected::firstValue:
            return byte == ']' ? end(byte) : value(byte);
        case Expected::value:
            return value(byte);
        case Expected::commaOrEnd:
            return end(byte);
        case Expected::firstKey:
            if (byte == '}') {
                return end(byte);
            }
            break;
        case Expected::key:
            break;
    }
    if (byte != '"') {
        return fail("it has a member without a name");
    }
    if (!takeText() || !takeColon()) {
        return Token::error;
    }
    expected = Expected::value;
    return Token::key;
}

bool JSONScanner::skip(Token first) {
    if (first == Token::beginObject || first == Token::beginArray) {
        const std::size_t around = open.size() - 1;
        while (open.size() > around) {
            if (next() == Token::error) {
                return false;
            }
        }
    }
    return first != Token::error;
}

JSONScanner::Token JSONScanner::fail(const char* reason) {
    refuse(reason);
    return Token::error;
}

bool JSONScanner::refuse(const char* reason) {
    failure = reason;
    return false;
}

void JSONScanner::skipBlanks() {
    for (int byte = input.peek(); byte == ' ' || byte == '\n' || byte == '\t' || byte == '\r'; byte = input.peek()) {
        input.get();
    }
}

JSONScanner::Token JSONScanner::value(int byte) {
    if (byte == '{' || byte == '[') {
        if (open.size() == deepest) {
            return fail("it is nested too deep");
        }
        open.push_back(byte == '{' ? '}' : ']');
        expected = byte == '{' ? Expected::firstKey : Expected::firstValue;
        return byte == '{' ? Token::beginObject : Token::beginArray;
    }
    if (byte == '"') {
        return takeText() ? closed(Token::text) : Token::error;
    }
    if (byte == '-' || (byte >= '0' && byte <= '9')) {
        return takeNumber(byte) ? closed(Token::number) : Token::error;
    }
    if (byte >= 'a' && byte <= 'z') {
        return takeWord(byte) ? closed(Token::word) : Token::error;
    }
    return fail(byte == TrackInput::end ? "it ends within a value" : "it has a value that is none");
}

JSONScanner::Token JSONScanner::end(int byte) {
    if (byte == TrackInput::end) {
        return fail("it ends within an object or a list");
    }
    if (byte != open.back()) {
        return fail("a comma or an end is missing");
    }
    open.pop_back();
    return closed(byte == '}' ? Token::endObject : Token::endArray);
}

JSONScanner::Token JSONScanner::closed(Token token) {
    expected = open.empty() ? Expected::document : Expected::commaOrEnd;
    return token;
}

bool JSONScanner::takeColon() {
    skipBlanks();
    return input.get() == ':' || refuse("a colon is missing");
}

bool JSONScanner::takeText() {
    content.clear();
    while (true) {
        const int byte = input.get();
        if (byte == '"') {
            return true;
        }
        static_assert(TrackInput::end < ' ');
        if (byte < ' ') {
            return refuse("it has a text that does not end");
        }
        if (byte != '\\') {
            append(byte);
        } else if (!takeEscape()) {
            return refuse("it has an escape that is none");
        }
    }
}

bool JSONScanner::takeEscape() {
    constexpr std::string_view escapes = "\"\\/bfnrt";
    constexpr std::string_view meanings = "\"\\/\b\f\n\r\t";
    const int byte = input.get();
    if (byte != 'u') {
        const std::size_t index =
            byte == TrackInput::end ? std::string_view::npos : escapes.find(static_cast<char>(byte));
        if (index == std::string_view::npos) {
            return false;
        }
        append(meanings[index]);
        return true;
    }
    std::uint32_t point = 0;
    if (!takeUnit(point)) {
        return false;
    }
    if (point >= 0xD800 && point < 0xDC00 && input.peek() == '\\') {
        input.get();
        std::uint32_t low = 0;
        if (input.get() != 'u' || !takeUnit(low)) {
            return false;
        }
        const bool isPair = low >= 0xDC00 && low < 0xE000;
        point = isPair ? 0x10000 + (point - 0xD800) * 0x400 + (low - 0xDC00) : point;
    }
    if (content.size() < longest) {
        appendUTF8(content, point);
    }
    return true;
}

bool JSONScanner::takeUnit(std::uint32_t& unit) {
    for (int i = 0; i < 4; ++i) {
        const int byte = input.get();
        const int lower = byte >= 'A' && byte <= 'F' ? byte - 'A' + 'a' : byte;
        const bool isLetter = lower >= 'a' && lower <= 'f';
        if (!isLetter && (byte < '0' || byte > '9')) {
            return false;
        }
        unit = unit * 16 + static_cast<std::uint32_t>(isLetter ? lower - 'a' + 10 : byte - '0');
    }
    return true;
}

bool JSONScanner::takeNumber(int byte) {
    constexpr std::string_view parts = "0123456789+-.eE";
    content.assign(1, static_cast<char>(byte));
    while (input.peek() != TrackInput::end && parts.find(static_cast<char>(input.peek())) != std::string_view::npos) {
        if (content.size() == longest) {
            return refuse("it has a number that is too long");
        }
        content += static_cast<char>(input.get());
    }
    return readDecimal(content).has_value() || refuse("it has a number that is none");
}

bool JSONScanner::takeWord(int byte) {
    content.assign(1, static_cast<char>(byte));
    while (input.peek() >= 'a' && input.peek() <= 'z' && content.size() < 5) {
        content += static_cast<char>(input.get());
    }
    return content == "true" || content == "false" || content == "null" || refuse("it has a value that is none");
}

void JSONScanner::append(int byte) {
    if (content.size() < longest) {
        content += static_cast<char>(byte);
    }
}

} // namespace quorvane::testing
