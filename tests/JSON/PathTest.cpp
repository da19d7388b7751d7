#include <gtest/gtest.h>

#include "JSON/JSON.h"
#include "JSON/TestModels.h"

namespace quorvane {

using json::decode;
using json::encode;
using modelling::Address;
using modelling::Point;
using modelling::Shop;

TEST(FlatKeys, FillAFieldBehindASharedPointerOrAnOptional) {
    const auto shop = decode<Shop>(R"({"name":"n","city":"Rome","x":1,"y":2,"age":3})");

    ASSERT_TRUE(shop.address);
    EXPECT_EQ(shop.address->city, "Rome");
    EXPECT_EQ(shop.address->point, (Point{1, 2}));
    ASSERT_TRUE(shop.owner);
    EXPECT_EQ(shop.owner->age, 3);
}

TEST(FlatKeys, LeaveThePointerAbsentWhereNoneOfThemIsThere) {
    const auto shop = decode<Shop>(R"({"name":"n","x":1})");

    EXPECT_EQ(shop.address, nullptr);
    EXPECT_EQ(shop.owner, std::nullopt);
}

TEST(FlatKeys, FailWithTheirOwnNameAsThePath) {
    try {
        (void)decode<Shop>(R"({"city":5})");
        FAIL();
    } catch (const json::DecodingError& error) {
        EXPECT_STREQ(error.what(), "city: expected a text, found 5");
    }
}

TEST(FlatKeys, AreLeftOutWhereThePointerIsAbsent) {
    Shop shop;
    shop.name = "n";

    EXPECT_EQ(encode(shop), R"({"name":"n"})");
}

TEST(FlatKeys, AreWrittenInTheOrderOfTheTable) {
    Shop shop;
    shop.address = std::make_shared<Address>();
    shop.address->city = "Rome";
    shop.address->point = Point{1, 2};
    shop.owner.emplace();

    EXPECT_EQ(encode(shop), R"({"name":"","city":"Rome","x":1.0,"y":2.0,"age":0})");
}

TEST(KeyPairs, AreReadOnlyTogether) {
    EXPECT_EQ(decode<Address>(R"({"y":2,"x":1})").point, (Point{1, 2}));
    EXPECT_EQ(decode<Address>(R"({"x":1})").point, std::nullopt);
    EXPECT_EQ(decode<Address>(R"({"y":1})").point, std::nullopt);
    EXPECT_EQ(decode<Address>(R"({"x":1,"y":null})").point, std::nullopt);
    EXPECT_EQ(decode<Address>(R"({"left":1})").corner, (Point{9, 9}));
    EXPECT_EQ(decode<Address>(R"({"left":1,"top":2})").corner, (Point{1, 2}));
}

TEST(KeyPairs, FailTheModelWithAValueThatIsNoNumber) {
    try {
        (void)decode<Address>(R"({"x":1,"y":"2"})");
        FAIL();
    } catch (const json::DecodingError& error) {
        EXPECT_STREQ(error.what(), R"(y: expected a number, found "2")");
    }
}

TEST(KeyPairs, AreWrittenTogetherOrNotAtAll) {
    Address address;
    EXPECT_EQ(encode(address), R"({"left":9.0,"top":9.0})");

    address.point = Point{0.5, -1};
    EXPECT_EQ(encode(address), R"({"x":0.5,"y":-1.0,"left":9.0,"top":9.0})");
}

} // namespace quorvane
