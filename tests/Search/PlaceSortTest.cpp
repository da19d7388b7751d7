#include <limits>
#include <random>

#include <gmock/gmock.h>

#include "Search/PlaceSort.h"
#include "support/NaivePlaceSort.h"

namespace quorvane {
namespace {

using ::testing::ElementsAre;

const platform::Location origin{{46.05, 14.5}};

std::shared_ptr<QVPlace> placeWithout(const std::string& name) {
    auto place = std::make_shared<QVPlace>();
    place->name = name;
    return place;
}

std::shared_ptr<QVPlace> placeAt(const std::string& name, std::optional<platform::Coordinate> coordinate) {
    auto place = placeWithout(name);
    place->location = std::make_shared<QVAddress>();
    place->location->coordinate = coordinate;
    return place;
}

/// A place that many metres north of the origin, or south of it.
std::shared_ptr<QVPlace> placeNorth(const std::string& name, double metres) {
    return placeAt(name,
                   platform::Coordinate{origin.coordinate.latitude + metres / 111'195.0, origin.coordinate.longitude});
}

std::vector<std::string> sortedNames(PlaceList places) {
    sortByDistance(places, origin);
    std::vector<std::string> names;
    for (const auto& place : places) {
        names.push_back(place->name);
    }
    return names;
}

TEST(PlaceSort, NearerPlacesComeFirst) {
    EXPECT_THAT(sortedNames({placeNorth("300", 300), placeNorth("100", 100)}), ElementsAre("100", "300"));
    EXPECT_THAT(sortedNames({placeNorth("c", 30), placeNorth("a", -10), placeNorth("d", -40), placeNorth("b", 20)}),
                ElementsAre("a", "b", "c", "d"));
}

TEST(PlaceSort, PlacesAtTheSameDistanceKeepTheirOrder) {
    EXPECT_THAT(sortedNames({placeNorth("first", 100), placeNorth("second", 100), placeNorth("near", 5),
                             placeNorth("third", 100)}),
                ElementsAre("near", "first", "second", "third"));
}

TEST(PlaceSort, ShortListsStayAsTheyAre) {
    EXPECT_THAT(sortedNames({}), ElementsAre());
    EXPECT_THAT(sortedNames({placeWithout("only")}), ElementsAre("only"));
}

TEST(PlaceSort, APlaceWithoutACoordinateIsMovedAheadOfNone) {
    EXPECT_THAT(sortedNames({placeNorth("far", 900), placeAt("nowhere", std::nullopt)}), ElementsAre("far", "nowhere"));
    EXPECT_THAT(sortedNames({placeNorth("far", 900), placeWithout("homeless")}), ElementsAre("far", "homeless"));
    EXPECT_THAT(sortedNames({placeWithout("homeless"), placeNorth("far", 900)}), ElementsAre("homeless", "far"));
}

TEST(PlaceSort, APlaceWithoutACoordinateHoldsBackNearerOnesBehindIt) {
    // Halves (far, nowhere) and (near, nearer): the second is merged behind "nowhere" except where it meets "far".
    EXPECT_THAT(sortedNames({placeNorth("far", 900), placeAt("nowhere", std::nullopt), placeNorth("near", 20),
                             placeNorth("nearer", 10)}),
                ElementsAre("nearer", "near", "far", "nowhere"));
    EXPECT_THAT(sortedNames({placeAt("nowhere", std::nullopt), placeNorth("far", 900), placeNorth("near", 20),
                             placeNorth("nearer", 10)}),
                ElementsAre("nowhere", "nearer", "near", "far"));
    EXPECT_THAT(sortedNames({placeNorth("3", 3), placeAt("nowhere", std::nullopt), placeNorth("1", 1)}),
                ElementsAre("3", "nowhere", "1"));
}

TEST(PlaceSort, AnInvalidCoordinateIsACoordinate) {
    EXPECT_THAT(sortedNames({placeAt("invalid", platform::Coordinate::invalid), placeNorth("far", 900)}),
                ElementsAre("far", "invalid"));
}

TEST(PlaceSort, PointersStayTheSameObjects) {
    PlaceList places{placeNorth("b", 2), placeNorth("a", 1)};
    const PlaceList before = places;

    sortByDistance(places, origin);

    EXPECT_THAT(places, ElementsAre(before[1], before[0]));
}

TEST(PlaceSort, AMissingPlaceIsOneWithoutACoordinate) {
    PlaceList places{nullptr, placeNorth("b", 2), placeNorth("a", 1)};

    sortByDistance(places, origin);

    ASSERT_EQ(places.size(), 3U);
    EXPECT_EQ(places[0], nullptr);
    EXPECT_EQ(places[1]->name, "a");
}

/// Lists of every kind: ties, twins, missing locations and coordinates, coordinates that are invalid or no numbers.
class RandomPlaces {
public:
    explicit RandomPlaces(std::uint64_t seed) : random(seed) {}

    [[nodiscard]] PlaceList list() {
        const std::size_t size = pick(4) == 0 ? pick(400) : pick(24);
        const std::uint64_t oddities = pick(8);
        PlaceList places;
        for (std::size_t i = 0; i < size; ++i) {
            places.push_back(place(std::to_string(i), oddities));
        }
        return places;
    }

    [[nodiscard]] platform::Location location() {
        static constexpr double none = std::numeric_limits<double>::quiet_NaN();
        switch (pick(12)) {
            case 0:
                return {{none, none}};
            case 1:
                return {platform::Coordinate::invalid};
            case 2:
                return {{90, 0}};
            default:
                return origin;
        }
    }

private:
    std::uint64_t pick(std::uint64_t choices) { return random() % choices; }

    std::shared_ptr<QVPlace> place(const std::string& name, std::uint64_t oddities) {
        static constexpr double none = std::numeric_limits<double>::quiet_NaN();
        static constexpr double infinity = std::numeric_limits<double>::infinity();
        switch (pick(10) < oddities ? pick(7) : 7) {
            case 0:
                return placeWithout(name);
            case 1:
                return placeAt(name, std::nullopt);
            case 2:
                return placeAt(name, platform::Coordinate::invalid);
            case 3:
                return placeAt(name, platform::Coordinate{none, 14.5});
            case 4:
                return placeAt(name, platform::Coordinate{46.05, infinity});
            case 5:
                return placeAt(name, platform::Coordinate{1000.0, -4000.0});
            case 6:
                return placeAt(name, origin.coordinate);
            default:
                // Few distances, so that many places tie.
                return placeNorth(name, static_cast<double>(pick(12)) * 25.0);
        }
    }

    std::mt19937_64 random;
};

TEST(PlaceSort, EveryListComesOutAsTheMergeSortThatItIsDefinedByLeavesIt) {
    for (std::uint64_t seed = 0; seed < 3000; ++seed) {
        RandomPlaces random(seed);
        const PlaceList places = random.list();
        const platform::Location where = random.location();

        PlaceList sorted = places;
        sortByDistance(sorted, where);

        ASSERT_EQ(sorted, naivelySorted(places, where)) << "seed " << seed << ", " << places.size() << " places";
    }
}

} // namespace
} // namespace quorvane
