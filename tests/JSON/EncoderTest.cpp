#include <chrono>
#include <cmath>
#include <limits>

#include <gtest/gtest.h>

#include "JSON/JSON.h"
#include "JSON/TestModels.h"

namespace quorvane {

using namespace std::chrono_literals;
using json::decode;
using json::encode;
using json::Style;
using modelling::Circle;
using modelling::Drawing;
using modelling::Everything;
using modelling::Owner;
using modelling::Ring;

namespace {

std::string textCoded(const std::string& text) {
    Owner owner;
    owner.name = text;
    const std::string coded = encode(owner);
    return coded.substr(8, coded.size() - 8 - std::string(",\"age\":0}").size());
}

std::string failureOf(const Everything& model) {
    try {
        return encode(model);
    } catch (const json::EncodingError& error) {
        return error.what();
    }
}

} // namespace

TEST(Encoder, WritesEachKindInTheOrderOfTheTable) {
    Everything model;
    model.date = json::Date(978307200s) + 1500ms;
    model.small = 0.1F;
    model.level = modelling::Level::low;
    model.owner.name = "Ann";
    model.shared = std::make_shared<Owner>();
    model.optionalInteger = INT64_MIN;
    model.optionalColour = modelling::Colour::red;
    model.optionalDate = json::Date(978307200s) - 1s;
    model.texts = {"a", "b"};
    model.owners = {std::make_shared<Owner>()};
    model.numbers = {1, 0.5};
    model.holes = {1, std::nullopt};
    model.any = "any";
    model.dictionary = {{"z", 1}, {"a", 2}};
    model.optionalDictionary.emplace();

    EXPECT_EQ(encode(model),
              R"({"flag":false,"integer":7,"narrow":0,"number":0.0,"small":0.1,"text":"unset","date":1.5,)"
              R"("colour":"green","level":-1,"owner":{"name":"Ann","age":0},"shared":{"age":0},)"
              R"("optionalInteger":-9223372036854775808,"optionalColour":"red","optionalDate":-1.0,)"
              R"("texts":["a","b"],"owners":[{"age":0}],"numbers":[1.0,0.5],"holes":[1,null],"any":"any",)"
              R"("dictionary":{"a":2,"z":1},"optionalDictionary":{}})");
}

TEST(Encoder, WhatItWritesReadsBackAsTheSame) {
    Everything model;
    model.any = AnyCodable::List{1, 2.5, "x"};
    model.number = 0.1 + 0.2;
    model.small = 1.1F;
    model.text = "\t\"quoted\" \\ \xE2\x82\xAC";
    model.shared = std::make_shared<Owner>();
    const std::string text = encode(model);

    EXPECT_EQ(encode(decode<Everything>(text)), text);
    EXPECT_EQ(encode(decode<Everything>(encode(model, Style::pretty))), text);
    EXPECT_EQ(decode<Everything>(text).number, model.number);
    EXPECT_EQ(decode<Everything>(text).small, model.small);
    EXPECT_EQ(decode<Everything>(text).text, model.text);
}

TEST(Encoder, LeavesAbsentOptionalsOut) {
    EXPECT_EQ(encode(Owner()), R"({"age":0})");
}

TEST(Encoder, IndentsByTwoBlanksWherePrettyIsAskedFor) {
    Everything model;
    const auto value =
        AnyCodable::Dictionary{{"a", AnyCodable::List{1, AnyCodable::List(), AnyCodable::Dictionary{{"b", true}}}}};
    Owner owner;
    owner.name = "Ann";

    EXPECT_EQ(encode(AnyCodable(value), Style::pretty), R"({
  "a": [
    1,
    [],
    {
      "b": true
    }
  ]
})");
    EXPECT_EQ(encode(owner, Style::pretty), "{\n  \"name\": \"Ann\",\n  \"age\": 0\n}");
    EXPECT_EQ(encode(Circle(), Style::pretty), "{\n  \"radius\": 0.0\n}");
    EXPECT_EQ(encode(AnyCodable::Dictionary(), Style::pretty), "{}");
}

