#pragma once

#include <concepts>
#include <cstdint>
#include <map>
#include <string>
#include <string_view>
#include <utility>
#include <variant>
#include <vector>

#include "JSON/CodingErrors.h"

namespace quorvane {

/// One JSON value of any kind but null. A value type.
///
/// Decoding takes the first of integer, double, bool and text that fits, so 3 and 3.0 are integers. A JSON null is no
/// AnyCodable. An AnyCodable without a value, or with a double that is not finite, cannot be encoded
/// ("The value is not encodable").
class AnyCodable {
public:
    using CodingKeys = json::CodingKey;
    using Dictionary = std::map<std::string, AnyCodable, std::less<>>;
    using List = std::vector<AnyCodable>;
    using Value = std::variant<std::monostate, Dictionary, List, std::int64_t, double, bool, std::string>;

    AnyCodable() = default;
    AnyCodable(Dictionary dictionary) : value(std::move(dictionary)) {}
    AnyCodable(List list) : value(std::move(list)) {}
    AnyCodable(bool flag) : value(flag) {}
    AnyCodable(double number) : value(number) {}
    template <std::integral Integer>
    requires(!std::same_as<Integer, bool>) AnyCodable(Integer number) : value(static_cast<std::int64_t>(number)) {}
    AnyCodable(std::string text) : value(std::move(text)) {}
    AnyCodable(std::string_view text) : value(std::string(text)) {}
    AnyCodable(const char* text) : value(std::string(text)) {}

    [[nodiscard]] bool hasValue() const { return !std::holds_alternative<std::monostate>(value); }

    friend bool operator==(const AnyCodable&, const AnyCodable&) = default;

    Value value;
};

} // namespace quorvane
