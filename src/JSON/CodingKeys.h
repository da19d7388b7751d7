#pragma once

#include <string_view>
#include <tuple>

namespace quorvane::json {

/// One row of a model's table: the key in JSON and the field that it fills and is written from.
template <class Model, class Field>
struct Key {
    std::string_view name;
    Field Model::*field;
    bool isLenient = false;
};

template <class Model, class Field>
constexpr Key<Model, Field> key(std::string_view name, Field Model::*field) {
    return {name, field};
}

/// The same row, but a value that cannot be decoded leaves the field as a new object holds it.
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


}  // namespace quorvane::json
