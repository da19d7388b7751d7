#include "JSON/Exact.h"

#include <utility>

#include "JSON/DocumentContent.h"
#include "JSON/Encoder.h"

namespace quorvane::json {

AnyCodable valueOf(Element value, Numbers numbers) {
    switch (value.type()) {
        case ElementType::OBJECT: {
            const simdjson::dom::object object = value.get_object().value_unsafe();
            AnyCodable::Dictionary dictionary;
            for (const auto member : object) {
                dictionary.insert_or_assign(std::string(member.key), valueOf(member.value, numbers));
            }
            return dictionary;
        }
        case ElementType::ARRAY: {
            const simdjson::dom::array array = value.get_array().value_unsafe();
            AnyCodable::List list;
            list.reserve(array.size());
            for (const Element element : array) {
                list.push_back(valueOf(element, numbers));
            }
            return list;
        }
        case ElementType::STRING:
            return value.get_string().value_unsafe();
        case ElementType::BOOL:
            return value.get_bool().value_unsafe();
        case ElementType::NULL_VALUE:
            return {};
        case ElementType::DOUBLE:
            if (numbers == Numbers::asWritten) {
                return value.get_double().value_unsafe();
            }
            break;
        default:
            break;
    }
    return numberOf(value);
}

AnyCodable numberOf(Element value) {
    if (value.type() == ElementType::INT64) {
        return value.get_int64().value_unsafe();
    }
    const double number = value.get_double().value_unsafe();
    if (isWhole(number)) {
        return static_cast<std::int64_t>(number);
    }
    return number;
}

AnyCodable readExactly(std::string text) {
    return valueOf(Document::parse(std::move(text)).content().root(), Numbers::asWritten);
}

std::string writeExactly(const AnyCodable& value) {
    Writer writer(Style::compact, Writer::Unencodable::isReplaced);
    writeAny(value, writer);
    return writer.take();
}

} // namespace quorvane::json
