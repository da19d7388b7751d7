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
            Value item{};
            if (!readItem(element, item, reading)) {
                reading.within(list.size());
                return false;
            }
            list.push_back(std::move(item));
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

/// Fills a model from an object in one pass over it.
template <class Model>
class ObjectReader {
public:
    ObjectReader(Model& theModel, Reading& theReading) : model(theModel), reading(theReading) {}

    bool read(Element value) {
        if (!value.isObject()) {
            return reading.mismatch("object", value);
        }
        prepare(model);
        const Members members(value);
        const auto end = members.end();
        for (auto position = members.begin(); position != end; ++position) {
            const Member member = *position;
            const std::size_t candidate = Table::index.candidate(member.key);
            if (readCandidate(candidate, member, std::make_index_sequence<Table::keyCount>())) [[likely]] {
                continue;
            }
            if (!comesAgain(position, end)) {
                reading.within(member.key);
                return false;
            }
            reading.forget();
        }
        finishPairs(std::make_index_sequence<Table::rowCount>());
        if constexpr (requires { model.didDecode(); }) {
            model.didDecode();
        }
        return true;
    }

private:
    using Table = KeyTable<Model>;
    using Iterator = Members::Iterator;

    static void prepare(Model& object) {
        if constexpr (requires { object.willDecode(); }) {
            object.willDecode();
        }
    }

    /// Of equal keys the last wins, so an earlier one may hold anything.
    static bool comesAgain(Iterator position, Iterator end) {
        const std::string_view key = (*position).key;
        while (++position != end) {
            if ((*position).key == key) {
                return true;
            }
        }
        return false;
    }

    using Reader = bool (*)(ObjectReader&, std::string_view, Element);

    template <std::size_t... entries>
    bool readCandidate(std::size_t candidate, const Member& member, std::index_sequence<entries...>) {
        static constexpr std::array<Reader, sizeof...(entries) + 1> readers{&ObjectReader::template readKey<entries>...,
                                                                            &ObjectReader::passOver};
        return readers[candidate](*this, member.key, member.value);
    }

    /// Reads the key that none of the table can be.
    static bool passOver(ObjectReader&, std::string_view, Element) { return true; }

    template <std::size_t entry>
    static bool readKey(ObjectReader& reader, std::string_view key, Element value) {
        if (key != Table::entries[entry].name) {
            return true;
        }
        constexpr std::size_t row = Table::entries[entry].row;
        constexpr std::size_t part = Table::entries[entry].part;
        if (reader.isRepeated(entry)) [[unlikely]] {
            reader.template reset<row, part>();
        }
        if constexpr (Table::template row<row>().isLenient) {
            if (!value.isNull()) {
                const Reading::Quietly quietly(reader.reading);
                (void)reader.template readRow<row, part>(value);
            }
            return true;
        } else {
            return reader.template readRow<row, part>(value);
        }
    }

    template <std::size_t row, std::size_t part>
    bool readRow(Element value) {
        using Row = typename Table::template Row<row>;
        using Field = typename Row::Field;
        constexpr auto& description = Table::template row<row>();
        if constexpr (Row::isPair) {
            double number = 0;
            if (value.isNull()) {
                return true;
            }
            if (!readNumber(value, number, "number", reading)) {
                return false;
            }
            pairs[Table::pairIndex(row)].parts[part] = number;
            return true;
        } else if constexpr (Row::isDirect && !(description.isLenient && HasTable<Field>)) {
            return Decoder::read(value, model.*std::get<0>(description.path), reading);
        } else {
            Field field{};
            if (!Decoder::read(value, field, reading)) {
                return false;
            }
            target<row>(model) = std::move(field);
            return true;
        }
    }

    template <std::size_t row>
    static auto& target(Model& object) {
        return std::apply(
            [&](auto... path) -> auto& { return madeField(object, path...); }, Table::template row<row>().path);
    }

    bool isRepeated(std::size_t entry) {
        const std::uint64_t bit = std::uint64_t{1} << (entry % 64);
        const bool repeated = (seen[entry / 64] & bit) != 0;
        seen[entry / 64] |= bit;
        return repeated;
    }

    /// Takes back what an earlier equal key did.
    template <std::size_t row, std::size_t part>
    void reset() {
        if constexpr (Table::template Row<row>::isPair) {
            pairs[Table::pairIndex(row)].parts[part].reset();
        } else {
            const auto fresh = std::make_unique<Model>();
            prepare(*fresh);
            target<row>(model) = std::move(target<row>(*fresh));
        }
    }

    template <std::size_t... rows>
    void finishPairs(std::index_sequence<rows...>) {
        (finishPair<rows>(), ...);
    }

    template <std::size_t row>
    void finishPair() {
        if constexpr (Table::template Row<row>::isPair) {
            const auto& [first, second] = pairs[Table::pairIndex(row)].parts;
            if (first && second) {
                auto& field = target<row>(model);
                if constexpr (isOptional<std::remove_reference_t<decltype(field)>>) {
                    field = PairTraits<typename std::remove_reference_t<decltype(field)>::value_type>::make(*first,
                                                                                                            *second);
                } else {
                    field = PairTraits<std::remove_reference_t<decltype(field)>>::make(*first, *second);
                }
            }
        }
    }

    struct Pair {
        std::array<std::optional<double>, 2> parts;
    };

    Model& model;
    Reading& reading;
    std::array<std::uint64_t, Table::keyCount / 64 + 1> seen{};
    std::array<Pair, Table::pairCount> pairs{};
};

template <class Model>
void decode(const Document& document, Model& model) {
    Reading reading;
    if (!Decoder::read(rootOf(document), model, reading)) {
        reading.raise();
    }
}

} // namespace quorvane::json
