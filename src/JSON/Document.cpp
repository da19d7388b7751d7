#include <set>
#include <utility>

#include "JSON/DocumentContent.h"
#include "JSON/Exact.h"
#include "JSON/Parsing.h"
#include "JSON/PerThread.h"

namespace quorvane::json {

namespace {

using Spare = PerThread<simdjson::dom::document>;

} // namespace

Document::Content::Content() {
    if (simdjson::dom::document* const spare = Spare::get()) {
        parsed = std::move(*spare);
        *spare = simdjson::dom::document();
    }
}

Document::Content::~Content() {
    simdjson::dom::document* const spare = Spare::get();
    if (spare != nullptr && parsed.capacity() <= largestKeptCapacity && parsed.capacity() > spare->capacity()) {
        *spare = std::move(parsed);
    }
}

Document Document::parse(std::string&& text) {
    auto content = std::make_shared<Content>();
    parseInto(content->parsed, text);
    content->literals.emplace(std::move(text), content->tape);
    content->tape = {content->parsed.tape.get(), reinterpret_cast<const char*>(content->parsed.string_buf.get()),
                     &*content->literals};
    return Document(std::move(content));
}

std::string Document::takeText() && {
    const std::shared_ptr<Content> content = std::move(shared);
    return content.use_count() == 1 ? std::move(content->literals->text) : content->literals->text;
}

Element rootOf(const Document& document) {
    // The first word marks the beginning of the tape.
    return {document.content().tape, 1};
}

std::optional<Dictionary> Document::dictionary() const {
    if (!rootOf(*this).isObject()) {
        return std::nullopt;
    }
    return Dictionary(*this);
}

namespace {

/// The last of equal keys.
std::optional<Element> find(const Document& document, std::string_view key) {
    std::optional<Element> found;
    for (const Member member : Members(rootOf(document))) {
        if (member.key == key) {
            found = member.value;
        }
    }
    return found;
}

} // namespace

std::size_t Dictionary::size() const {
    std::set<std::string_view> keys;
    for (const Member member : Members(rootOf(document))) {
        keys.insert(member.key);
    }
    return keys.size();
}

bool Dictionary::contains(std::string_view key) const {
    return find(document, key).has_value();
}

std::optional<AnyCodable> Dictionary::value(std::string_view key) const {
    const auto found = find(document, key);
    if (!found || found->isNull()) {
        return std::nullopt;
    }
    return valueOf(*found, Numbers::byValue);
}

AnyCodable::Dictionary Dictionary::copy() const {
    return std::get<AnyCodable::Dictionary>(valueOf(rootOf(document), Numbers::byValue).value);
}

} // namespace quorvane::json
