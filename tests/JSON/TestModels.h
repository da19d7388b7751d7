#pragma once

#include <cstdint>
#include <memory>
#include <optional>
#include <string>
#include <utility>
#include <vector>

#include "JSON/AnyCodable.h"
#include "JSON/CodingKeys.h"
#include "JSON/Date.h"
#include "JSON/RawValues.h"

/// Models with a field of each kind.
namespace quorvane::modelling {

enum class Colour { red, green };
enum class Level : int { low = -1, middle, high };

struct Point {
    double x = 0;
    double y = 0;
    friend bool operator==(const Point&, const Point&) = default;
};

class Owner {
public:
    std::optional<std::string> name;
    std::int64_t age = 0;

    static constexpr auto codingKeys = json::keys(json::key("name", &Owner::name), json::key("age", &Owner::age));
};

class Everything {
public:
    bool flag = false;
    std::int64_t integer = 7;
    std::int32_t narrow = 0;
    double number = 0;
    float small = 0;
    std::string text = "unset";
    json::Date date{};
    Colour colour = Colour::green;
    Level level = Level::middle;
    Owner owner;
    std::shared_ptr<Owner> shared;
    std::optional<std::int64_t> optionalInteger;
    std::optional<Colour> optionalColour;
    std::optional<json::Date> optionalDate;
    std::vector<std::string> texts;
    std::vector<std::shared_ptr<Owner>> owners;
    std::optional<std::vector<double>> numbers;
    std::vector<std::optional<std::int64_t>> holes;
    AnyCodable any;
    AnyCodable::Dictionary dictionary;
    std::optional<AnyCodable::Dictionary> optionalDictionary;

    static constexpr auto codingKeys = json::keys(
        json::key("flag", &Everything::flag), json::key("integer", &Everything::integer),
        json::key("narrow", &Everything::narrow), json::key("number", &Everything::number),
        json::key("small", &Everything::small), json::key("text", &Everything::text),
        json::key("date", &Everything::date), json::key("colour", &Everything::colour),
        json::key("level", &Everything::level), json::key("owner", &Everything::owner),
        json::key("shared", &Everything::shared), json::key("optionalInteger", &Everything::optionalInteger),
        json::key("optionalColour", &Everything::optionalColour), json::key("optionalDate", &Everything::optionalDate),
        json::key("texts", &Everything::texts), json::key("owners", &Everything::owners),
        json::key("numbers", &Everything::numbers), json::key("holes", &Everything::holes),
        json::key("any", &Everything::any), json::key("dictionary", &Everything::dictionary),
        json::key("optionalDictionary", &Everything::optionalDictionary));
};

/// The same kinds, each lenient.
class Tolerant {
public:
    std::string text = "unset";
    std::int64_t integer = 7;
    std::optional<Level> level = Level::high;
    Owner owner;
    std::shared_ptr<Owner> shared;
    std::vector<std::string> texts{"kept"};
    std::optional<AnyCodable::Dictionary> metadata;
    std::optional<Point> point;

    static constexpr auto codingKeys = json::keys(
        json::lenient(json::key("text", &Tolerant::text)), json::lenient(json::key("integer", &Tolerant::integer)),
        json::lenient(json::key("level", &Tolerant::level)), json::lenient(json::key("owner", &Tolerant::owner)),
        json::lenient(json::key("shared", &Tolerant::shared)), json::lenient(json::key("texts", &Tolerant::texts)),
        json::lenient(json::key("metadata", &Tolerant::metadata)),
        json::lenient(json::pair("x", "y", &Tolerant::point)));
};

class Address {
public:
    std::optional<std::string> city;
    std::optional<Point> point;
    Point corner{9, 9};

    static constexpr auto codingKeys =
        json::keys(json::key("city", &Address::city), json::pair("x", "y", &Address::point),
                   json::pair("left", "top", &Address::corner));
};

/// Its address stands flat beside its own keys.
class Shop {
public:
    std::string name;
    std::shared_ptr<Address> address;
    std::optional<Owner> owner;

    static constexpr auto codingKeys =
        json::keys(json::key("name", &Shop::name), json::key("city", &Shop::address, &Address::city),
                   json::pair("x", "y", &Shop::address, &Address::point), json::key("age", &Shop::owner, &Owner::age));
};

class Shape {
public:
    Shape() = default;
    Shape(const Shape&) = default;
    Shape& operator=(const Shape&) = default;
    virtual ~Shape() = default;

    static constexpr auto codingKeys = json::keys();
};

class Circle : public Shape {
public:
    double radius = 0;

    static constexpr auto codingKeys = json::extend(Shape::codingKeys, json::key("radius", &Circle::radius));
};

class Ring : public Circle {
public:
    double width = 0;

    static constexpr auto codingKeys = json::extend(Circle::codingKeys, json::key("width", &Ring::width));
};

class Drawing {
public:
    std::shared_ptr<Shape> shape;

    static constexpr auto codingKeys = json::keys(json::key("shape", &Drawing::shape));
};

class Hooked {
public:
    std::optional<std::int64_t> first = 1;
    std::optional<std::int64_t> second = 2;
    std::optional<Point> point = Point{5, 5};
    std::int64_t sum = 0;
    bool hasPoint = false;

    void willDecode() {
        first.reset();
        point.reset();
    }
    void didDecode() {
        sum = first.value_or(0) + second.value_or(0);
        hasPoint = point.has_value();
    }

    static constexpr auto codingKeys = json::keys(
        json::key("first", &Hooked::first), json::key("second", &Hooked::second), json::pair("x", "y", &Hooked::point));
};

template <class Model>
class Listing {
public:
    std::int64_t count = 0;
    std::vector<std::shared_ptr<Model>> data;

    static constexpr auto codingKeys =
        json::keys(json::key("count", &Listing::count), json::key("data", &Listing::data));
};

} // namespace quorvane::modelling

namespace quorvane {

template <>
inline constexpr auto json::rawValues<modelling::Colour> =
    json::textTable<modelling::Colour>({{modelling::Colour::red, "red"}, {modelling::Colour::green, "green"}});
template <>
inline constexpr std::string_view json::typeName<modelling::Colour> = "colour";
template <>
inline constexpr auto json::rawValues<modelling::Level> =
    json::IntegerRange<modelling::Level>{modelling::Level::low, modelling::Level::high};
template <>
inline constexpr auto json::subclasses<modelling::Shape> = json::SubclassList<modelling::Ring, modelling::Circle>{};

template <>
struct json::PairTraits<modelling::Point> {
    static modelling::Point make(double x, double y) { return {x, y}; }
    static std::pair<double, double> parts(const modelling::Point& point) { return {point.x, point.y}; }
};

} // namespace quorvane
