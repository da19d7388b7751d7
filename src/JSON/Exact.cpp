#include "JSON/Exact.h"

#include <algorithm>
#include <utility>

#include "JSON/Depth.h"
#include "JSON/DocumentContent.h"
#include "JSON/Encoder.h"

namespace quorvane::json {
namespace {

bool isDeeper(const AnyCodable::Dictionary& dictionary, std::size_t levels);

bool isDeeper(const AnyCodable& value, std::size_t levels) {
    if (const auto* list = std::get_if<AnyCodable::List>(&value.value)) {
        return levels == 0 || std::any_of(list->begin(), list->end(), [levels](const AnyCodable& element) {
                   return isDeeper(element, levels - 1);
               });
    }
    const auto* dictionary = std::get_if<AnyCodable::Dictionary>(&value.value);
    return dictionary != nullptr && isDeeper(*dictionary, levels);
}

bool isDeeper(const AnyCodable::Dictionary& dictionary, std::size_t levels) {
    return levels == 0 || std::any_of(dictionary.begin(), dictionary.end(),
                                      [levels](const auto& entry) { return isDeeper(entry.second, levels - 1); });
}

} // namespace

bool isTooDeep(const AnyCodable::Dictionary& dictionary) {
    return isDeeper(dictionary, deepest);
}

AnyCodable valueOf(Element value, Numbers numbers) {
    switch (value.type()) {
        case ElementType::object: {
            AnyCodable::Dictionary dictionary;
            for (const Member member : Members(value)) {
                dictionary.insert_or_assign(std::string(member.key), valueOf(member.value, numbers));
            }
            return dictionary;
        }
        case ElementType::array: {
            AnyCodable::List list;
            list.reserve(value.count());
            for (const Element element : Elements(value)) {
                list.push_back(valueOf(element, numbers));
            }
            return list;
        }
        case ElementType::string:
            return value.text();
        case ElementType::true_:
        case ElementType::false_:
            return value.boolean();
        case ElementType::null:
            return {};
        case ElementType::decimal:
            if (numbers == Numbers::asWritten) {
                return value.decimal();
            }
            break;
        default:
            break;
    }
    return numberOf(value);
}

AnyCodable numberOf(Element value) {
    switch (value.type()) {
        case ElementType::int64:
            return value.integer();
        case ElementType::uint64:
            return static_cast<double>(value.naturalNumber());
        default:
            break;
    }
    if (const std::optional<std::int64_t> whole = value.wholeNumber()) {
        return *whole;
    }
    return value.decimal();
}

AnyCodable readExactly(std::string text) {
    return valueOf(rootOf(Document::parse(std::move(text))), Numbers::asWritten);
}

std::string writeExactly(const AnyCodable& value) {
    Writer writer(Style::compact, Writer::Unencodable::isReplaced);
    writeAny(value, writer);
    return writer.take();
}

} // namespace quorvane::json
