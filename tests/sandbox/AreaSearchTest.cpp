#include <memory>
#include <utility>
#include <variant>

#include <gtest/gtest.h>

#include "sandbox/AreaSearch.h"
#include "sandbox/Chance.h"
#include "sandbox/PlaceStore.h"

namespace quorvane::sandbox::test {
namespace {

using platform::Coordinate;

class AreaSearch : public ::testing::Test {
protected:
    AreaSearch() : database(std::get<0>(Database::open(""))), store(*database) {}

    void fill(const std::vector<Coordinate>& coordinates) {
        all = coordinates;
        std::vector<StoredPlace> places;
        for (std::size_t i = 0; i < all.size(); ++i) {
            places.push_back({.number = static_cast<std::int64_t>(i), .coordinate = all[i], .body = std::to_string(i)});
        }
        store.replace(places, {}, "test");
    }

    /// Compares the search with one that measures every distance.
    std::size_t expectExact(const Circle& circle) {
        std::vector<std::string> expected;
        for (std::size_t i = 0; i < all.size(); ++i) {
            const double distance = platform::distance(circle.center, all[i]);
            if (distance <= circle.radius && (!circle.minimum || distance > *circle.minimum)) {
                expected.push_back(std::to_string(i));
            }
        }
        EXPECT_EQ(store.places(circle), expected)
            << circle.center.latitude << ", " << circle.center.longitude << ": " << circle.radius;
        return expected.size();
    }

    std::unique_ptr<Database> database;
    PlaceStore store;
    std::vector<Coordinate> all;
};

std::vector<Coordinate> scatter(Chance& chance, int count, const Coordinate& center, double degrees) {
    std::vector<Coordinate> points;
    for (int i = 0; i < count; ++i) {
        points.push_back(
            {.latitude = center.latitude + degrees * (2 * chance.fraction() - 1),
             .longitude = std::remainder(center.longitude + degrees * (2 * chance.fraction() - 1), 360.0)});
    }
    return points;
}

TEST_F(AreaSearch, FindsWhatMeasuringEveryDistanceFinds) {
    Chance chance(7);
    const Coordinate home{.latitude = 46.05, .longitude = 14.5};
    fill(scatter(chance, 2000, home, 0.05));
    std::size_t found = 0;
    for (int i = 0; i < 200; ++i) {
        const double radius = chance.fraction() * 5000;
        found += expectExact({.center = scatter(chance, 1, home, 0.05).front(),
                              .radius = radius,
                              .minimum = chance.oneIn(2) ? std::optional(radius * chance.fraction()) : std::nullopt});
    }
    EXPECT_GT(found, 10'000U);
}

TEST_F(AreaSearch, FindsAcrossTheDateLine) {
    Chance chance(8);
    const Coordinate line{.latitude = -17, .longitude = 180};
    fill(scatter(chance, 1000, line, 1));
    std::size_t found = 0;
    for (int i = 0; i < 100; ++i) {
        found += expectExact({.center = scatter(chance, 1, line, 1).front(), .radius = chance.fraction() * 100'000});
    }
    EXPECT_GT(found, 1000U);
    EXPECT_EQ(areasAround({.latitude = 0, .longitude = 179.9}, 50'000).size(), 2U);
    EXPECT_EQ(areasAround({.latitude = 0, .longitude = -179.9}, 50'000).size(), 2U);
    EXPECT_EQ(areasAround({.latitude = 0, .longitude = 0}, 50'000).size(), 1U);
}

TEST_F(AreaSearch, FindsAroundThePoles) {
    Chance chance(9);
    std::vector<Coordinate> points;
    for (int i = 0; i < 1000; ++i) {
        const double latitude = 90 - chance.fraction() * 3;
        points.push_back(
            {.latitude = chance.oneIn(2) ? latitude : -latitude, .longitude = 360 * chance.fraction() - 180});
    }
    fill(points);
    std::size_t found = 0;
    for (int i = 0; i < 100; ++i) {
        found += expectExact({.center = points[static_cast<std::size_t>(i)], .radius = chance.fraction() * 400'000});
    }
    EXPECT_GT(found, 1000U);
    expectExact({.center = {.latitude = 90, .longitude = 0}, .radius = 300'000});
}

TEST_F(AreaSearch, TheWholeEarthIsWithinHalfItsCircumference) {
    Chance chance(10);
    std::vector<Coordinate> points;
    for (int i = 0; i < 300; ++i) {
        points.push_back({.latitude = 180 * chance.fraction() - 90, .longitude = 360 * chance.fraction() - 180});
    }
    fill(points);
    EXPECT_EQ(expectExact({.center = {.latitude = 12, .longitude = 34}, .radius = 20'100'000}), 300U);
    expectExact({.center = {.latitude = 12, .longitude = 34}, .radius = 9'000'000});
    expectExact({.center = {.latitude = 0, .longitude = 0}, .radius = 10'007'557, .minimum = 5'000'000});
}

TEST_F(AreaSearch, ARadiusOfZeroFindsThePointItself) {
    fill({{.latitude = 46.05, .longitude = 14.5}, {.latitude = 46.050001, .longitude = 14.5}});
    EXPECT_EQ(expectExact({.center = all.front(), .radius = 0}), 1U);
    EXPECT_EQ(expectExact({.center = all.front(), .radius = 0, .minimum = 0}), 0U);
    EXPECT_EQ(expectExact({.center = all.front(), .radius = 1, .minimum = 0}), 1U);
}

} // namespace
} // namespace quorvane::sandbox::test
