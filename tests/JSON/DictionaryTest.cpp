#include <gtest/gtest.h>

#include "JSON/JSON.h"

namespace quorvane {

using json::Document;

TEST(RawDictionaries, KeepTheParsedDocumentAlive) {
    const auto dictionary = [] {
        return *Document::parse(R"({"name":"a text that is not a short one"})").dictionary();
    }();
    (void)Document::parse(R"({"name":"something else that is long enough"})");

    EXPECT_EQ(dictionary.value("name"), AnyCodable("a text that is not a short one"));
}

TEST(RawDictionaries, AreNoneWhereTheRootIsNoObject) {
    EXPECT_FALSE(Document::parse("[1]").dictionary().has_value());
    EXPECT_FALSE(Document::parse("null").dictionary().has_value());
    EXPECT_TRUE(Document::parse("{}").dictionary().has_value());
}

TEST(RawDictionaries, TellAbsentFromNullAndFromAValue) {
    const auto dictionary = *Document::parse(R"({"a":null,"b":[1,null]})").dictionary();

    EXPECT_EQ(dictionary.size(), 2U);
    EXPECT_TRUE(dictionary.contains("a"));
    EXPECT_FALSE(dictionary.contains("c"));
    EXPECT_EQ(dictionary.value("a"), std::nullopt);
    EXPECT_EQ(dictionary.value("c"), std::nullopt);
    EXPECT_EQ(dictionary.value("b"), (AnyCodable::List{1, AnyCodable()}));
}

TEST(RawDictionaries, CopyAsValuesOfTheirOwn) {
    const auto dictionary = *Document::parse(R"({"a":null,"b":{"c":3.0,"d":0.5},"e":"f","g":true})").dictionary();

    EXPECT_EQ(dictionary.copy(),
              (AnyCodable::Dictionary{
                  {"a", AnyCodable()}, {"b", AnyCodable::Dictionary{{"c", 3}, {"d", 0.5}}}, {"e", "f"}, {"g", true}}));
}

TEST(RawDictionaries, TakeTheLastOfEqualKeys) {
    const auto dictionary = *Document::parse(R"({"a":1,"b":2,"a":3})").dictionary();

    EXPECT_EQ(dictionary.size(), 2U);
    EXPECT_EQ(dictionary.value("a"), AnyCodable(3));
    EXPECT_EQ(dictionary.copy().at("a"), AnyCodable(3));
}

} // namespace quorvane
