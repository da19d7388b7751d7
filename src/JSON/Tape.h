#pragma once

#include <cmath>
#include <cstddef>
#include <cstdint>
#include <cstring>
#include <optional>
#include <string_view>

/// For what is a few instructions in the loops over a document, and for what is hardly ever called.
#if defined(__GNUC__)
#define QV_ALWAYS_INLINE [[gnu::always_inline]] inline
#define QV_COLD [[gnu::cold]]
#else
#define QV_ALWAYS_INLINE inline
#define QV_COLD
#endif

namespace quorvane::json {

class Document;
class Literals;

/// A parsed document as the parser leaves it: one word per value or bracket (two for a number), with the kind in the
/// highest byte and below it, for a text, where its length and its bytes stand in the text buffer, and for an opening
/// bracket the number of elements and the index behind its closing bracket. Beside it the text, for numbers that it
/// does not hold exactly.
struct Tape {
    const std::uint64_t* words = nullptr;
    const char* texts = nullptr;
    const Literals* literals = nullptr;
};

/// The kinds of values, as the highest byte of a word says them.
enum class ElementType : std::uint8_t {
    array = '[',
    object = '{',
    int64 = 'l',
    uint64 = 'u',
    decimal = 'd',
    string = '"',
    true_ = 't',
    false_ = 'f',
    null = 'n',
};

[[nodiscard]] QV_ALWAYS_INLINE bool isNumber(ElementType type) {
    return type == ElementType::int64 || type == ElementType::decimal || type == ElementType::uint64;
}

/// Whether no other whole number is read as the same double, or none at all, of 64 bits.
[[nodiscard]] inline bool isToldByDouble(double number) {
    return !(std::fabs(number) >= 0x1p53 && std::fabs(number) <= 0x1p63);
}

/// One value of a document; does not keep the document alive. What is asked for must fit the type.
class Element {
public:
    Element(const Tape& theTape, std::size_t theIndex) : tape(&theTape), index(theIndex) {}

    [[nodiscard]] QV_ALWAYS_INLINE ElementType type() const { return static_cast<ElementType>(word() >> typeShift); }
    [[nodiscard]] bool isObject() const { return type() == ElementType::object; }
    [[nodiscard]] bool isArray() const { return type() == ElementType::array; }
    [[nodiscard]] bool isString() const { return type() == ElementType::string; }
    [[nodiscard]] bool isNull() const { return type() == ElementType::null; }
    [[nodiscard]] bool isBoolean() const { return type() == ElementType::true_ || type() == ElementType::false_; }

    [[nodiscard]] bool boolean() const { return type() == ElementType::true_; }
    [[nodiscard]] std::int64_t integer() const { return number<std::int64_t>(); }
    [[nodiscard]] std::uint64_t naturalNumber() const { return number<std::uint64_t>(); }
    [[nodiscard]] double decimal() const { return number<double>(); }
    /// The integer that a decimal was written as, 3.0 or 3e0; none when it is no whole number or beyond 64 bits.
    [[nodiscard]] std::optional<std::int64_t> wholeNumber() const {
        const double value = decimal();
        if (!isToldByDouble(value)) {
            return integerAsWritten();
        }
        const bool isWhole = std::trunc(value) == value && std::fabs(value) < 0x1p63;
        return isWhole ? std::optional(static_cast<std::int64_t>(value)) : std::nullopt;
    }
    [[nodiscard]] QV_ALWAYS_INLINE std::string_view text() const {
        const char* const entry = tape->texts + (word() & payloadMask);
        std::uint32_t length = 0;
        std::memcpy(&length, entry, sizeof length);
        return {entry + sizeof length, length};
    }

    /// The number of elements or members; for a very long list the largest number that the tape can hold.
    [[nodiscard]] std::size_t count() const { return static_cast<std::size_t>((word() & payloadMask) >> 32); }

    /// The value that follows on this one.
    [[nodiscard]] QV_ALWAYS_INLINE Element next() const {
        const ElementType kind = type();
        if (kind == ElementType::string) {
            return behindText();
        }
        if (kind == ElementType::array || kind == ElementType::object) {
            return {*tape, indexBehind()};
        }
        return {*tape, index + 1 + static_cast<std::size_t>(isNumber(kind))};
    }
    /// The value that follows on this text.
    [[nodiscard]] QV_ALWAYS_INLINE Element behindText() const { return {*tape, index + 1}; }
    /// The first element of a list, or the key of the first member of an object; equal to `end()` where there is none.
    [[nodiscard]] QV_ALWAYS_INLINE Element first() const { return {*tape, index + 1}; }
    /// The closing bracket of a list or an object.
    [[nodiscard]] QV_ALWAYS_INLINE Element end() const { return {*tape, indexBehind() - 1}; }

    friend bool operator==(const Element& a, const Element& b) { return a.index == b.index; }

private:
    static constexpr unsigned typeShift = 56;
    static constexpr std::uint64_t payloadMask = 0x00FFFFFFFFFFFFFF;
    static constexpr std::uint64_t indexMask = 0xFFFFFFFF;

    [[nodiscard]] QV_ALWAYS_INLINE std::uint64_t word() const { return tape->words[index]; }
    [[nodiscard]] QV_ALWAYS_INLINE std::size_t indexBehind() const {
        return static_cast<std::size_t>(word() & indexMask);
    }

    [[nodiscard]] QV_COLD std::optional<std::int64_t> integerAsWritten() const;

    template <class Number>
    [[nodiscard]] QV_ALWAYS_INLINE Number number() const {
        Number value;
        std::memcpy(&value, &tape->words[index + 1], sizeof value);
        return value;
    }

    const Tape* tape;
    std::size_t index;
};

/// The elements of a list.
class Elements {
public:
    explicit Elements(Element theList) : list(theList) {}

    class Iterator {
    public:
        explicit Iterator(Element theElement) : element(theElement) {}
        Element operator*() const { return element; }
        QV_ALWAYS_INLINE Iterator& operator++() {
            element = element.next();
            return *this;
        }
        friend bool operator==(const Iterator&, const Iterator&) = default;

    private:
        Element element;
    };

    [[nodiscard]] Iterator begin() const { return Iterator(list.first()); }
    [[nodiscard]] Iterator end() const { return Iterator(list.end()); }

private:
    Element list;
};

struct Member {
    std::string_view key;
    Element value;
};

/// The members of an object, in the order of the text.
class Members {
public:
    explicit Members(Element theObject) : object(theObject) {}

    class Iterator {
    public:
        explicit Iterator(Element theKey) : key(theKey) {}
        QV_ALWAYS_INLINE Member operator*() const { return {key.text(), key.behindText()}; }
        QV_ALWAYS_INLINE Iterator& operator++() {
            key = key.behindText().next();
            return *this;
        }
        friend bool operator==(const Iterator&, const Iterator&) = default;

    private:
        Element key;
    };

    [[nodiscard]] Iterator begin() const { return Iterator(object.first()); }
    [[nodiscard]] Iterator end() const { return Iterator(object.end()); }

private:
    Element object;
};

/// The value that the document is.
[[nodiscard]] Element rootOf(const Document& document);

} // namespace quorvane::json
