#include <set>
#include <utility>

#include "JSON/DocumentContent.h"
#include "JSON/Exact.h"
#include "JSON/Parsing.h"

namespace quorvane::json {

Document Document::parse(std::string text) {
    auto content = std::make_shared<Content>();
    parseInto(content->parsed, std::move(text));
    return Document(std::move(content));
}

std::optional<Dictionary> Document::dictionary() const {
    if (!shared->root().is_object()) {
        return std::nullopt;
    }
    return Dictionary(*this);
}

namespace {

simdjson::dom::object objectOf(const Document& document) {
    return document.content().root().get_object().value_unsafe();
}

/// The last of equal keys.
std::optional<Element> find(const Document& document, std::string_view key) {
    std::optional<Element> found;
    for (const auto member : objectOf(document)) {
        if (member.key == key) {
            found = member.value;
        }
    }
    return found;
}

} // namespace

std::size_t Dictionary::size() const {
    std::set<std::string_view> keys;
    for (const auto member : objectOf(document)) {
        keys.insert(member.key);
    }
    return keys.size();
}

bool Dictionary::contains(std::string_view key) const {
    return find(document, key).has_value();
}

std::optional<AnyCodable> Dictionary::value(std::string_view key) const {
    const auto found = find(document, key);
    if (!found || found->is_null()) {
        return std::nullopt;
    }
    return valueOf(*found, Numbers::byValue);
}

AnyCodable::Dictionary Dictionary::copy() const {
    return std::get<AnyCodable::Dictionary>(valueOf(document.content().root(), Numbers::byValue).value);
}

} // namespace quorvane::json
