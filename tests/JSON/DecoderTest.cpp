#include <chrono>
#include <cstdint>
#include <limits>
#include <utility>
#include <variant>
#include <vector>

#include <gtest/gtest.h>

#include "JSON/JSON.h"
#include "JSON/TestModels.h"

namespace quorvane {

using namespace std::chrono_literals;
using json::decode;
using modelling::Colour;
using modelling::Everything;
using modelling::Level;
using modelling::Listing;
using modelling::Owner;
using modelling::Ring;

TEST(Decoder, FillsAFieldOfEachKind) {
    const auto model = decode<Everything>(R"({
        "flag": true, "integer": -9223372036854775808, "narrow": 2147483647, "number": 0.5, "small": 0.1,
        "text": "h\u00e9llo \ud83d\ude00\u0000", "date": 0.25, "colour": "red", "level": -1,
        "owner": {"name": "Ann", "age": 3}, "shared": {"age": 4}, "optionalInteger": 5, "optionalColour": "green",
        "optionalDate": -1, "texts": ["a", ""], "owners": [{"age": 1}, {}], "numbers": [1, 2.5],
        "holes": [1, null], "any": [true, {"k": "v"}], "dictionary": {"a": 1}, "optionalDictionary": {}})");

    const json::Date start2001{std::chrono::seconds(978307200)};
    EXPECT_TRUE(model.flag);
    EXPECT_EQ(model.integer, INT64_MIN);
    EXPECT_EQ(model.narrow, INT32_MAX);
    EXPECT_EQ(model.number, 0.5);
    EXPECT_EQ(model.small, 0.1F);
    EXPECT_EQ(model.text, std::string("h\xC3\xA9llo \xF0\x9F\x98\x80\0", 12));
    EXPECT_EQ(model.date, start2001 + 250ms);
    EXPECT_EQ(model.colour, Colour::red);
    EXPECT_EQ(model.level, Level::low);
    EXPECT_EQ(model.owner.name, "Ann");
    EXPECT_EQ(model.owner.age, 3);
    ASSERT_TRUE(model.shared);
    EXPECT_EQ(model.shared->name, std::nullopt);
    EXPECT_EQ(model.shared->age, 4);
    EXPECT_EQ(model.optionalInteger, 5);
    EXPECT_EQ(model.optionalColour, Colour::green);
    EXPECT_EQ(model.optionalDate, start2001 - 1s);
    EXPECT_EQ(model.texts, (std::vector<std::string>{"a", ""}));
    ASSERT_EQ(model.owners.size(), 2U);
    EXPECT_EQ(model.owners[0]->age, 1);
    EXPECT_EQ(model.owners[1]->age, 0);
    EXPECT_EQ(model.numbers, (std::vector<double>{1, 2.5}));
    EXPECT_EQ(model.holes, (std::vector<std::optional<std::int64_t>>{1, std::nullopt}));
    EXPECT_EQ(model.any, (AnyCodable::List{true, AnyCodable::Dictionary{{"k", "v"}}}));
    EXPECT_EQ(model.dictionary, (AnyCodable::Dictionary{{"a", 1}}));
    EXPECT_EQ(model.optionalDictionary, AnyCodable::Dictionary());
}

TEST(Decoder, AMissingKeyLeavesWhatANewObjectHolds) {
    const auto model = decode<Everything>("{}");

    EXPECT_FALSE(model.flag);
    EXPECT_EQ(model.integer, 7);
    EXPECT_EQ(model.text, "unset");
    EXPECT_EQ(model.colour, Colour::green);
    EXPECT_EQ(model.shared, nullptr);
    EXPECT_EQ(model.optionalInteger, std::nullopt);
    EXPECT_TRUE(model.texts.empty());
    EXPECT_EQ(model.optionalDictionary, std::nullopt);
}

TEST(Decoder, NullMakesAnOptionalOrASharedPointerAbsent) {
    Everything model;
    model.shared = std::make_shared<Owner>();
    model.optionalInteger = 3;
    model.numbers.emplace();

    decode(json::Document::parse(R"({"shared":null,"optionalInteger":null,"numbers":null})"), model);

    EXPECT_EQ(model.shared, nullptr);
    EXPECT_EQ(model.optionalInteger, std::nullopt);
    EXPECT_EQ(model.numbers, std::nullopt);
}

TEST(Decoder, AnIntegralNumberIsAnIntegerHoweverItIsWritten) {
    for (const char* text : {"3", "3.0", "3e0", "0.3e1", "30e-1", "3.00E+0"}) {
        EXPECT_EQ(decode<Everything>("{\"integer\":" + std::string(text) + "}").integer, 3) << text;
    }
    EXPECT_EQ(decode<Everything>(R"({"integer":9e18})").integer, 9000000000000000000);
    EXPECT_EQ(decode<Everything>(R"({"integer":-9e18})").integer, -9000000000000000000);
    EXPECT_EQ(decode<Everything>(R"({"integer":-0.0})").integer, 0);
}

