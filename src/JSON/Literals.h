#pragma once

#include <cstddef>
#include <cstdint>
#include <mutex>
#include <optional>
#include <string>
#include <string_view>
#include <unordered_map>
#include <utility>

namespace quorvane::json {

struct Tape;

/// Calls @p outside with each position that is outside of the text's strings.
template <class Visitor>
void visitOutsideStrings(std::string_view text, Visitor outside) {
    bool inString = false;
    for (std::size_t i = 0; i < text.size(); ++i) {
        const char c = text[i];
        if (inString) {
            if (c == '\\') {
                ++i;
            } else {
                inString = c != '"';
            }
        } else if (c == '"') {
            inString = true;
        } else {
            outside(i);
        }
    }
}

/// Calls @p visit with the position and the text of each number.
template <class Visitor>
void visitNumbers(std::string_view text, Visitor visit) {
    std::size_t behind = 0;
    visitOutsideStrings(text, [&](std::size_t i) {
        const bool begins = text[i] == '-' || (text[i] >= '0' && text[i] <= '9');
        if (i >= behind && begins) {
            behind = text.find_first_not_of("0123456789.eE+-", i);
            behind = behind == std::string_view::npos ? text.size() : behind;
            visit(i, text.substr(i, behind - i));
        }
    });
}

/// The integer that a JSON number is, however it is written; none when it is no whole number or beyond 64 bits.
[[nodiscard]] std::optional<std::int64_t> exactInteger(std::string_view literal);

/// The text of a document, for the rare numbers of which the parser keeps too little: whole ones written with a point
/// or an exponent and too large for a double to tell them from their neighbours. Safe from any thread.
class Literals {
public:
    Literals(std::string theText, const Tape& theTape) : text(std::move(theText)), tape(theTape) {}

    /// The integer that the number at @p index of the tape was written as; none when it was none.
    [[nodiscard]] std::optional<std::int64_t> integerAt(std::size_t index) const;

    std::string text;

private:
    void find() const;

    const Tape& tape;
    mutable std::once_flag once;
    mutable std::unordered_map<std::size_t, std::int64_t> integers;
};

} // namespace quorvane::json
