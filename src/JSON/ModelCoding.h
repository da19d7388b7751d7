#pragma once

// How a model is coded in JSON
// ----------------------------
//
// The model's header (public) includes "JSON/CodingKeys.h" and holds one table; the model's .cpp includes this header
// (private) and says once, at global scope: QV_JSON_MODEL(quorvane::QVThing);
//
//     class QVThing {
//     public:
//         std::string name;
//         std::optional<std::int64_t> created;
//         std::vector<std::shared_ptr<QVPart>> parts;
//         static constexpr auto codingKeys = json::keys(
//             json::key("name", &QVThing::name),
//             json::key("created", &QVThing::created),
//             json::lenient(json::key("parts", &QVThing::parts)));
//     };
//
// Types of fields: bool, integers of any width, float, double, std::string, json::Date, enumerations with
// json::rawValues (and json::typeName for messages: "question type"), AnyCodable, AnyCodable::Dictionary, a model by
// value, std::shared_ptr of a model, std::optional and std::vector of any of these.
//
// Rows:
//     json::key("name", &M::field)                         one key, one field
//     json::key("city", &M::location, &QVAddress::city)    a field further down: a shared pointer or an optional on the
//                                                          way is made when the key is read with success; when it is
//                                                          null the key is not written
//     json::pair("latitude", "longitude", &M::coordinate)  two numbers, read only together, into a T or optional<T>
//     json::pair("latitude", "longitude", &M::location, &QVAddress::coordinate)          for which PairTraits<T> exists
//     json::lenient(row)                                   null or a value that cannot be decoded counts as missing; in
//                                                          a pair, either of the two makes both missing
//     json::extend(Base::codingKeys, row, row...)          the table of a derived model
//
// json::pair needs, once per value type:
//     template <> struct json::PairTraits<platform::Coordinate> {
//         static platform::Coordinate make(double first, double second) { return {first, second}; }
//         static std::pair<double, double> parts(const platform::Coordinate& c) { return {c.latitude, c.longitude}; }
//     };
//
// A missing key leaves its field as the object holds it; null makes an optional or a shared pointer absent and is an
// error anywhere else (also as an element of a list of models). Of equal keys the last one counts.
//
// Hooks, both optional public members: `void willDecode()` runs before the object's keys are read: it puts in what a
// decoded object holds where a key is missing, when that is not what a constructed one holds. `void didDecode()` runs
// after all keys were read with success: it computes what depends on several of them. Whether a pair was read is seen
// by clearing its field in `willDecode` (to none, or to a value that means missing) and looking at it in `didDecode`.
//
// A shared pointer to a polymorphic base is written by the table of its own class when the header of the base says
//     template <> inline constexpr auto json::subclasses<Base> = json::SubclassList<Circle, Polygon>{};

#include "JSON/CodingKeys.h"
#include "JSON/Encoder.h"
#include "JSON/ObjectReader.h"

/// Makes `json::decode` and `json::encode` for one model, with its .cpp as their home.
#define QV_JSON_MODEL(...)                                                                                \
    template void ::quorvane::json::decode<__VA_ARGS__>(const ::quorvane::json::Document&, __VA_ARGS__&); \
    template std::string(::quorvane::json::encode<__VA_ARGS__>)(const __VA_ARGS__&, ::quorvane::json::Style)
