#include "testing/XMLScanner.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <utility>

#include "testing/TrackText.h"
#include "testing/UTF8.h"

namespace quorvane::testing {
namespace {

constexpr bool endsName(int c) {
    return isBlank(c) || c == '/' || c == '>' || c == '=' || c == '<' || c == TrackInput::end;
}

constexpr bool beginsName(int c) {
    return (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z') || c == '_' || c == ':' || c >= 0x80;
}

} // namespace

std::string_view XMLScanner::local(std::string_view name) {
    const std::size_t colon = name.rfind(':');
    return colon == std::string_view::npos ? name : name.substr(colon + 1);
}

std::optional<std::string_view> XMLScanner::attribute(std::string_view wanted) const {
    const auto last = found.begin() + static_cast<std::ptrdiff_t>(foundCount);
    const auto match = std::find_if(found.begin(), last, [wanted](const Attribute& one) { return one.name == wanted; });
    return match == last ? std::nullopt : std::optional<std::string_view>(match->value);
}

XMLScanner::Token XMLScanner::next() {
    if (!failure.empty()) {
        return Token::error;
    }
    if (std::exchange(hasEnded, false)) {
        open.pop_back();
    }
    if (std::exchange(isEmptyElement, false)) {
        hasEnded = true;
        content.clear();
        return Token::end;
    }
    content.clear();
    if (!skipToTag()) {
        return failure.empty() ? Token::finished : Token::error;
    }
    return input.peek() == '/' ? endTag() : startTag();
}

XMLScanner::Token XMLScanner::fail(const char* reason) {
    refuse(reason);
    return Token::error;
}

bool XMLScanner::refuse(const char* reason) {
    failure = reason;
    return false;
}

bool XMLScanner::skipToTag() {
    while (true) {
        tagLine = input.lineNumber();
        const int byte = input.get();
        if (byte == TrackInput::end) {
            if (!open.empty()) {
                fail("it ends within an element");
            } else if (!hadRoot) {
                fail("it has no element");
            }
            return false;
        }
        if (byte == '<' && input.peek() != '!' && input.peek() != '?') {
            return true;
        }
        if (byte == '<') {
            if (!skipMarkup()) {
                return false;
            }
        } else if (open.empty()) {
            if (!isBlank(byte)) {
                return refuse("it has text outside of its root element");
            }
        } else if (byte == '&') {
            takeReference(content);
        } else {
            append(content, byte);
        }
    }
}

bool XMLScanner::skipMarkup() {
    if (input.get() == '?') {
        std::string instruction;
        const bool isWhole = skipPast("?>", &instruction);
        const std::string lower = lowered(instruction);
        isLatin1 = isLatin1 || (lower.starts_with("xml") && (lower.find("iso-8859-1") != std::string::npos ||
                                                             lower.find("windows-1252") != std::string::npos));
        return isWhole;
    }
    if (input.peek() == '-') {
        input.get();
        if (input.get() != '-') {
            return refuse("it has a comment that does not begin");
        }
        return skipPast("-->");
    }
    if (input.peek() == '[') {
        constexpr std::string_view opening = "[CDATA[";
        const bool isData = !open.empty() && std::all_of(opening.begin(), opening.end(),
                                                         [this](char expected) { return input.get() == expected; });
        if (!isData) {
            return refuse("it has a section of an unknown kind");
        }
        return skipPast("]]>", &content);
    }
    return skipDocumentType();
}

bool XMLScanner::skipPast(std::string_view ending, std::string* kept) {
    // The bytes of an ending that may turn out to be none: "]]" of "]]]>".
    std::string last;
    while (last != ending) {
        if (last.size() == ending.size()) {
            if (kept != nullptr) {
                append(*kept, static_cast<unsigned char>(last.front()));
            }
            last.erase(0, 1);
        }
        const int byte = input.get();
        if (byte == TrackInput::end) {
            return refuse("it ends within a comment, an instruction or a section");
        }
        last += static_cast<char>(byte);
    }
    return true;
}

bool XMLScanner::skipDocumentType() {
    int brackets = 0;
    int quote = 0;
    while (true) {
        const int byte = input.get();
        if (byte == TrackInput::end) {
            return refuse("it ends within its document type");
        }
        if (quote != 0) {
            quote = byte == quote ? 0 : quote;
        } else if (byte == '"' || byte == '\'') {
            quote = byte;
        } else if (byte == '[' || byte == '<') {
            ++brackets;
        } else if (byte == ']' || (byte == '>' && brackets > 0)) {
            --brackets;
        } else if (byte == '>') {
            return true;
        }
    }
}

XMLScanner::Token XMLScanner::startTag() {
    if (open.empty() && std::exchange(hadRoot, true)) {
        return fail("it has two root elements");
    }
    if (open.size() == deepest) {
        return fail("its elements are nested too deep");
    }
    open.emplace_back();
    if (!takeName(open.back()) || !attributes()) {
        return Token::error;
    }
    isEmptyElement = input.peek() == '/';
    if (isEmptyElement) {
        input.get();
    }
    return input.get() == '>' ? Token::start : fail("it has a tag that does not end");
}

XMLScanner::Token XMLScanner::endTag() {
    input.get();
    std::string name;
    if (!takeName(name)) {
        return Token::error;
    }
    skipBlanks();
    if (open.empty() || name != open.back()) {
        return fail("it closes an element that is not open");
    }
    hasEnded = true;
    return input.get() == '>' ? Token::end : fail("it has a tag that does not end");
}

bool XMLScanner::attributes() {
    constexpr std::size_t most = 64;
    foundCount = 0;
    while (true) {
        skipBlanks();
        if (endsName(input.peek())) {
            return true;
        }
        if (foundCount == most) {
            return refuse("it has a tag with too many attributes");
        }
        if (foundCount == found.size()) {
            found.emplace_back();
        }
        Attribute& attribute = found[foundCount++];
        if (!takeName(attribute.name)) {
            return false;
        }
        skipBlanks();
        if (input.get() != '=') {
            return refuse("it has an attribute without a value");
        }
        skipBlanks();
        if (!takeValue(attribute.value)) {
            return false;
        }
    }
}

bool XMLScanner::takeName(std::string& name) {
    name.clear();
    if (!beginsName(input.peek())) {
        return refuse("it has a name that is none");
    }
    while (!endsName(input.peek())) {
        if (name.size() == longest) {
            return refuse("it has a name that is too long");
        }
        name += static_cast<char>(input.get());
    }
    return true;
}

bool XMLScanner::takeValue(std::string& value) {
    value.clear();
    const int quote = input.get();
    if (quote != '"' && quote != '\'') {
        return refuse("it has a value without quotes");
    }
    while (true) {
        const int byte = input.get();
        if (byte == quote) {
            return true;
        }
        if (byte == TrackInput::end || byte == '<') {
            return refuse("it has a value that does not end");
        }
        if (byte == '&') {
            takeReference(value);
        } else {
            append(value, byte);
        }
    }
}

void XMLScanner::takeReference(std::string& text) {
    constexpr std::array<std::pair<std::string_view, char>, 5> named{
        {{"lt", '<'}, {"gt", '>'}, {"amp", '&'}, {"quot", '"'}, {"apos", '\''}}};
    constexpr std::size_t longestReference = 10;
    std::string dropped;
    std::string& kept = text.size() < longest ? text : dropped;
    std::string reference;
    while (reference.size() < longestReference && !endsName(input.peek()) && input.peek() != ';' &&
           input.peek() != '"' && input.peek() != '\'' && input.peek() != '&') {
        reference += static_cast<char>(input.get());
    }
    const bool isWhole = input.peek() == ';';
    const auto match =
        std::find_if(named.begin(), named.end(), [&reference](const auto& one) { return one.first == reference; });
    if (isWhole && match != named.end()) {
        input.get();
        kept += match->second;
        return;
    }
    const bool isHex = reference.starts_with("#x");
    const char* const digits = reference.data() + (isHex ? 2 : 1);
    const char* const last = reference.data() + reference.size();
    std::uint32_t point = 0;
    if (isWhole && reference.size() > 1 && reference.front() == '#' &&
        std::from_chars(digits, last, point, isHex ? 16 : 10).ptr == last && point > 0 && point < 0x110000) {
        input.get();
        appendUTF8(kept, point);
        return;
    }
    // Of no known kind: it stays as it is.
    kept += '&' + reference;
}

void XMLScanner::append(std::string& text, int byte) const {
    if (text.size() >= longest) {
        return;
    }
    if (isLatin1) {
        appendUTF8(text, static_cast<std::uint32_t>(byte));
    } else {
        text += static_cast<char>(byte);
    }
}

void XMLScanner::skipBlanks() {
    while (isBlank(input.peek())) {
        input.get();
    }
}

} // namespace quorvane::testing
