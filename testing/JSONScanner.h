#pragma once

#include <cstddef>
#include <cstdint>
#include <string>
#include <vector>

#include "testing/TrackInput.h"

namespace quorvane::testing {

/// Takes the pieces of JSON documents one by one, with no more of them in memory than one text or number. Several
/// documents may follow one another.
class JSONScanner {
public:
    enum class Token {
        beginObject,
        endObject,
        beginArray,
        endArray,
        /// The name of an object's member; its value comes next.
        key,
        text,
        number,
        /// true, false or null.
        word,
        /// There is no further document.
        finished,
        /// `problem` says of what kind; there is nothing more.
        error,
    };
    static constexpr std::size_t deepest = 200;
    /// Bytes of a text that are kept; what is longer is cut. A longer number is an error.
    static constexpr std::size_t longest = 4096;

    /// @p theInput outlives the scanner.
    explicit JSONScanner(TrackInput& theInput) : input(theInput) {}

    [[nodiscard]] Token next();
    /// Takes the rest of the value whose first token @p first was. False: there was an error.
    bool skip(Token first);

    /// What the last key, text, number or word says; a text with its escapes resolved.
    [[nodiscard]] const std::string& value() const { return content; }
    /// Where the last token begins.
    [[nodiscard]] std::uint64_t line() const { return tokenLine; }
    [[nodiscard]] std::uint64_t offset() const { return tokenOffset; }
    /// How many objects and arrays are open.
    [[nodiscard]] std::size_t depth() const { return open.size(); }
    [[nodiscard]] const std::string& problem() const { return failure; }

private:
    /// What may come next.
    enum class Expected { document, value, firstValue, firstKey, key, commaOrEnd };

    Token fail(const char* reason);
    bool refuse(const char* reason);
    void skipBlanks();
    Token value(int byte);
    Token end(int byte);
    Token closed(Token token);
    bool takeColon();
    bool takeText();
    bool takeEscape();
    bool takeUnit(std::uint32_t& unit);
    bool takeNumber(int byte);
    bool takeWord(int byte);
    void append(int byte);

    TrackInput& input;
    /// The bytes that close what is open.
    std::vector<char> open;
    Expected expected = Expected::document;
    std::string content;
    std::string failure;
    std::uint64_t tokenLine = 1;
    std::uint64_t tokenOffset = 0;
};

} // namespace quorvane::testing
