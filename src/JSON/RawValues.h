#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <optional>
#include <string_view>
#include <type_traits>
#include <utility>

namespace quorvane::json {

/// The raw values of an enumeration whose cases are numbered without a gap.
template <class Enum>
struct IntegerRange {
    Enum first;
    Enum last;
};

/// The raw values of an enumeration whose cases have texts, used in both directions.
template <class Enum, std::size_t count>
using TextTable = std::array<std::pair<Enum, std::string_view>, count>;

/// What an enumeration's cases are in JSON and in storage. Each coded enumeration specialises this with an
/// `IntegerRange` or with `textTable<Enum>({{Enum::a, "a"}, ...})`, beside its definition.
template <class Enum>
inline constexpr auto rawValues = nullptr;

/// What a case is called in the message for a value that is none: "question type".
template <class Enum>
inline constexpr std::string_view typeName = "known value";

template <class Enum, std::size_t count>
constexpr TextTable<Enum, count> textTable(const std::pair<Enum, std::string_view> (&rows)[count]) {
    TextTable<Enum, count> table{};
    for (std::size_t i = 0; i < count; ++i) {
        table[i] = rows[i];
    }
    return table;
}

template <class Enum>
inline constexpr bool hasIntegerRawValues =
    std::is_same_v<std::remove_cv_t<decltype(rawValues<Enum>)>, IntegerRange<Enum>>;

template <class Enum>
inline constexpr bool isCodedEnum =
    std::is_enum_v<Enum> && !std::is_same_v<std::remove_cv_t<decltype(rawValues<Enum>)>, std::nullptr_t>;

/// The case with an integer raw value; none for an integer that is no case.
template <class Enum>
requires hasIntegerRawValues<Enum>
constexpr std::optional<Enum> fromRawValue(std::int64_t raw) {
    if (raw < static_cast<std::int64_t>(rawValues<Enum>.first) ||
        raw > static_cast<std::int64_t>(rawValues<Enum>.last)) {
        return std::nullopt;
    }
    return static_cast<Enum>(raw);
}

/// The case with a text; none for a text that is no case. Case matters.
template <class Enum>
requires(isCodedEnum<Enum> &&
         !hasIntegerRawValues<Enum>) constexpr std::optional<Enum> fromRawValue(std::string_view text) {
    for (const auto& [value, name] : rawValues<Enum>) {
        if (name == text) {
            return value;
        }
    }
    return std::nullopt;
}

/// The text of a case; empty for a value outside the enumeration.
template <class Enum>
requires(isCodedEnum<Enum> && !hasIntegerRawValues<Enum>) constexpr std::string_view rawValue(Enum value) {
    for (const auto& [candidate, name] : rawValues<Enum>) {
        if (candidate == value) {
            return name;
        }
    }
    return {};
}

} // namespace quorvane::json
