#pragma once

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

#include "JSON/KeyTable.h"
#include "JSON/RawValues.h"
#include "Models/PlatformValues.h"

/// What a program writes by hand that uses another library: models filled from that library's document by looking up
/// each key, and written through it. Driven by our tables, so that every library does the same work.
namespace quorvane::mapping {

template <class Model, class Visitor>
void forEachRow(Visitor visit) {
    [&]<std::size_t... rows>(std::index_sequence<rows...>) {
        (visit.template operator()<rows>(), ...);
    }
    (std::make_index_sequence<json::KeyTable<Model>::rowCount>());
}

/// `Source` says how a library's values are read; its `Value` is cheap to copy.
template <class Source>
struct FromDocument {
    using Value = typename Source::Value;

    template <class Field>
    static void read(Value value, Field& field) {
        if constexpr (std::same_as<Field, bool>) {
            field = Source::boolean(value);
        } else if constexpr (std::same_as<Field, std::int64_t>) {
            field = Source::integer(value);
        } else if constexpr (std::same_as<Field, double>) {
            field = Source::number(value);
        } else if constexpr (std::same_as<Field, std::string>) {
            Source::text(value, field);
        } else if constexpr (std::is_enum_v<Field> && json::hasIntegerRawValues<Field>) {
            field = json::fromRawValue<Field>(Source::integer(value)).value();
        } else if constexpr (std::is_enum_v<Field>) {
            std::string text;
            Source::text(value, text);
            field = json::fromRawValue<Field>(text).value();
        } else if constexpr (json::isSharedPointer<Field>) {
            field = std::make_shared<typename Field::element_type>();
            readModel(value, *field);
        } else if constexpr (json::isOptional<Field>) {
            read(value, field.emplace());
        } else {
            field.reserve(Source::size(value));
            Source::forEach(value, [&](Value item) { read(item, field.emplace_back()); });
        }
    }

    template <class Model>
    static void readModel(Value object, Model& model) {
        if constexpr (requires { model.willDecode(); }) {
            model.willDecode();
        }
        forEachRow<Model>([&]<std::size_t row>() { readRow<row>(object, model); });
        if constexpr (requires { model.didDecode(); }) {
            model.didDecode();
        }
    }

private:
    template <std::size_t row, class Model>
    static void readRow(Value object, Model& model) {
        using Table = json::KeyTable<Model>;
        const auto& description = Table::template row<row>();
        auto& field = model.*std::get<0>(description.path);
        if constexpr (Table::template Row<row>::isPair) {
            const Value first = Source::find(object, description.first);
            const Value second = Source::find(object, description.second);
            if (Source::isThere(first) && Source::isThere(second)) {
                field = platform::Coordinate{Source::number(first), Source::number(second)};
            }
        } else {
            const Value value = Source::find(object, description.name);
            if (Source::isThere(value)) {
                read(value, field);
            }
        }
    }
};

/// Walks over a model and tells a `Sink`: object, key, text, integer and so on.
template <class Sink>
struct ToSink {
    template <class Field>
    static void write(const Field& field, Sink& sink) {
        if constexpr (std::same_as<Field, bool>) {
            sink.boolean(field);
        } else if constexpr (std::same_as<Field, std::int64_t>) {
            sink.integer(field);
        } else if constexpr (std::same_as<Field, double>) {
            sink.number(field);
        } else if constexpr (std::same_as<Field, std::string>) {
            sink.text(field);
        } else if constexpr (std::is_enum_v<Field> && json::hasIntegerRawValues<Field>) {
            sink.integer(static_cast<std::int64_t>(field));
        } else if constexpr (std::is_enum_v<Field>) {
            sink.text(json::rawValue(field));
        } else if constexpr (json::isSharedPointer<Field> || json::isOptional<Field>) {
            write(*field, sink);
        } else if constexpr (requires { Field::codingKeys; }) {
            sink.beginObject();
            forEachRow<Field>([&]<std::size_t row>() { writeRow<row>(field, sink); });
            sink.endObject();
        } else {
            sink.beginList();
            for (const auto& item : field) {
                write<typename Field::value_type>(item, sink);
            }
            sink.endList();
        }
    }

private:
    template <std::size_t row, class Model>
    static void writeRow(const Model& model, Sink& sink) {
        using Table = json::KeyTable<Model>;
        const auto& description = Table::template row<row>();
        const auto& field = model.*std::get<0>(description.path);
        using Field = std::remove_cvref_t<decltype(field)>;
        if constexpr (json::isSharedPointer<Field> || json::isOptional<Field>) {
            if (!field) {
                return;
            }
        }
        if constexpr (Table::template Row<row>::isPair) {
            sink.key(description.first);
            sink.number(field->latitude);
            sink.key(description.second);
            sink.number(field->longitude);
        } else {
            sink.key(description.name);
            write(field, sink);
        }
    }
};

/// A copy of a model and of all that it points to: what filling the structs costs when there is nothing to parse.
template <class Field>
void copyInto(Field& copy, const Field& field) {
    if constexpr (requires { Field::codingKeys; }) {
        forEachRow<Field>([&]<std::size_t row>() {
            const auto member = std::get<0>(json::KeyTable<Field>::template row<row>().path);
            copyInto(copy.*member, field.*member);
        });
    } else if constexpr (json::isSharedPointer<Field>) {
        if (field) {
            copy = std::make_shared<typename Field::element_type>();
            copyInto(*copy, *field);
        }
    } else if constexpr (requires(Field list) { list.push_back(list.front()); } && !std::same_as<Field, std::string>) {
        copy.reserve(field.size());
        for (const auto& item : field) {
            copyInto(copy.emplace_back(), item);
        }
    } else {
        copy = field;
    }
}

} // namespace quorvane::mapping
