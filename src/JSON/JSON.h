#pragma once

#include <cstddef>
#include <memory>
#include <optional>
#include <string>
#include <string_view>

#include "JSON/AnyCodable.h"
#include "JSON/CodingErrors.h"

namespace quorvane::json {

class Dictionary;

/// A parsed JSON document, immutable. A copy shares the document; safe from any thread.
class Document {
public:
    /// Parses the whole of @p text (UTF-8), which the document keeps. Spare capacity behind the text (64 bytes) saves a
    /// copy. Throws a `DecodingError` of kind `malformed` with a
    /// sentence for anything that is no JSON document, for a depth above 512 and for a number beyond a double.
    static Document parse(std::string&& text);
    static Document parse(const std::string& text) { return parse(std::string(text)); }

    /// Gives back the text of a document that nobody else holds, for its memory; of one that is shared a copy.
    [[nodiscard]] std::string takeText() &&;

    /// The root as a dictionary; none when the root is no object.
    [[nodiscard]] std::optional<Dictionary> dictionary() const;

    struct Content;
    [[nodiscard]] const Content& content() const { return *shared; }

private:
    friend class Dictionary;
    explicit Document(std::shared_ptr<Content> content) : shared(std::move(content)) {}
    std::shared_ptr<Content> shared;
};

/// The raw dictionary of an answer: a view that keeps the parsed document alive, not a copy of it.
class Dictionary {
public:
    [[nodiscard]] std::size_t size() const;
    [[nodiscard]] bool contains(std::string_view key) const;
    /// The value under @p key as a value of its own; none when there is no such key or its value is null. A null
    /// further down stands as an empty AnyCodable.
    [[nodiscard]] std::optional<AnyCodable> value(std::string_view key) const;
    /// All of it, as `value` does.
    [[nodiscard]] AnyCodable::Dictionary copy() const;

private:
    friend class Document;
    explicit Dictionary(Document theDocument) : document(std::move(theDocument)) {}
    Document document;
};

/// Fills @p model from the document's root. Throws a `DecodingError`; the model is then partly filled.
/// Defined for every model of the library, for `AnyCodable` and for its dictionary.
template <class Model>
void decode(const Document& document, Model& model);

/// A new model from a text.
template <class Model>
[[nodiscard]] Model decode(std::string text) {
    Model model;
    decode(Document::parse(std::move(text)), model);
    return model;
}

enum class Style { compact, pretty };

/// The model as JSON text, its keys in the order of its table; pretty with two blanks a level. Absent optionals are
/// left out. Throws an `EncodingError`. Defined for the same types as `decode`.
template <class Model>
[[nodiscard]] std::string encode(const Model& model, Style style = Style::compact);

/// A JSON value with its kinds as they are written (3.0 stays a double) and null as an empty AnyCodable: the reverse
/// of `write`, for storage. Throws a `DecodingError`.
[[nodiscard]] AnyCodable readExactly(std::string text);

/// Any value as JSON text; an empty AnyCodable and a double that is not finite are written as null.
[[nodiscard]] std::string writeExactly(const AnyCodable& value);

} // namespace quorvane::json
