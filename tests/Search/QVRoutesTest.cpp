#include <gtest/gtest.h>

#include "Models/ModelTesting.h"
#include "Search/QVRoutes.h"

namespace quorvane {
namespace {

TEST(QVRoutes, EveryKeyIsReadAndWritten) {
    const std::string text =
        R"({"bike":{"distance":{"text":"3 km","value":3000.5},"duration":{"text":"10 min","value":600.25}},)"
        R"("car":{"distance":{"text":"4 km","value":4000.5}},"foot":{"duration":{"text":"1 h","value":3600.5}},)"
        R"("geodesic":{"text":"2 km","value":2000.5},"transit":{}})";

    const auto routes = json::decode<QVRoutes>(text);

    ASSERT_TRUE(routes.bike && routes.bike->distance && routes.bike->duration);
    EXPECT_EQ(routes.bike->distance->text, "3 km");
    EXPECT_EQ(routes.bike->distance->value, 3000.5);
    EXPECT_EQ(routes.bike->duration->text, "10 min");
    EXPECT_EQ(routes.bike->duration->value, 600.25);
    ASSERT_TRUE(routes.car && routes.car->distance);
    EXPECT_EQ(routes.car->distance->value, 4000.5);
    ASSERT_TRUE(routes.foot && routes.foot->duration);
    EXPECT_EQ(routes.foot->duration->value, 3600.5);
    ASSERT_TRUE(routes.geodesic);
    EXPECT_EQ(routes.geodesic->text, "2 km");
    ASSERT_TRUE(routes.transit);
    EXPECT_FALSE(routes.transit->distance || routes.transit->duration);
    EXPECT_EQ(json::encode(routes), text);
}

TEST(QVRoutes, NewOnesLeadNowhere) {
    EXPECT_EQ(json::encode(QVRoutes()), "{}");
    EXPECT_EQ(json::encode(QVRoute()), "{}");
    EXPECT_EQ(json::encode(QVRouteDistance()), R"({"text":"","value":0.0})");
    EXPECT_EQ(json::encode(QVRouteDuration()), R"({"text":"","value":0.0})");
}

TEST(QVRoutes, OnlyTheStraightLineLeavesEveryModeAbsent) {
    const auto routes = json::decode<QVRoutes>(R"({"geodesic":{"text":"2 km","value":2}})");

    EXPECT_TRUE(routes.geodesic);
    EXPECT_FALSE(routes.bike || routes.car || routes.foot || routes.transit);
}

TEST(QVRoutes, ALengthThatIsNoNumberFailsThemAndTheMessageSaysWhere) {
    EXPECT_EQ(failureOf<QVRoutes>(R"({"car":{"distance":{"value":"4 km"}}})"),
              "car.distance.value: expected a number, found \"4 km\"");
}

} // namespace
} // namespace quorvane
