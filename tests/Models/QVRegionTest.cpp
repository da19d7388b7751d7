#include <gtest/gtest.h>

#include "Models/ModelTesting.h"
#include "Models/QVRegion.h"

namespace quorvane {
namespace {

TEST(QVRegion, EveryKeyIsReadAndWritten) {
    const std::string text = R"({"id":"r1","code":"SI","flag":"si.png","name":"Slovenia","type":"country"})";

    const auto region = json::decode<QVRegion>(text);

    EXPECT_EQ(region._id, "r1");
    EXPECT_EQ(region.code, "SI");
    EXPECT_EQ(region.flag, "si.png");
    EXPECT_EQ(region.name, "Slovenia");
    EXPECT_EQ(region.type, "country");
    EXPECT_EQ(json::encode(region), text);
}

TEST(QVRegion, ANewOneHasEmptyTextsAndNoFlag) {
    const QVRegion region;

    EXPECT_EQ(region._id + region.code + region.name + region.type, "");
    EXPECT_FALSE(region.flag);
    EXPECT_EQ(recoded<QVRegion>("{}"), R"({"id":"","code":"","name":"","type":""})");
}

TEST(QVRegion, ANameThatIsNoTextFailsIt) {
    EXPECT_EQ(failureOf<QVRegion>(R"({"name":null})"), "name: expected a text, found null");
}

} // namespace
} // namespace quorvane
