#include "JSON/AnyCodable.h"

#include <optional>

#include "JSON/Exact.h"
#include "JSON/ModelCoding.h"

namespace quorvane::json {

namespace {

bool failAsEmpty(Reading& reading, std::string_view description) {
    return reading.fail(DecodingError::Kind::dataCorrupted, "value", std::string(description));
}

/// Inside of an object or a list.
bool readItem(Element value, AnyCodable& field, Reading& reading) {
    return value.isNull() ? failAsEmpty(reading, "the container contains nothing serializable")
                          : readAny(value, field, reading);
}

bool readList(Element value, AnyCodable& field, Reading& reading) {
    AnyCodable::List list;
    list.reserve(value.count());
    for (const Element element : Elements(value)) {
        if (!readItem(element, list.emplace_back(), reading)) {
            reading.within(list.size() - 1);
            return false;
        }
    }
    field.value = std::move(list);
    return true;
}

/// Of equal keys the last wins, so only what is left in the end must have a value.
bool checkComplete(const AnyCodable::Dictionary& dictionary, std::string_view firstFailed, Reading& reading,
                   const Reading& firstFailure) {
    if (!dictionary.find(firstFailed)->second.hasValue()) {
        reading = firstFailure;
        reading.within(firstFailed);
        return false;
    }
    for (const auto& [key, item] : dictionary) {
        if (!item.hasValue()) {
            failAsEmpty(reading, "the container contains nothing serializable");
            reading.within(key);
            return false;
        }
    }
    reading.forget();
    return true;
}

} // namespace

bool readAny(Element value, AnyCodable::Dictionary& field, Reading& reading) {
    if (!value.isObject()) {
        return reading.mismatch("object", value);
    }
    AnyCodable::Dictionary dictionary;
    std::string_view firstFailed;
    std::optional<Reading> firstFailure;
    for (const Member member : Members(value)) {
        AnyCodable& item = dictionary[std::string(member.key)];
        if (!readItem(member.value, item, reading)) {
            item = AnyCodable();
            if (!firstFailure) {
                firstFailed = member.key;
                firstFailure = reading;
            }
        }
    }
    if (firstFailure && !checkComplete(dictionary, firstFailed, reading, *firstFailure)) {
        return false;
    }
    field = std::move(dictionary);
    return true;
}

bool readAny(Element value, AnyCodable& field, Reading& reading) {
    switch (value.type()) {
        case ElementType::object: {
            AnyCodable::Dictionary dictionary;
            if (!readAny(value, dictionary, reading)) {
                return false;
            }
            field.value = std::move(dictionary);
            return true;
        }
        case ElementType::array:
            return readList(value, field, reading);
        case ElementType::string:
            field.value = std::string(value.text());
            return true;
        case ElementType::true_:
        case ElementType::false_:
            field.value = value.boolean();
            return true;
        case ElementType::null:
            return failAsEmpty(reading, "Could not serialize");
        default:
            field = numberOf(value);
            return true;
    }
}

void writeAny(const AnyCodable::Dictionary& value, Writer& writer) {
    writer.beginObject();
    Writer::Step step(writer);
    for (const auto& [key, item] : value) {
        step.member(key);
        writeAny(item, writer);
    }
    writer.endObject(step);
}

void writeAny(const AnyCodable& value, Writer& writer) {
    struct Visitor {
        Writer& writer;
        void operator()(std::monostate) const { writer.nothing(); }
        void operator()(const AnyCodable::Dictionary& dictionary) const { writeAny(dictionary, writer); }
        void operator()(const AnyCodable::List& list) const {
            writer.beginList();
            Writer::Step step(writer);
            for (const AnyCodable& item : list) {
                step.element();
                writeAny(item, writer);
            }
            writer.endList(step);
        }
        void operator()(std::int64_t integer) const { writer.integer(integer); }
        void operator()(double number) const { writer.number(number); }
        void operator()(bool flag) const { writer.boolean(flag); }
        void operator()(const std::string& text) const { writer.text(text); }
    };
    std::visit(Visitor{writer}, value.value);
}

} // namespace quorvane::json

QV_JSON_MODEL(quorvane::AnyCodable);
QV_JSON_MODEL(quorvane::AnyCodable::Dictionary);
