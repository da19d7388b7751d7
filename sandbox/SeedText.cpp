#include "sandbox/SeedText.h"

#include "JSON/JSON.h"
#include "JSON/NumberText.h"

namespace quorvane::sandbox {

ValueText::ValueText(double number) : json(json::textOf(number)) {}

ValueText::ValueText(const ObjectText& object) : json(object.text()) {}

ValueText::ValueText(const ListText& list) : json(list.text()) {}

std::string ValueText::quoted(std::string_view text) {
    const bool isPlain = std::none_of(
        text.begin(), text.end(), [](char c) { return static_cast<unsigned char>(c) < 0x20 || c == '"' || c == '\\'; });
    return isPlain ? "\"" + std::string(text) + "\"" : json::writeExactly(AnyCodable(text));
}

std::string ObjectText::text() const {
    std::string text = "{";
    for (const auto& [key, value] : members) {
        text += text.size() > 1 ? ",\"" : "\"";
        text += key;
        text += "\":";
        text += value.json;
    }
    return text + "}";
}

std::string ListText::text() const {
    std::string text = "[";
    for (const ValueText& item : items) {
        text += text.size() > 1 ? "," : "";
        text += item.json;
    }
    return text + "]";
}

} // namespace quorvane::sandbox
