#pragma once

#include <array>
#include <bit>
#include <cstddef>
#include <cstdint>
#include <cstring>
#include <memory>
#include <optional>
#include <string_view>
#include <tuple>
#include <type_traits>

#include "JSON/CodingKeys.h"
#include "JSON/Tape.h"

namespace quorvane::json {

/// A perfect hash over a table's keys, found while compiling: one multiplication and one comparison per key of a
/// document.
template <std::size_t count>
class KeyIndex {
public:
    /// The place of a key that is not there.
    static constexpr std::size_t none = count;
    static_assert(count < 0xFF, "a table has at most 254 keys");

    consteval explicit KeyIndex(const std::array<std::string_view, count>& theNames) : names(theNames) {
        for (const bool withMiddle : {false, true}) {
            samplesMiddle = withMiddle;
            for (std::uint64_t attempt = 1; attempt < attempts; ++attempt) {
                factor = (attempt * 0x9E3779B97F4A7C15u) | 1u;
                if (fits()) {
                    return;
                }
            }
        }
        throw "two keys of one table are equal, or alike at their beginning, middle and end";
    }

    /// The place among the names of the only one that may equal @p key, or `none`.
    [[nodiscard]] QV_ALWAYS_INLINE constexpr std::size_t candidate(std::string_view key) const {
        return slots[slotOf(key)];
    }

    /// The place of @p key among the names, or `none`.
    [[nodiscard]] constexpr std::size_t find(std::string_view key) const {
        const std::size_t place = candidate(key);
        return place != none && names[place] == key ? place : none;
    }

private:
    static constexpr unsigned bits = std::bit_width(count) + 2;
    static constexpr std::uint64_t attempts = 5000;

    QV_ALWAYS_INLINE static constexpr std::uint64_t load(const char* text, std::size_t length) {
        std::uint64_t value = 0;
        if (std::is_constant_evaluated()) {
            for (std::size_t i = 0; i < length; ++i) {
                value |= static_cast<std::uint64_t>(static_cast<unsigned char>(text[i])) << (8 * i);
            }
        } else {
            std::memcpy(&value, text, length);
            if constexpr (std::endian::native == std::endian::big) {
                value = __builtin_bswap64(value);
            }
        }
        return value;
    }

    [[nodiscard]] QV_ALWAYS_INLINE constexpr std::size_t slotOf(std::string_view key) const {
        const char* const text = key.data();
        const std::size_t length = key.size();
        std::uint64_t sample = length;
        if (length >= 8) {
            sample += load(text, 8) + std::rotl(load(text + length - 8, 8), 23);
            if (samplesMiddle) {
                sample += std::rotl(load(text + length / 2 - 4, 8), 41);
            }
        } else if (length >= 4) {
            sample += (load(text, 4) << 8) + (load(text + length - 4, 4) << 32);
        } else if (length > 0) {
            sample += (load(text, 1) << 8) + (load(text + length / 2, 1) << 16) + (load(text + length - 1, 1) << 24);
        }
        return static_cast<std::size_t>(sample * factor >> (64 - bits));
    }

    constexpr bool fits() {
        slots.fill(static_cast<std::uint8_t>(none));
        for (std::size_t i = 0; i < count; ++i) {
            auto& slot = slots[slotOf(names[i])];
            if (slot != none) {
                return false;
            }
            slot = static_cast<std::uint8_t>(i);
        }
        return true;
    }

    std::array<std::string_view, count> names;
    std::uint64_t factor = 1;
    bool samplesMiddle = false;
    std::array<std::uint8_t, std::size_t{1} << bits> slots{};
};

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
