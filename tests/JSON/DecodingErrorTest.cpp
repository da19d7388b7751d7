#include <gtest/gtest.h>

#include "JSON/CodingErrors.h"
#include "JSON/JSON.h"
#include "JSON/TestModels.h"

namespace quorvane {

using json::DecodingError;
using json::EncodingError;
using modelling::Everything;
using modelling::Listing;
using modelling::Owner;

namespace {

template <class Model>
DecodingError failureOf(const std::string& text) {
    try {
        (void)json::decode<Model>(text);
    } catch (const DecodingError& error) {
        return error;
    }
    ADD_FAILURE() << "decoded: " << text;
    return {DecodingError::Kind::malformed, "", ""};
}

struct WrongField {
    const char* document;
    DecodingError::Kind kind;
    const char* message;
};

constexpr auto mismatch = DecodingError::Kind::typeMismatch;
constexpr auto corrupted = DecodingError::Kind::dataCorrupted;

constexpr WrongField wrongFields[] = {
    {R"({"flag":1})", mismatch, "flag: expected a boolean, found 1"},
    {R"({"flag":null})", mismatch, "flag: expected a boolean, found null"},
    {R"({"integer":"3"})", mismatch, R"(integer: expected an integer, found "3")"},
    {R"({"integer":true})", mismatch, "integer: expected an integer, found true"},
    {R"({"integer":null})", mismatch, "integer: expected an integer, found null"},
    {R"({"integer":3.5})", corrupted, "integer: expected an integer, found 3.5"},
    {R"({"integer":9223372036854775808})", corrupted, "integer: expected an integer, found 9223372036854775808"},
    {R"({"integer":-9223372036854775809})", corrupted, "integer: expected an integer, found -9.223372036854776e+18"},
    {R"({"integer":1e19})", corrupted, "integer: expected an integer, found 1e+19"},
    {R"({"integer":-9223372036854775809e1})", corrupted, "integer: expected an integer, found -9.223372036854776e+19"},
    {R"({"integer":123456789012345678901})", corrupted, "integer: expected an integer, found 1.2345678901234568e+20"},
    {R"({"narrow":2147483648})", corrupted, "narrow: expected an integer, found 2147483648"},
    {R"({"number":"1"})", mismatch, R"(number: expected a number, found "1")"},
    {R"({"small":1e39})", corrupted, "small: expected a number, found 1e+39"},
    {R"({"text":5})", mismatch, "text: expected a text, found 5"},
    {R"({"text":{}})", mismatch, "text: expected a text, found an object"},
    {R"({"date":"tomorrow"})", mismatch, R"(date: expected a date, found "tomorrow")"},
    {R"({"date":1e300})", corrupted, "date: expected a date, found 1e+300"},
    {R"({"colour":"blue"})", corrupted, R"(colour: expected a colour, found "blue")"},
    {R"({"colour":"Red"})", corrupted, R"(colour: expected a colour, found "Red")"},
    {R"({"colour":0})", mismatch, "colour: expected a colour, found 0"},
    {R"({"level":2})", corrupted, "level: expected a known value, found 2"},
    {R"({"level":-2})", corrupted, "level: expected a known value, found -2"},
    {R"({"level":"low"})", mismatch, R"(level: expected a known value, found "low")"},
    {R"({"owner":[]})", mismatch, "owner: expected an object, found a list"},
    {R"({"owner":null})", mismatch, "owner: expected an object, found null"},
    {R"({"owner":{"age":"x"}})", mismatch, R"(owner.age: expected an integer, found "x")"},
    {R"({"shared":3})", mismatch, "shared: expected an object, found 3"},
    {R"({"optionalInteger":"x"})", mismatch, R"(optionalInteger: expected an integer, found "x")"},
    {R"({"optionalColour":"x"})", corrupted, R"(optionalColour: expected a colour, found "x")"},
    {R"({"texts":"x"})", mismatch, R"(texts: expected a list, found "x")"},
    {R"({"texts":["a",1]})", mismatch, "texts[1]: expected a text, found 1"},
    {R"({"texts":["a",null]})", mismatch, "texts[1]: expected a text, found null"},
    {R"({"owners":[{},null]})", mismatch, "owners[1]: expected an object, found null"},
    {R"({"owners":[{},{"age":false}]})", mismatch, "owners[1].age: expected an integer, found false"},
    {R"({"numbers":[1,[]]})", mismatch, "numbers[1]: expected a number, found a list"},
    {R"({"any":null})", corrupted, "any: Could not serialize"},
    {R"({"any":[1,null]})", corrupted, "any[1]: the container contains nothing serializable"},
    {R"({"dictionary":[]})", mismatch, "dictionary: expected an object, found a list"},
    {R"({"dictionary":{"a":{"b":[null]}}})", corrupted,
     "dictionary.a.b[0]: the container contains nothing serializable"},
};

class WrongFieldTest : public ::testing::TestWithParam<WrongField> {};

} // namespace

TEST_P(WrongFieldTest, FailsTheModelWithThePathAndWhatWasExpected) {
    const auto error = failureOf<Everything>(GetParam().document);

    EXPECT_STREQ(error.what(), GetParam().message);
    EXPECT_EQ(error.kind, GetParam().kind);
}

INSTANTIATE_TEST_SUITE_P(DecodingErrors, WrongFieldTest, ::testing::ValuesIn(wrongFields));

TEST(DecodingErrors, CarryTheKindTheExpectedTypeTheDescriptionAndThePath) {
    const auto error = failureOf<Listing<Owner>>(R"({"data":[{},{},{},{"age":"x"}]})");

    EXPECT_EQ(error.kind, DecodingError::Kind::typeMismatch);
    EXPECT_EQ(error.expectedType, "integer");
    EXPECT_EQ(error.description, R"(expected an integer, found "x")");
    EXPECT_EQ(error.codingPath, (json::CodingPath{{"data", std::nullopt}, {"3", 3}, {"age", std::nullopt}}));
    EXPECT_STREQ(error.what(), R"(data[3].age: expected an integer, found "x")");
}

TEST(DecodingErrors, OfTheDocumentItselfHaveNoPath) {
    const auto error = failureOf<Owner>("[]");

    EXPECT_STREQ(error.what(), "expected an object, found a list");
    EXPECT_TRUE(error.codingPath.empty());
}

TEST(DecodingErrors, ShowTheBeginningOfALongTextOnOneLine) {
    const std::string euros = "\xE2\x82\xAC\xE2\x82\xAC\xE2\x82\xAC\xE2\x82\xAC\xE2\x82\xAC\xE2\x82\xAC\xE2\x82\xAC";
    const auto error = failureOf<Owner>("{\"age\":\"a\\n" + euros + euros + euros + "\"}");

    EXPECT_EQ(error.description, "expected an integer, found \"a?" + euros + euros.substr(0, 15) + "...\"");
}

TEST(CodingPaths, JoinKeysWithDotsAndIndicesInBrackets) {
    const json::CodingPath path{{"data", std::nullopt}, {"3", 3}, {"0", 0}, {"type", std::nullopt}};

    EXPECT_EQ(json::textOf(path), "data[3][0].type");
    EXPECT_EQ(json::textOf(json::CodingPath{}), "");
}

TEST(EncodingErrors, CarryThePathInTheirText) {
    const EncodingError error("The value is not encodable", {{"a", std::nullopt}, {"2", 2}});

    EXPECT_STREQ(error.what(), "a[2]: The value is not encodable");
    EXPECT_STREQ(EncodingError("The value is not encodable").what(), "The value is not encodable");
}

} // namespace quorvane
