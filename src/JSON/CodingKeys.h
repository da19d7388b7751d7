#pragma once

#include <string_view>
#include <tuple>
#include <type_traits>
#include <utility>

namespace quorvane::json {

/// One row of a model's table: the key in JSON and the field that it fills and is written from. The field is reached
/// through a path of members: usually one; `&QVPlace::location, &QVAddress::city` passes through a shared pointer or an
/// optional, which is made when the key is read, and leaves the key out when there is none to write.
template <class... Members>
struct Key {
    std::string_view name;
    std::tuple<Members...> path;
    bool isLenient = false;
};

template <class... Members>
requires(sizeof...(Members) > 0 && (std::is_member_object_pointer_v<Members> &&
                                    ...)) constexpr Key<Members...> key(std::string_view name, Members... path) {
    return {name, std::tuple<Members...>(path...)};
}

/// A row of two keys with numbers that make one value only together: a coordinate. See `PairTraits`.
template <class... Members>
struct PairKey {
    std::string_view first;
    std::string_view second;
    std::tuple<Members...> path;
    bool isLenient = false;
};

/// Where one of the two keys is missing or null neither is read: the field stays as it was.
template <class... Members>
requires(sizeof...(Members) > 0 && (std::is_member_object_pointer_v<Members> &&
                                    ...)) constexpr PairKey<Members...> pair(std::string_view first,
                                                                             std::string_view second, Members... path) {
    return {first, second, std::tuple<Members...>(path...)};
}

/// How a value is made of two numbers and taken apart again. A type that stands in a `pair` row, itself or as an
/// optional, specialises this with `static Value make(double, double)` and
/// `static std::pair<double, double> parts(const Value&)`.
template <class Value>
struct PairTraits;

/// The same row, but a null or a value that cannot be decoded counts as a missing key: the field stays as a new object
/// holds it.
template <class Row>
constexpr Row lenient(Row row) {
    row.isLenient = true;
    return row;
}

/// A model's table, as its `static constexpr auto codingKeys`.
template <class... Rows>
struct Keys {
    std::tuple<Rows...> rows;
};

template <class... Rows>
constexpr Keys<Rows...> keys(Rows... rows) {
    return {std::tuple<Rows...>(rows...)};
}

/// The table of a derived model: its base's rows, then its own.
template <class... BaseRows, class... Rows>
constexpr Keys<BaseRows..., Rows...> extend(Keys<BaseRows...> base, Rows... rows) {
    return {std::tuple_cat(base.rows, std::tuple<Rows...>(rows...))};
}

template <class... Derived>
struct SubclassList {};

/// The models that a pointer to a polymorphic `Base` may point to: the object is written by the table of its own
/// class, and read as a `Base`. Specialised beside `Base`, with its most derived classes first.
template <class Base>
inline constexpr auto subclasses = SubclassList<>{};

/// Whether decoding a model looks at nothing, so that a value of any kind but null makes a new one.
template <class Model>
inline constexpr bool readsNothing = false;

} // namespace quorvane::json
