#include <gtest/gtest.h>

#include "JSON/JSON.h"
#include "JSON/TestModels.h"

namespace quorvane {

using json::decode;
using modelling::Level;
using modelling::Point;
using modelling::Tolerant;

TEST(LenientFields, KeepTheirDefaultsWhereValuesAreOfAnotherKind) {
    const auto model = decode<Tolerant>(
        R"({"text":5,"integer":"x","level":99,"owner":{"name":"Ann","age":"x"},"shared":{"age":"x"},
            "texts":["a",1],"metadata":{"a":null},"x":1,"y":"2"})");

    EXPECT_EQ(model.text, "unset");
    EXPECT_EQ(model.integer, 7);
    EXPECT_EQ(model.level, Level::high);
    EXPECT_EQ(model.owner.name, std::nullopt);
    EXPECT_EQ(model.shared, nullptr);
    EXPECT_EQ(model.texts, std::vector<std::string>{"kept"});
    EXPECT_EQ(model.metadata, std::nullopt);
    EXPECT_EQ(model.point, std::nullopt);
}

TEST(LenientFields, KeepTheirDefaultsWhereValuesAreNull) {
    const auto model = decode<Tolerant>(
        R"({"text":null,"integer":null,"level":null,"owner":null,"shared":null,"texts":null,"metadata":null,
            "x":null,"y":2})");

    EXPECT_EQ(model.text, "unset");
    EXPECT_EQ(model.integer, 7);
    EXPECT_EQ(model.level, Level::high);
    EXPECT_EQ(model.texts, std::vector<std::string>{"kept"});
    EXPECT_EQ(model.point, std::nullopt);
}

TEST(LenientFields, TakeValuesThatCanBeDecoded) {
    const auto model = decode<Tolerant>(
        R"({"text":"t","integer":1,"level":0,"owner":{"age":2},"shared":{"age":3},"texts":[],"metadata":{"a":1},
            "x":1,"y":2.5})");

    EXPECT_EQ(model.text, "t");
    EXPECT_EQ(model.integer, 1);
    EXPECT_EQ(model.level, Level::middle);
    EXPECT_EQ(model.owner.age, 2);
    ASSERT_TRUE(model.shared);
    EXPECT_EQ(model.shared->age, 3);
    EXPECT_TRUE(model.texts.empty());
    EXPECT_EQ(model.metadata, (AnyCodable::Dictionary{{"a", 1}}));
    EXPECT_EQ(model.point, (Point{1, 2.5}));
}

TEST(LenientFields, LeaveTheFailureOfALaterFieldWhole) {
    const std::string text = R"({"data":[{"age":"x"}],"text":5})";
    const auto tolerant = decode<Tolerant>(text);

    EXPECT_EQ(tolerant.text, "unset");
    EXPECT_THROW((void)decode<modelling::Listing<modelling::Owner>>(text), json::DecodingError);
}

TEST(LenientFields, AreWrittenLikeAnyOther) {
    Tolerant model;
    model.point = Point{1, 2};

    EXPECT_EQ(json::encode(model), R"({"text":"unset","integer":7,"level":1,"owner":{"age":0},"texts":["kept"],)"
                                   R"("x":1.0,"y":2.0})");
}

} // namespace quorvane