TEST(Decoder, AWholeNumberOf64BitsIsReadExactlyHoweverItIsWritten) {
    const std::vector<std::pair<const char*, std::int64_t>> numbers{
        {"9007199254740991.0", 9007199254740991},
        {"9007199254740993", 9007199254740993},
        {"9007199254740993.0", 9007199254740993},
        {"-9007199254740993.000", -9007199254740993},
        {"90071992547409.93e2", 9007199254740993},
        {"9007199254740993000000E-6", 9007199254740993},
        {"0.000000000000000009007199254740993e+33", 9007199254740993},
        {"9e18", 9'000'000'000'000'000'000},
        {"9223372036854775807.0", std::numeric_limits<std::int64_t>::max()},
        {"-9223372036854775808.0", std::numeric_limits<std::int64_t>::min()},
        {"-9223372036854775808e0", std::numeric_limits<std::int64_t>::min()},
    };
    for (const auto& [text, number] : numbers) {
        const std::string before = R"({"text":"7e1 \" 8.5","any":[1,"2",-3.5,{"x":4e2}],"integer":)";
        EXPECT_EQ(decode<Everything>(before + text + "}").integer, number) << text;
        EXPECT_EQ(std::get<std::int64_t>(decode<AnyCodable>(text).value), number) << text;
    }
    for (const char* text : {"9007199254740993.5", "9223372036854775808.0", "-9223372036854775809.0", "1e19"}) {
        EXPECT_THROW((void)decode<Everything>("{\"integer\":" + std::string(text) + "}"), json::DecodingError) << text;
        EXPECT_TRUE(std::holds_alternative<double>(decode<AnyCodable>(text).value)) << text;
    }
}

TEST(Decoder, ADocumentGivesItsTextBackAndAsACopyWhileOthersHoldIt) {
    const std::string text = R"({"integer":9007199254740993.0})";
    auto document = json::Document::parse(text);
    auto other = document;
    EXPECT_EQ(std::move(document).takeText(), text);
    Everything model;
    json::decode(other, model);
    EXPECT_EQ(model.integer, 9007199254740993);
    EXPECT_EQ(std::move(other).takeText(), text);
}

TEST(Decoder, AnIntegerFillsAFieldOfDoubles) {
    EXPECT_EQ(decode<Everything>(R"({"number":-2})").number, -2.0);
    EXPECT_EQ(decode<Everything>(R"({"number":18446744073709551615})").number, 18446744073709551615.0);
    EXPECT_EQ(decode<Everything>(R"({"number":-123456789012345678901234567890})").number,
              -123456789012345678901234567890.0);
}

TEST(Decoder, AKeyOutsideTheTableIsPassedOver) {
    const auto model = decode<Owner>(R"({"nam":1,"names":{"age":[1,{"age":2}]},"Age":3,"":0,"age":4})");

    EXPECT_EQ(model.age, 4);
    EXPECT_EQ(model.name, std::nullopt);
}

TEST(Decoder, AnEscapedKeyIsTheKeyThatItSpells) {
    EXPECT_EQ(decode<Owner>(R"({"\u0061ge":4})").age, 4);
}

TEST(Decoder, ADerivedModelReadsTheKeysOfItsBases) {
    const auto ring = decode<Ring>(R"({"width":2,"radius":5})");

    EXPECT_EQ(ring.radius, 5);
    EXPECT_EQ(ring.width, 2);
}

TEST(Decoder, APointerToABaseDecodesAsItsBase) {
    const auto drawing = decode<modelling::Drawing>(R"({"shape":{"radius":5}})");

    ASSERT_TRUE(drawing.shape);
    EXPECT_EQ(dynamic_cast<modelling::Circle*>(drawing.shape.get()), nullptr);
}

TEST(Decoder, AListEnvelopeKeepsTheCountThatItStates) {
    const auto list = decode<Listing<Owner>>(R"({"count":12,"data":[{"age":1},{"age":2}]})");

    EXPECT_EQ(list.count, 12);
    ASSERT_EQ(list.data.size(), 2U);
    EXPECT_EQ(list.data[1]->age, 2);
}

TEST(Decoder, AListReplacesWhatTheFieldHeld) {
    Everything model;
    model.texts = {"old", "older"};

    decode(json::Document::parse(R"({"texts":["new"]})"), model);

    EXPECT_EQ(model.texts, std::vector<std::string>{"new"});
}

} // namespace quorvane
