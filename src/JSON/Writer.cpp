#include "JSON/Writer.h"

#include <algorithm>
#include <bit>
#include <charconv>
#include <cmath>
#include <utility>

#include "JSON/NumberText.h"
#include "JSON/PerThread.h"
#include "JSON/UTF8.h"

namespace quorvane::json {

namespace {

constexpr std::size_t firstCapacity = std::size_t{1} << 12;
constexpr std::size_t longestEscape = 6;
constexpr std::size_t wordSize = 8;
constexpr std::uint64_t everyByte = 0x0101010101010101;
constexpr std::uint64_t highBits = 0x8080808080808080;

/// Each thread keeps the buffer of its last text.
struct Spare {
    std::unique_ptr<char[]> buffer;
    std::size_t capacity = 0;
};

/// A high bit in each of the eight bytes that is zero. May also mark a byte 1 above a zero one, never less.
std::uint64_t zeroBytes(std::uint64_t word) {
    return (word - everyByte) & ~word & highBits;
}

/// Not zero when one of eight characters must be escaped.
std::uint64_t escapesIn(std::uint64_t word) {
    const std::uint64_t controls = (word - everyByte * 0x20) & ~word & highBits;
    return controls | zeroBytes(word ^ (everyByte * '"')) | zeroBytes(word ^ (everyByte * '\\'));
}

char* putEscape(char* out, unsigned char c) {
    constexpr std::string_view shortForms = "\"\"\\\\\bb\ff\nn\rr\tt";
    *out++ = '\\';
    for (std::size_t i = 0; i < shortForms.size(); i += 2) {
        if (static_cast<unsigned char>(shortForms[i]) == c) {
            *out++ = shortForms[i + 1];
            return out;
        }
    }
    constexpr std::string_view digits = "0123456789abcdef";
    for (const char character : {'u', '0', '0', digits[c >> 4], digits[c & 0xF]}) {
        *out++ = character;
    }
    return out;
}

template <class Word>
std::uint64_t load(const char* text) {
    Word word;
    std::memcpy(&word, text, sizeof word);
    return word;
}

/// One to seven characters, with harmless ones behind them.
std::uint64_t loadShort(const char* text, std::size_t length) {
    std::uint64_t word = 0;
    if constexpr (std::endian::native == std::endian::big) {
        word = everyByte * 'x';
        std::memcpy(&word, text, length);
        return word;
    }
    if (length >= 4) {
        word = load<std::uint32_t>(text) | load<std::uint32_t>(text + length - 4) << (8 * (length - 4));
    } else if (length >= 2) {
        word = load<std::uint16_t>(text) | load<std::uint16_t>(text + length - 2) << (8 * (length - 2));
    } else {
        word = load<std::uint8_t>(text);
    }
    return word | everyByte * 'x' << (8 * length);
}

char* putOneByOne(char* out, const char* text, std::size_t length) {
    for (std::size_t i = 0; i < length; ++i) {
        const auto c = static_cast<unsigned char>(text[i]);
        if (c < 0x20 || c == '"' || c == '\\') {
            out = putEscape(out, c);
        } else {
            *out++ = static_cast<char>(c);
        }
    }
    return out;
}

/// Copies with escapes; returns the end and collects every byte's bits in @p seen. May write a word beyond the end.
char* putEscaped(char* out, const char* text, std::size_t length, std::uint64_t& seen) {
    for (; length >= wordSize; text += wordSize, length -= wordSize) {
        const std::uint64_t word = load<std::uint64_t>(text);
        seen |= word;
        if (escapesIn(word) == 0) [[likely]] {
            std::memcpy(out, &word, wordSize);
            out += wordSize;
        } else {
            out = putOneByOne(out, text, wordSize);
        }
    }
    if (length > 0) {
        const std::uint64_t word = loadShort(text, length);
        seen |= word;
        if (escapesIn(word) == 0) [[likely]] {
            std::memcpy(out, &word, wordSize);
            out += length;
        } else {
            out = putOneByOne(out, text, length);
        }
    }
    return out;
}

/// The text with each byte that is no part of a UTF-8 character replaced by U+FFFD.
std::string repaired(std::string_view text) {
    constexpr std::size_t longestCharacter = 4;
    std::string result;
    while (!text.empty()) {
        std::size_t size = std::min(text.size(), longestCharacter);
        while (size > 0 && !isValidUTF8(text.substr(0, size))) {
            --size;
        }
        result += size == 0 ? std::string_view("\xEF\xBF\xBD") : text.substr(0, size);
        text.remove_prefix(std::max<std::size_t>(size, 1));
    }
    return result;
}

} // namespace

Writer::Writer(Style theStyle, Unencodable whatToDo) : style(theStyle), unencodable(whatToDo) {
    if (Spare* const spare = PerThread<Spare>::get()) {
        buffer = std::move(spare->buffer);
        capacity = std::exchange(spare->capacity, 0);
    }
}

Writer::~Writer() {
    Spare* const spare = PerThread<Spare>::get();
    if (spare != nullptr && capacity <= largestKeptCapacity) {
        *spare = {std::move(buffer), capacity};
    }
}

void Writer::grow(std::size_t more) {
    const std::size_t larger = std::max({capacity * 2, length + more, firstCapacity});
    std::unique_ptr<char[]> next(new char[larger]);
    std::copy_n(buffer.get(), length, next.get());
    buffer = std::move(next);
    capacity = larger;
}

void Writer::open(char bracket) {
    append({&bracket, 1});
    ++depth;
}

void Writer::close(char bracket, bool isEmpty) {
    --depth;
    if (style == Style::pretty && !isEmpty) {
        newLine();
    }
    append({&bracket, 1});
}

void Writer::separate(bool isFirst) {
    if (!isFirst) {
        append(",");
    }
    if (style == Style::pretty) {
        newLine();
    }
}

void Writer::newLine() {
    const std::size_t indent = static_cast<std::size_t>(depth) * 2;
    char* const out = room(indent + 1);
    *out = '\n';
    std::memset(out + 1, ' ', indent);
    length += indent + 1;
}

void Writer::prettyMember(std::string_view quoted, bool isFirst) {
    separate(isFirst);
    append(quoted);
    append(" ");
}

void Writer::text(std::string_view value) {
    char* out = room(value.size() * longestEscape + wordSize + 2);
    *out++ = '"';
    std::uint64_t seen = 0;
    out = putEscaped(out, value.data(), value.size(), seen);
    if ((seen & highBits) != 0 && !isValidUTF8(value)) {
        if (unencodable == Unencodable::isReplaced) {
            text(repaired(value));
            return;
        }
        fail("the text is not UTF-8");
    }
    *out++ = '"';
    wroteTo(out);
}

void Writer::integer(std::int64_t value) {
    char* const out = room(numberTextCapacity);
    wroteTo(std::to_chars(out, out + numberTextCapacity, value).ptr);
}

void Writer::number(double value) {
    if (std::isfinite(value)) {
        wroteTo(writeNumber(room(numberTextCapacity), value));
    } else {
        nothing();
    }
}

void Writer::number(float value) {
    if (std::isfinite(value)) {
        wroteTo(writeNumber(room(numberTextCapacity), value));
    } else {
        nothing();
    }
}

void Writer::nothing() {
    if (unencodable == Unencodable::fails) {
        fail("The value is not encodable");
    }
    null();
}

void Writer::fail(const std::string& description) const {
    CodingPath path;
    for (const Step* step = innermost; step != nullptr; step = step->outer) {
        if (step->isIndex) {
            path.push_back({std::to_string(step->count - 1), step->count - 1});
        } else {
            path.push_back({std::string(step->key), std::nullopt});
        }
    }
    std::reverse(path.begin(), path.end());
    throw EncodingError(description, std::move(path));
}

} // namespace quorvane::json
