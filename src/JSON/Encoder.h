#pragma once

#include <array>
#include <concepts>
#include <cstddef>
#include <cstdint>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <tuple>
#include <type_traits>
#include <utility>
#include <vector>

#include "JSON/Date.h"
#include "JSON/KeyTable.h"
#include "JSON/RawValues.h"
#include "JSON/Writer.h"

namespace quorvane::json {

/// Writes a value of any kind, by the rules of `AnyCodable`.
void writeAny(const AnyCodable& value, Writer& writer);
void writeAny(const AnyCodable::Dictionary& value, Writer& writer);

/// The key of a model as it stands in compact text: `,"name":`.
template <class Model, std::size_t entry>
inline constexpr auto quotedKey = [] {
    constexpr std::string_view name = KeyTable<Model>::entries[entry].name;
    std::array<char, name.size() + 4> text{',', '"'};
    for (std::size_t i = 0; i < name.size(); ++i) {
        const char c = name[i];
        if (c < ' ' || c > '~' || c == '"' || c == '\\') {
            throw "a key of a table is plain ASCII without quotes";
        }
        text[i + 2] = c;
    }
    text[name.size() + 2] = '"';
    text[name.size() + 3] = ':';
    return text;
}();

/// Writes one field, by its type.
struct Encoder {
    template <class Field>
    static void write(const Field& field, Writer& writer) {
        if constexpr (std::same_as<Field, bool>) {
            writer.boolean(field);
        } else if constexpr (std::integral<Field>) {
            writer.integer(static_cast<std::int64_t>(field));
        } else if constexpr (std::floating_point<Field>) {
            writer.number(field);
        } else if constexpr (std::same_as<Field, std::string>) {
            writer.text(field);
        } else if constexpr (std::same_as<Field, Date>) {
            writer.number(secondsSince2001(field));
        } else if constexpr (std::is_enum_v<Field>) {
            writeCase(field, writer);
        } else if constexpr (std::same_as<Field, AnyCodable> || std::same_as<Field, AnyCodable::Dictionary>) {
            writeAny(field, writer);
        } else if constexpr (requires { Field::codingKeys; }) {
            writeModel(field, writer, subclasses<Field>);
        } else {
            writeWrapped(field, writer);
        }
    }

private:
    template <class Enum>
    static void writeCase(Enum field, Writer& writer) {
        static_assert(isCodedEnum<Enum>, "this enumeration has no rawValues");
        if constexpr (hasIntegerRawValues<Enum>) {
            writer.integer(static_cast<std::int64_t>(field));
        } else {
            writer.text(rawValue(field));
        }
    }

    template <class Value>
    static void writeWrapped(const std::optional<Value>& field, Writer& writer) {
        if (field) {
            write(*field, writer);
        } else {
            writer.null();
        }
    }

    template <class Model>
    static void writeWrapped(const std::shared_ptr<Model>& field, Writer& writer) {
        if (!field) {
            writer.fail("The value is not encodable");
        }
        write(*field, writer);
    }

    template <class Value>
    static void writeWrapped(const std::vector<Value>& field, Writer& writer) {
        writer.beginList();
        Writer::Step step(writer);
        for (const auto& item : field) {
            step.element();
            write<Value>(item, writer);
        }
        writer.endList(step);
    }

    template <class Model, class... Derived>
    static void writeModel(const Model& model, Writer& writer, SubclassList<Derived...>) {
        if (!(writeIf<Derived>(model, writer) || ...)) {
            writeRows(model, writer, std::make_index_sequence<KeyTable<Model>::rowCount>());
        }
    }

    template <class Derived, class Model>
    static bool writeIf(const Model& model, Writer& writer) {
        const auto* const derived = dynamic_cast<const Derived*>(&model);
        if (derived != nullptr) {
            writeRows(*derived, writer, std::make_index_sequence<KeyTable<Derived>::rowCount>());
        }
        return derived != nullptr;
    }

    template <class Model, std::size_t... rows>
    static void writeRows(const Model& model, Writer& writer, std::index_sequence<rows...>) {
        writer.beginObject();
        Writer::Step step(writer);
        (writeRow<rows>(model, writer, step), ...);
        writer.endObject(step);
    }

    template <std::size_t row, class Model>
    static void writeRow(const Model& model, Writer& writer, Writer::Step& step) {
        using Table = KeyTable<Model>;
        using Row = typename Table::template Row<row>;
        using Field = typename Row::Field;
        constexpr std::size_t entry = firstEntry<Table>(row);
        const Field* const field = std::apply([&](auto... path) -> const Field* { return foundField(model, path...); },
                                              Table::template row<row>().path);
        if (field == nullptr) {
            return;
        }
        if constexpr (isOptional<Field> || isSharedPointer<Field>) {
            if (*field) {
                writeMember<Model, entry, Row>(**field, writer, step);
            }
        } else {
            writeMember<Model, entry, Row>(*field, writer, step);
        }
    }

    template <class Model, std::size_t entry, class Row, class Value>
    static void writeMember(const Value& value, Writer& writer, Writer::Step& step) {
        beginMember<Model, entry>(step);
        if constexpr (Row::isPair) {
            const auto [first, second] = PairTraits<Value>::parts(value);
            writer.number(first);
            beginMember<Model, entry + 1>(step);
            writer.number(second);
        } else {
            write(value, writer);
        }
    }

    template <class Model, std::size_t entry>
    static void beginMember(Writer::Step& step) {
        step.member(quotedKey<Model, entry>, KeyTable<Model>::entries[entry].name);
    }

    template <class Table>
    static consteval std::size_t firstEntry(std::size_t row) {
        std::size_t entry = 0;
        while (Table::entries[entry].row != row) {
            ++entry;
        }
        return entry;
    }
};

template <class Model>
std::string encode(const Model& model, Style style) {
    Writer writer(style);
    Encoder::write(model, writer);
    return writer.take();
}

} // namespace quorvane::json
