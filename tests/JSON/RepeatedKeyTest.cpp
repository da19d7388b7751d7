#include <gtest/gtest.h>

#include "JSON/JSON.h"
#include "JSON/TestModels.h"

namespace quorvane {

using json::decode;
using modelling::Address;
using modelling::Everything;
using modelling::Hooked;
using modelling::Shop;
using modelling::Tolerant;

TEST(RepeatedKeys, TheLastWins) {
    EXPECT_EQ(decode<Everything>(R"({"integer":1,"text":"a","integer":2})").integer, 2);
    EXPECT_EQ(decode<Everything>(R"({"shared":{"age":1},"shared":null})").shared, nullptr);
    EXPECT_EQ(decode<Everything>(R"({"texts":["a","b"],"texts":["c"]})").texts, std::vector<std::string>{"c"});
    EXPECT_EQ(decode<AnyCodable>(R"({"a":1,"b":2,"a":"x"})"), (AnyCodable::Dictionary{{"a", "x"}, {"b", 2}}));
}

TEST(RepeatedKeys, NothingOfAnEarlierObjectShinesThrough) {
    const auto model = decode<Everything>(R"({"owner":{"name":"Ann","age":1},"owner":{"age":2}})");

    EXPECT_EQ(model.owner.name, std::nullopt);
    EXPECT_EQ(model.owner.age, 2);
}

TEST(RepeatedKeys, AnEarlierWrongValueDoesNotCount) {
    EXPECT_EQ(decode<Everything>(R"({"integer":"x","integer":"y","integer":3})").integer, 3);
    EXPECT_EQ(decode<AnyCodable>(R"({"a":null,"b":[null],"b":2,"a":1})"), (AnyCodable::Dictionary{{"a", 1}, {"b", 2}}));
}

TEST(RepeatedKeys, ALastWrongValueFailsTheModel) {
    EXPECT_THROW((void)decode<Everything>(R"({"integer":3,"integer":"x"})"), json::DecodingError);
    EXPECT_THROW((void)decode<Everything>(R"({"integer":"x","integer":3,"text":5})"), json::DecodingError);
}

TEST(RepeatedKeys, ADictionaryNamesTheKeyThatStaysWithoutAValue) {
    const auto messageOf = [](const char* text) -> std::string {
        try {
            (void)decode<AnyCodable>(text);
            return "decoded";
        } catch (const json::DecodingError& error) {
            return error.what();
        }
    };

    EXPECT_EQ(messageOf(R"({"a":1,"b":[null],"c":null})"), "b[0]: the container contains nothing serializable");
    EXPECT_EQ(messageOf(R"({"a":null,"b":null,"a":1})"), "b: the container contains nothing serializable");
}

TEST(RepeatedKeys, ALastWrongValueOfALenientFieldLeavesTheDefault) {
    const auto model =
        decode<Tolerant>(R"({"text":"a","integer":1,"owner":{"age":5},"text":5,"integer":null,"owner":[],"x":1,"y":1,
                             "x":"1"})");

    EXPECT_EQ(model.text, "unset");
    EXPECT_EQ(model.integer, 7);
    EXPECT_EQ(model.owner.age, 0);
    EXPECT_EQ(model.point, std::nullopt);
}

TEST(RepeatedKeys, OfAPairTheLastCountsAsWell) {
    EXPECT_EQ(decode<Address>(R"({"x":1,"y":2,"x":3})").point, (modelling::Point{3, 2}));
    EXPECT_EQ(decode<Address>(R"({"x":1,"y":2,"x":null})").point, std::nullopt);
}

TEST(RepeatedKeys, BehindAPointerTheLastCountsAsWell) {
    const auto shop = decode<Shop>(R"({"city":"Rome","city":null})");

    ASSERT_TRUE(shop.address);
    EXPECT_EQ(shop.address->city, std::nullopt);
}

TEST(RepeatedKeys, TheDefaultIsTheOneOfADecodedObject) {
    EXPECT_EQ(decode<Hooked>(R"({"first":4,"first":null})").sum, 2);
}

} // namespace quorvane
