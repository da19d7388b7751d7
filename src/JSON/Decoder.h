#pragma once

#include <concepts>
#include <cstddef>
#include <cstdint>
#include <limits>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <type_traits>
#include <utility>
#include <vector>

#include "JSON/Date.h"
#include "JSON/JSON.h"
#include "JSON/KeyTable.h"
#include "JSON/RawValues.h"
#include "JSON/Reading.h"

namespace quorvane::json {

template <class Model>
concept HasTable = requires {
    Model::codingKeys.rows;
};

template <class Model>
class ObjectReader;

/// Reads one value into a field, by the field's type. A field of another type than a model by value is untouched when
/// this fails.
struct Decoder {
    template <class Field>
    static bool read(Element value, Field& field, Reading& reading) {
        if constexpr (std::same_as<Field, bool>) {
            return readBoolean(value, field, reading);
        } else if constexpr (std::same_as<Field, std::int64_t>) {
            return readInteger(value, field, "integer", reading);
        } else if constexpr (std::integral<Field>) {
            return readNarrow(value, field, reading);
        } else if constexpr (std::same_as<Field, double>) {
            return readNumber(value, field, "number", reading);
        } else if constexpr (std::same_as<Field, float>) {
            return readFloat(value, field, reading);
        } else if constexpr (std::same_as<Field, std::string>) {
            return readString(value, field, reading);
        } else if constexpr (std::same_as<Field, Date>) {
            return readDate(value, field, reading);
        } else if constexpr (std::is_enum_v<Field>) {
            static_assert(isCodedEnum<Field>, "this enumeration has no rawValues");
            return readCase(value, field, reading);
        } else if constexpr (std::same_as<Field, AnyCodable> || std::same_as<Field, AnyCodable::Dictionary>) {
            return readAny(value, field, reading);
        } else if constexpr (readsNothing<Field>) {
            return true;
        } else if constexpr (HasTable<Field>) {
            return ObjectReader<Field>(field, reading).read(value);
        } else {
            return readWrapped(value, field, reading);
        }
    }

private:
    template <class Value>
    static bool readWrapped(Element value, std::optional<Value>& field, Reading& reading) {
        if (value.isNull()) {
            field.reset();
            return true;
        }
        Value inner{};
        if (!read(value, inner, reading)) {
            return false;
        }
        field = std::move(inner);
        return true;
    }

    static bool readWrapped(Element value, std::optional<std::string>& field, Reading& reading) {
        if (value.isString()) {
            field.emplace(value.text());
            return true;
        }
        if (!value.isNull()) {
            return reading.mismatch("text", value);
        }
        field.reset();
        return true;
    }

    template <class Model>
    static bool readWrapped(Element value, std::shared_ptr<Model>& field, Reading& reading) {
        if (value.isNull()) {
            field.reset();
            return true;
        }
        return readModel(value, field, reading);
    }

    template <class Model>
    static bool readModel(Element value, std::shared_ptr<Model>& field, Reading& reading) {
        if (!readsNothing<Model> && !value.isObject()) {
            return reading.mismatch("object", value);
        }
        auto model = std::make_shared<Model>();
        if (!read(value, *model, reading)) {
            return false;
        }
        field = std::move(model);
        return true;
    }

    template <class Value>
    static bool readWrapped(Element value, std::vector<Value>& field, Reading& reading) {
        if (!value.isArray()) {
            return reading.mismatch("list", value);
        }
        std::vector<Value> list;
        list.reserve(value.count());
        for (const Element element : Elements(value)) {
            if constexpr (std::same_as<Value, bool>) {
                bool item = false;
                if (!readItem(element, item, reading)) {
                    reading.within(list.size());
                    return false;
                }
                list.push_back(item);
            } else if (!readItem(element, list.emplace_back(), reading)) {
                reading.within(list.size() - 1);
                return false;
            }
        }
        field = std::move(list);
        return true;
    }

    /// A list of models has no holes: null is no element of it.
    template <class Value>
    static bool readItem(Element value, Value& item, Reading& reading) {
        if constexpr (isSharedPointer<Value>) {
            return readModel(value, item, reading);
        } else {
            return read(value, item, reading);
        }
    }

    static bool readString(Element value, std::string& field, Reading& reading) {
        std::string_view text;
        if (!readText(value, text, "text", reading)) {
            return false;
        }
        // Cheaper than assigning to the empty text that the field usually is.
        field = std::string(text);
        return true;
    }

    template <std::integral Integer>
    static bool readNarrow(Element value, Integer& field, Reading& reading) {
        std::int64_t number = 0;
        if (!readInteger(value, number, "integer", reading)) {
            return false;
        }
        if (!std::in_range<Integer>(number)) {
            return reading.corrupted("integer", value);
        }
        field = static_cast<Integer>(number);
        return true;
    }

    static bool readFloat(Element value, float& field, Reading& reading) {
        double number = 0;
        if (!readNumber(value, number, "number", reading)) {
            return false;
        }
        if (std::fabs(number) > static_cast<double>(std::numeric_limits<float>::max())) {
            return reading.corrupted("number", value);
        }
        field = static_cast<float>(number);
        return true;
    }

    static bool readDate(Element value, Date& field, Reading& reading) {
        double seconds = 0;
        if (!readNumber(value, seconds, "date", reading)) {
            return false;
        }
        const auto date = dateFromSeconds(seconds);
        if (!date) {
            return reading.corrupted("date", value);
        }
        field = *date;
        return true;
    }

    template <class Enum>
    static bool readCase(Element value, Enum& field, Reading& reading) {
        std::optional<Enum> found;
        if constexpr (hasIntegerRawValues<Enum>) {
            std::int64_t raw = 0;
            if (!readInteger(value, raw, typeName<Enum>, reading)) {
                return false;
            }
            found = fromRawValue<Enum>(raw);
        } else {
            std::string_view raw;
            if (!readText(value, raw, typeName<Enum>, reading)) {
                return false;
            }
            found = fromRawValue<Enum>(raw);
        }
        if (!found) {
            return reading.corrupted(typeName<Enum>, value);
        }
        field = *found;
        return true;
    }
};

} // namespace quorvane::json
