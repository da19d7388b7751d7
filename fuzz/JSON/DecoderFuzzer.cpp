#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>

#include "JSON/JSON.h"
#include "fuzz/Require.h"

namespace {

using quorvane::AnyCodable;
using quorvane::fuzz::require;
namespace json = quorvane::json;

std::optional<AnyCodable> decoded(const json::Document& document) {
    AnyCodable value;
    try {
        json::decode(document, value);
    } catch (const json::DecodingError& error) {
        require(error.kind != json::DecodingError::Kind::malformed);
        return std::nullopt;
    }
    return value;
}

/// What was decoded can be written, in both styles, and decodes as the same again.
void requireRoundTrip(const AnyCodable& value) {
    for (const auto style : {json::Style::compact, json::Style::pretty}) {
        const std::string text = json::encode(value, style);
        const auto again = decoded(json::Document::parse(text));
        require(again == value);
        require(json::encode(*again, style) == text);
    }
}

/// Everything that the raw dictionary says agrees with itself.
void requireDictionary(const json::Dictionary& dictionary) {
    const AnyCodable::Dictionary copy = dictionary.copy();
    require(copy.size() == dictionary.size());
    for (const auto& [key, value] : copy) {
        require(dictionary.contains(key));
        require(dictionary.value(key).value_or(AnyCodable()) == value);
    }
}

} // namespace

/// Any bytes parse and decode, or end in a DecodingError.
extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const std::string text(reinterpret_cast<const char*>(data), size);
    std::optional<json::Document> document;
    try {
        document = json::Document::parse(text);
    } catch (const json::DecodingError& error) {
        require(error.kind == json::DecodingError::Kind::malformed && error.codingPath.empty());
        return 0;
    }
    if (const auto value = decoded(*document)) {
        requireRoundTrip(*value);
    }
    constexpr std::size_t fewMembers = 64;
    const auto dictionary = document->dictionary();
    if (dictionary && dictionary->size() <= fewMembers) {
        requireDictionary(*dictionary);
    }
    return 0;
}