TEST(Encoder, EscapesWhatATextMayNotHold) {
    EXPECT_EQ(textCoded("a\"b\\c/d"), R"("a\"b\\c/d")");
    EXPECT_EQ(textCoded("\b\f\n\r\t"), R"("\b\f\n\r\t")");
    EXPECT_EQ(textCoded(std::string("\0\x01\x1F\x7F", 4)), "\"\\u0000\\u0001\\u001f\x7F\"");
    EXPECT_EQ(textCoded("\xC3\xA9\xF0\x9F\x98\x80"), "\"\xC3\xA9\xF0\x9F\x98\x80\"");
}

TEST(Encoder, FindsAnEscapeAtEachPlaceOfATextOfEachLength) {
    for (std::size_t length = 0; length < 40; ++length) {
        const std::string plain(length, 'p');
        EXPECT_EQ(textCoded(plain), '"' + plain + '"');
        for (std::size_t place = 0; place < length; ++place) {
            for (const auto& [character, escape] :
                 {std::pair('"', "\\\""), {'\\', "\\\\"}, {'\n', "\\n"}, {'\0', "\\u0000"}, {'\x1F', "\\u001f"}}) {
                std::string text = plain;
                text[place] = character;
                const std::string expected = plain.substr(0, place) + escape + plain.substr(place + 1);
                ASSERT_EQ(textCoded(text), '"' + expected + '"') << length << ' ' << place;
            }
        }
    }
}

TEST(Encoder, LeavesEachOtherASCIICharacterAsItIs) {
    for (char c = ' '; c < '\x7F'; ++c) {
        if (c != '"' && c != '\\') {
            EXPECT_EQ(textCoded(std::string(11, c)), '"' + std::string(11, c) + '"');
        }
    }
}

TEST(Encoder, RefusesATextThatIsNotUTF8) {
    Everything model;
    model.any = 1;
    model.texts = {"fine", "not\xFF fine"};

    EXPECT_EQ(failureOf(model), "texts[1]: the text is not UTF-8");
}

TEST(Encoder, RefusesWhatHasNoFormInJSON) {
    Everything infinite;
    infinite.number = std::numeric_limits<double>::infinity();
    EXPECT_EQ(failureOf(infinite), "number: The value is not encodable");

    Everything notANumber;
    notANumber.small = std::nanf("");
    EXPECT_EQ(failureOf(notANumber), "small: The value is not encodable");

    Everything hole;
    hole.owners = {std::make_shared<Owner>(), nullptr};
    EXPECT_EQ(failureOf(hole), "owners[1]: The value is not encodable");

    EXPECT_EQ(failureOf(Everything()), "any: The value is not encodable");
}

TEST(Encoder, WritesAfterAFailureAsIfNothingHadBeen) {
    EXPECT_THROW((void)encode(Everything()), json::EncodingError);

    EXPECT_EQ(encode(Owner()), R"({"age":0})");
}

TEST(Encoder, APointerToABaseIsWrittenAsWhatItIs) {
    Drawing drawing;
    drawing.shape = std::make_shared<modelling::Shape>();
    EXPECT_EQ(encode(drawing), R"({"shape":{}})");

    const auto ring = std::make_shared<Ring>();
    ring->radius = 2;
    ring->width = 1;
    drawing.shape = ring;
    EXPECT_EQ(encode(drawing), R"({"shape":{"radius":2.0,"width":1.0}})");

    drawing.shape = std::make_shared<Circle>();
    EXPECT_EQ(encode(drawing), R"({"shape":{"radius":0.0}})");
}

TEST(Encoder, WritesATextOfAnyLength) {
    const std::string large(std::size_t{5} << 20, 'x');

    EXPECT_EQ(textCoded(large).size(), large.size() + 2);
    EXPECT_EQ(encode(Owner()), R"({"age":0})");
}

} // namespace quorvane
