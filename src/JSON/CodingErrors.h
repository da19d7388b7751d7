#pragma once

#include <cstdint>
#include <optional>
#include <stdexcept>
#include <string>
#include <vector>

namespace quorvane::json {

/// One step of a coding path: a member of an object, or an index into a list (then the text is the index).
struct CodingKey {
    std::string stringValue;
    std::optional<std::int64_t> intValue;

    friend bool operator==(const CodingKey&, const CodingKey&) = default;
};

using CodingPath = std::vector<CodingKey>;

/// A path as a reader writes it: `data[3].questions[0].type`; empty for the document itself.
[[nodiscard]] std::string textOf(const CodingPath& path);

/// A document or a model could not be decoded; `what()` is the path, ": " and the description. Never leaves the
/// library.
class DecodingError : public std::runtime_error {
public:
    enum class Kind {
        /// The value is of another kind than the field.
        typeMismatch,
        /// The value is of the right kind but no value of the field: out of range, no case of an enumeration.
        dataCorrupted,
        /// The text is no JSON document.
        malformed,
    };

    DecodingError(Kind kind, std::string expectedType, std::string description, CodingPath path = {});

    Kind kind;
    /// What the field holds, in words: "integer", "question type"; empty for a malformed text.
    std::string expectedType;
    /// One sentence without the path: `expected an integer, found "x"`.
    std::string description;
    CodingPath codingPath;
};

/// A value has no form in JSON. Never leaves the library.
class EncodingError : public std::runtime_error {
public:
    explicit EncodingError(const std::string& description, CodingPath path = {});

    CodingPath codingPath;
};

} // namespace quorvane::json
