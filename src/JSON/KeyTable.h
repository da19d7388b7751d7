#pragma once

#include <array>
#include <cstddef>
#include <memory>
#include <optional>
#include <string_view>
#include <tuple>
#include <type_traits>
#include <utility>

#include "JSON/CodingKeys.h"
#include "JSON/KeyIndex.h"

namespace quorvane::json {

template <class Member>
struct MemberTraits;

template <class Model, class Value>
struct MemberTraits<Value Model::*> {
    using Field = Value;
};

/// What a row is made of: the type of its field and its keys.
template <class Row>
struct RowTraits;

template <class... Members>
struct RowTraits<Key<Members...>> {
    using Field = typename MemberTraits<std::tuple_element_t<sizeof...(Members) - 1, std::tuple<Members...>>>::Field;
    static constexpr bool isPair = false;
    static constexpr bool isDirect = sizeof...(Members) == 1;
    static constexpr std::array<std::string_view, 1> names(const Key<Members...>& row) { return {row.name}; }
};

template <class... Members>
struct RowTraits<PairKey<Members...>> {
    using Field = typename MemberTraits<std::tuple_element_t<sizeof...(Members) - 1, std::tuple<Members...>>>::Field;
    static constexpr bool isPair = true;
    static constexpr bool isDirect = false;
    static constexpr std::array<std::string_view, 2> names(const PairKey<Members...>& row) {
        return {row.first, row.second};
    }
};

/// One key of a table: which row it belongs to, and which of that row's keys it is.
struct TableEntry {
    std::string_view name;
    std::size_t row = 0;
    std::size_t part = 0;
};

/// A model's table with its rows spread into keys.
template <class Model>
class KeyTable {
    using Rows = std::remove_const_t<decltype(Model::codingKeys.rows)>;

    template <std::size_t... indices>
    static constexpr std::size_t countKeys(std::index_sequence<indices...>) {
        return (std::size_t{0} + ... + (RowTraits<std::tuple_element_t<indices, Rows>>::isPair ? 2 : 1));
    }

public:
    static constexpr std::size_t rowCount = std::tuple_size_v<Rows>;
    static constexpr std::size_t keyCount = countKeys(std::make_index_sequence<rowCount>());

    template <std::size_t index>
    using Row = RowTraits<std::tuple_element_t<index, Rows>>;
    template <std::size_t index>
    static constexpr const auto& row() {
        return std::get<index>(Model::codingKeys.rows);
    }

    static constexpr std::array<TableEntry, keyCount> entries = [] {
        std::array<TableEntry, keyCount> result{};
        [&]<std::size_t... indices>(std::index_sequence<indices...>) {
            std::size_t next = 0;
            [[maybe_unused]] const auto add = [&](std::size_t index, const auto& names) {
                for (std::size_t part = 0; part < names.size(); ++part) {
                    result[next++] = {names[part], index, part};
                }
            };
            (add(indices, Row<indices>::names(row<indices>())), ...);
        }
        (std::make_index_sequence<rowCount>());
        return result;
    }();

    /// How many pairs there are, and which of them a row is.
    static constexpr std::size_t pairCount = keyCount - rowCount;
    static constexpr std::size_t pairIndex(std::size_t row) {
        std::size_t result = 0;
        for (const TableEntry& entry : entries) {
            result += entry.row < row && entry.part == 1 ? 1 : 0;
        }
        return result;
    }

    static constexpr KeyIndex<keyCount> index{[] {
        std::array<std::string_view, keyCount> names{};
        for (std::size_t i = 0; i < keyCount; ++i) {
            names[i] = entries[i].name;
        }
        return names;
    }()};
};

template <class T>
inline constexpr bool isSharedPointer = false;
template <class T>
inline constexpr bool isSharedPointer<std::shared_ptr<T>> = true;

template <class T>
inline constexpr bool isOptional = false;
template <class T>
inline constexpr bool isOptional<std::optional<T>> = true;

/// The field at the end of a path, with what the path passes through made where it is missing.
template <class Object, class First, class... Rest>
auto& madeField(Object& object, First first, Rest... rest) {
    auto& field = object.*first;
    if constexpr (sizeof...(Rest) == 0) {
        return field;
    } else if constexpr (isSharedPointer<std::remove_cvref_t<decltype(field)>>) {
        if (!field) {
            field = std::make_shared<typename std::remove_cvref_t<decltype(field)>::element_type>();
        }
        return madeField(*field, rest...);
    } else if constexpr (isOptional<std::remove_cvref_t<decltype(field)>>) {
        if (!field) {
            field.emplace();
        }
        return madeField(*field, rest...);
    } else {
        return madeField(field, rest...);
    }
}

/// The field at the end of a path; null where something on the path is missing.
template <class Object, class First, class... Rest>
auto* foundField(Object& object, First first, Rest... rest) {
    auto& field = object.*first;
    if constexpr (sizeof...(Rest) == 0) {
        return &field;
    } else if constexpr (isSharedPointer<std::remove_cvref_t<decltype(field)>> ||
                         isOptional<std::remove_cvref_t<decltype(field)>>) {
        using Found = decltype(foundField(*field, rest...));
        return field ? foundField(*field, rest...) : Found{nullptr};
    } else {
        return foundField(field, rest...);
    }
}

} // namespace quorvane::json
