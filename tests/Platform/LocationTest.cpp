#include <cmath>
#include <limits>
#include <numbers>

#include <gtest/gtest.h>

#include "Platform/Location.h"

namespace quorvane::platform {
namespace {

constexpr double radius = 6'371'008.8;

TEST(Location, ADegreeOfLatitudeIsTheSameEverywhere) {
    const double degree = radius * std::numbers::pi / 180;

    EXPECT_NEAR(distance({0, 0}, {1, 0}), degree, 1e-6);
    EXPECT_NEAR(distance({45, 120}, {46, 120}), degree, 1e-6);
    EXPECT_NEAR(distance({89, -30}, {90, -30}), degree, 1e-6);
}

TEST(Location, ADegreeOfLongitudeShrinksTowardsThePole) {
    const double degree = radius * std::numbers::pi / 180;

    EXPECT_NEAR(distance({0, 10}, {0, 11}), degree, 1e-6);
    EXPECT_NEAR(distance({60, 10}, {60, 11}), degree / 2, 5);
    EXPECT_NEAR(distance({90, 10}, {90, 100}), 0, 1e-6);
}

TEST(Location, TheDistanceToTheSamePointIsNothing) {
    EXPECT_EQ(distance({46.0569, 14.5058}, {46.0569, 14.5058}), 0);
    EXPECT_NEAR(distance({10, 180}, {10, -180}), 0, 1e-6);
}

TEST(Location, HalfTheEarthIsTheLargestDistance) {
    EXPECT_NEAR(distance({0, 0}, {0, 180}), radius * std::numbers::pi, 1e-6);
    EXPECT_NEAR(distance({90, 0}, {-90, 0}), radius * std::numbers::pi, 1e-6);
    EXPECT_NEAR(distance({30, 20}, {-30, -160}), radius * std::numbers::pi, 1);
}

TEST(Location, TheDistanceAcrossTheDateLineIsTheShortOne) {
    EXPECT_NEAR(distance({0, 179.5}, {0, -179.5}), radius * std::numbers::pi / 180, 1e-6);
}

TEST(Location, AMetreIsMeasuredToTheMillimetre) {
    const double metre = 180 / (std::numbers::pi * radius);

    EXPECT_NEAR(distance({46, 14}, {46 + metre, 14}), 1, 1e-3);
}

TEST(Location, TheDistanceIsTheSameInBothDirections) {
    const Coordinate ljubljana{46.0569, 14.5058};
    const Coordinate cerknica{45.7963, 14.3639};

    EXPECT_EQ(distance(ljubljana, cerknica), distance(cerknica, ljubljana));
    EXPECT_NEAR(distance(ljubljana, cerknica), 30'980, 100);
    EXPECT_EQ((Location{.coordinate = ljubljana}.distance(Location{.coordinate = cerknica})),
              distance(ljubljana, cerknica));
}

TEST(Location, TheDistanceFromAnInvalidCoordinateIsFinite) {
    const double far = std::numeric_limits<double>::max();
    for (const Coordinate& other :
         {Coordinate{0, 0}, Coordinate::invalid, Coordinate{500, -1000}, Coordinate{far, far}, Coordinate{-far, 0}}) {
        EXPECT_TRUE(std::isfinite(distance(Coordinate::invalid, other))) << other.latitude << " " << other.longitude;
        EXPECT_TRUE(std::isfinite(distance(other, {far, -far}))) << other.latitude << " " << other.longitude;
    }
}

TEST(Location, ACoordinateIsValidUpToTheEdgesOfTheMap) {
    EXPECT_TRUE((Coordinate{90, 180}.isValid()));
    EXPECT_TRUE((Coordinate{-90, -180}.isValid()));
    EXPECT_FALSE((Coordinate{90.0000001, 0}.isValid()));
    EXPECT_FALSE((Coordinate{0, -180.0000001}.isValid()));
    EXPECT_FALSE((Coordinate{std::nan(""), 0}.isValid()));
    EXPECT_FALSE((Coordinate{0, std::nan("")}.isValid()));
    EXPECT_FALSE(Coordinate::invalid.isValid());
}

} // namespace
} // namespace quorvane::platform
