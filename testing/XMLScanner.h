#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "testing/TrackInput.h"

namespace quorvane::testing {

/// Takes the tags of an XML document one by one, with no more of it in memory than a tag and the names of the elements
/// around it. Prefixes of names are passed over, as are comments, instructions and the document type.
class XMLScanner {
public:
    enum class Token {
        start,
        end,
        /// The document is over, and was well formed.
        finished,
        /// `problem` says of what kind; there is nothing more.
        error,
    };
    static constexpr std::size_t deepest = 200;
    /// Bytes of a name, a value or a text that are kept; a longer name is an error, what is too long otherwise is cut.
    static constexpr std::size_t longest = 4096;

    /// @p theInput outlives the scanner.
    explicit XMLScanner(TrackInput& theInput) : input(theInput) {}

    /// An empty element gives a start and an end.
    [[nodiscard]] Token next();

    /// Of the element that has started or ended.
    [[nodiscard]] std::string_view name() const { return local(open.back()); }
    /// Of the element that has started: the value in UTF-8, or none.
    [[nodiscard]] std::optional<std::string_view> attribute(std::string_view wanted) const;
    /// Of the element that has ended: the text behind its last tag, in UTF-8.
    [[nodiscard]] std::string_view text() const { return content; }
    /// Where the last tag begins.
    [[nodiscard]] std::uint64_t line() const { return tagLine; }
    [[nodiscard]] const std::string& problem() const { return failure; }

private:
    struct Attribute {
        std::string name;
        std::string value;
    };

    [[nodiscard]] static std::string_view local(std::string_view name);

    Token fail(const char* reason);
    bool refuse(const char* reason);
    /// Takes text and what is no element, up to the next element's tag.
    bool skipToTag();
    bool skipMarkup();
    bool skipPast(std::string_view ending, std::string* kept = nullptr);
    bool skipDocumentType();
    Token startTag();
    Token endTag();
    bool attributes();
    bool takeName(std::string& name);
    bool takeValue(std::string& value);
    void takeReference(std::string& text);
    void append(std::string& text, int byte) const;
    void skipBlanks();

    TrackInput& input;
    /// The names of the elements that are open, the one that has just ended included until the next call.
    std::vector<std::string> open;
    std::vector<Attribute> found;
    std::size_t foundCount = 0;
    std::string content;
    std::string failure;
    std::uint64_t tagLine = 1;
    bool isLatin1 = false;
    bool hadRoot = false;
    bool isEmptyElement = false;
    bool hasEnded = false;
};

} // namespace quorvane::testing
