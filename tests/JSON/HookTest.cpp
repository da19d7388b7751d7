#include <gtest/gtest.h>

#include "JSON/JSON.h"
#include "JSON/TestModels.h"

namespace quorvane {

using json::decode;
using modelling::Hooked;

TEST(Hooks, RunBeforeAndAfterTheKeysAreRead) {
    const auto model = decode<Hooked>(R"({"second":5})");

    EXPECT_EQ(model.first, std::nullopt);
    EXPECT_EQ(model.second, 5);
    EXPECT_EQ(model.sum, 5);
}

TEST(Hooks, SeeWhetherBothKeysOfAPairWereRead) {
    EXPECT_TRUE(decode<Hooked>(R"({"x":5,"y":5})").hasPoint);
    EXPECT_FALSE(decode<Hooked>(R"({"x":5})").hasPoint);
}

TEST(Hooks, DoNotRunForAValueThatIsNoObject) {
    Hooked model;

    EXPECT_THROW(decode(json::Document::parse("[]"), model), json::DecodingError);

    EXPECT_EQ(model.first, 1);
    EXPECT_EQ(model.sum, 0);
}

TEST(Hooks, DoNotFinishAnObjectThatFailed) {
    Hooked model;

    EXPECT_THROW(decode(json::Document::parse(R"({"first":1,"second":"x"})"), model), json::DecodingError);

    EXPECT_EQ(model.sum, 0);
}

} // namespace quorvane
