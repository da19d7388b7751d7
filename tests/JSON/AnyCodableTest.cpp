#include <cmath>
#include <limits>

#include <gtest/gtest.h>

#include "JSON/AnyCodable.h"
#include "JSON/JSON.h"

namespace quorvane {

using json::decode;
using json::encode;

TEST(AnyCodableTest, KeepsTheKindsOfItsValuesOnTheWayThereAndBack) {
    const std::string text = R"({"a":[1,"x",true,2.5]})";
    const auto value = decode<AnyCodable>(text);

    EXPECT_EQ(value, (AnyCodable::Dictionary{{"a", AnyCodable::List{std::int64_t{1}, "x", true, 2.5}}}));
    EXPECT_EQ(encode(value), text);
}

TEST(AnyCodableTest, TakesTheFirstOfIntegerDoubleBoolAndTextThatFits) {
    EXPECT_EQ(decode<AnyCodable>("3"), AnyCodable(std::int64_t{3}));
    EXPECT_EQ(decode<AnyCodable>("3.0"), AnyCodable(std::int64_t{3}));
    EXPECT_EQ(decode<AnyCodable>("3e2"), AnyCodable(std::int64_t{300}));
    EXPECT_EQ(decode<AnyCodable>("3.5"), AnyCodable(3.5));
    EXPECT_EQ(decode<AnyCodable>("true"), AnyCodable(true));
    EXPECT_EQ(decode<AnyCodable>("\"3\""), AnyCodable("3"));
    EXPECT_EQ(decode<AnyCodable>("9223372036854775807"), AnyCodable(INT64_MAX));
    EXPECT_EQ(decode<AnyCodable>("9223372036854775808"), AnyCodable(9223372036854775808.0));
    EXPECT_EQ(decode<AnyCodable>("-9223372036854775809"), AnyCodable(-9223372036854775808.0 - 1));
    EXPECT_EQ(decode<AnyCodable>("1e300"), AnyCodable(1e300));
}

TEST(AnyCodableTest, ReadsEmptyContainers) {
    EXPECT_EQ(decode<AnyCodable>("{}"), AnyCodable(AnyCodable::Dictionary()));
    EXPECT_EQ(decode<AnyCodable>("[]"), AnyCodable(AnyCodable::List()));
    EXPECT_EQ(decode<AnyCodable>("\"\""), AnyCodable(""));
}

TEST(AnyCodableTest, DoesNotDecodeFromNull) {
    const auto messageOf = [](const char* text) -> std::string {
        try {
            (void)decode<AnyCodable>(text);
            return "decoded";
        } catch (const json::DecodingError& error) {
            EXPECT_EQ(error.kind, json::DecodingError::Kind::dataCorrupted);
            return error.what();
        }
    };

    EXPECT_EQ(messageOf("null"), "Could not serialize");
    EXPECT_EQ(messageOf("[null]"), "[0]: the container contains nothing serializable");
    EXPECT_EQ(messageOf(R"({"a":{"b":null}})"), "a.b: the container contains nothing serializable");
}

TEST(AnyCodableTest, ADictionaryDecodesFromAnObjectOnly) {
    EXPECT_EQ(decode<AnyCodable::Dictionary>(R"({"a":1})"), (AnyCodable::Dictionary{{"a", 1}}));
    EXPECT_THROW((void)decode<AnyCodable::Dictionary>("[1]"), json::DecodingError);
}

TEST(AnyCodableTest, WithoutAValueCannotBeEncoded) {
    const auto messageOf = [](const AnyCodable& value) -> std::string {
        try {
            return encode(value);
        } catch (const json::EncodingError& error) {
            return error.what();
        }
    };

    EXPECT_EQ(messageOf(AnyCodable()), "The value is not encodable");
    EXPECT_EQ(messageOf(std::numeric_limits<double>::infinity()), "The value is not encodable");
    EXPECT_EQ(messageOf(AnyCodable::Dictionary{{"a", AnyCodable::List{1, AnyCodable()}}}),
              "a[1]: The value is not encodable");
    EXPECT_EQ(messageOf(AnyCodable::Dictionary{{"a", AnyCodable::Dictionary{{"b", std::nan("")}}}}),
              "a.b: The value is not encodable");
}

TEST(AnyCodableTest, IsEqualOnlyToTheSameValueOfTheSameKind) {
    EXPECT_EQ(AnyCodable(1), AnyCodable(std::int64_t{1}));
    EXPECT_NE(AnyCodable(1), AnyCodable(1.0));
    EXPECT_NE(AnyCodable(1), AnyCodable(true));
    EXPECT_NE(AnyCodable(1), AnyCodable("1"));
    EXPECT_NE(AnyCodable(), AnyCodable(""));
}

} // namespace quorvane
