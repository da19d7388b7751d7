#include <algorithm>
#include <set>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "JSON/JSON.h"
#include "Places/QVPlace.h"
#include "Tasks/QVTask.h"
#include "sandbox/Seed.h"
#include "sandbox/SeedText.h"

namespace quorvane::sandbox::test {
namespace {

using platform::Coordinate;
using ::testing::UnorderedElementsAre;

const Coordinate home{.latitude = 46.05, .longitude = 14.5};

std::vector<std::string> bodies(const SeedData& data) {
    std::vector<std::string> all;
    for (const StoredPlace& place : data.places) {
        all.push_back(place.body);
    }
    for (const StoredTask& task : data.tasks) {
        all.push_back(task.body);
    }
    return all;
}

/// A way of so many points, each 100 m north of the one before.
std::vector<Coordinate> way(int points) {
    std::vector<Coordinate> all;
    for (int i = 0; i < points; ++i) {
        all.push_back({.latitude = home.latitude + i * 0.0009, .longitude = home.longitude});
    }
    return all;
}

double distanceToNearest(const Coordinate& point, const std::vector<Coordinate>& others) {
    double least = platform::distance(point, others.front());
    for (const Coordinate& other : others) {
        least = std::min(least, platform::distance(point, other));
    }
    return least;
}

TEST(Seed, TheSameSeedMakesTheSameData) {
    EXPECT_EQ(bodies(makeSeedData(7, {home})), bodies(makeSeedData(7, {home})));
    EXPECT_EQ(seedName(7, way(30)), seedName(7, way(30)));
}

TEST(Seed, AnotherSeedOrPlaceMakesOtherData) {
    const auto data = bodies(makeSeedData(7, {home}));
    EXPECT_NE(data, bodies(makeSeedData(8, {home})));
    EXPECT_NE(data, bodies(makeSeedData(7, {{.latitude = 46.1, .longitude = 14.5}})));
    EXPECT_NE(seedName(7, {home}), seedName(8, {home}));
    EXPECT_NE(seedName(7, {home}), seedName(7, way(30)));
}

TEST(Seed, TheDataStayWhatTheyAre) {
    // With every compiler and library: a demonstration that looks other than before was meant to.
    const SeedData data = makeSeedData(1, {home});
    ASSERT_EQ(data.places.size(), 60U);
    EXPECT_EQ(data.places.front().body,
              R"({"address1":"70 Heron Walk","city":"Eastmere","country":"QV","latitude":46.050055,)"
              R"("longitude":14.500089,"state":"Lowland","zipCode":"84637","id":"place-00001",)"
              R"("key":"pk-00001","name":"Larkmere Grocers Eastmere","active":true,"categories":["grocery",)"
              R"("shop"],"group":"food","clientKey":"larkmere-grocers",)"
              R"("owners":{"client":"larkmere-grocers"},"dragonId":"D-90303787",)"
              R"("chain":{"name":"Larkmere Grocers","slug":"larkmere-grocers",)"
              R"("externalId":"ext-larkmere-grocers","metadata":{"branches":263,"isFranchise":true}},)"
              R"("clientReference":"branch 1"})");
}

TEST(Seed, PlacesStandWithinThreeKilometresOfAPoint) {
    const SeedData data = makeSeedData(1, {home});
    EXPECT_EQ(data.places.size(), 60U);
    for (const StoredPlace& place : data.places) {
        EXPECT_LE(platform::distance(place.coordinate, home), 3001);
    }
}

TEST(Seed, PlacesFollowATrack) {
    const auto track = way(400);
    const SeedData data = makeSeedData(1, track);

    EXPECT_GE(data.places.size(), 300U);
    std::vector<Coordinate> places;
    for (const StoredPlace& place : data.places) {
        places.push_back(place.coordinate);
        EXPECT_LE(distanceToNearest(place.coordinate, track), 601);
    }
    for (const Coordinate& point : track) {
        EXPECT_LE(distanceToNearest(point, places), 550);
    }
}

TEST(Seed, ALongTrackMakesABoundedNumberOfPlaces) {
    EXPECT_LE(makeSeedData(1, way(40'000)).places.size(), 2000U);
}

TEST(Seed, PlacesAtTheEdgesOfTheMapStayOnIt) {
    for (const Coordinate& corner : {Coordinate{90, 180}, Coordinate{-90, -180}, Coordinate{0, 180}}) {
        for (const StoredPlace& place : makeSeedData(1, {corner}).places) {
            EXPECT_TRUE(place.coordinate.isValid());
        }
    }
}

TEST(Seed, EveryPlaceAndTaskIsWhatTheModelsRead) {
    const SeedData data = makeSeedData(1, way(100));
    for (const StoredPlace& stored : data.places) {
        const auto place = json::decode<QVPlace>(stored.body);
        EXPECT_NE(place._id, "");
        EXPECT_NE(place.name, "");
        EXPECT_EQ(place.location->coordinate, stored.coordinate);
        EXPECT_TRUE(place.location->postalCode);
        EXPECT_FALSE(place.categories.empty());
    }
    for (const StoredTask& stored : data.tasks) {
        const auto task = json::decode<QVTask>(stored.body);
        EXPECT_EQ(task.location->coordinate, stored.coordinate);
        EXPECT_EQ(task.owners->campaign, stored.campaign);
        EXPECT_EQ(task.locationKey, stored.placeKey);
        EXPECT_GE(task.questions.size(), 3U);
        EXPECT_EQ(task.nextQuestion, task.questions.front()->key);
        for (std::size_t i = 1; i < task.questions.size(); ++i) {
            EXPECT_EQ(task.questions[i]->parentKey, task.questions[i - 1]->key);
        }
    }
}

TEST(Seed, TheTasksHaveEveryKindOfQuestionAndPhoto) {
    std::set<QVQuestion::QuestionType> types;
    std::set<QVPhotoCaptureOptions::LevelType> levels;
    std::set<QVPhotoCaptureOptions::OverlayType> overlays;
    std::set<bool> needsPhoto;
    std::set<std::size_t> rewards;
    bool hasDraw = false;
    bool hasOverride = false;
    bool hasRequirements = false;
    for (const StoredTask& stored : makeSeedData(1, {home}).tasks) {
        const auto task = json::decode<QVTask>(stored.body);
        rewards.insert(task.rewards.size());
        hasOverride = hasOverride || task.claimDistanceOverride;
        hasRequirements = hasRequirements || !task.taskRequirements.empty();
        for (const auto& reward : task.rewards) {
            hasDraw = hasDraw || reward->isRandomDraw == true;
        }
        for (const auto& question : task.questions) {
            types.insert(question->type);
            if (question->photoCaptureOptions) {
                levels.insert(question->photoCaptureOptions->photoLevelType);
                overlays.insert(question->photoCaptureOptions->photoOverlayType);
                needsPhoto.insert(question->photoCaptureOptions->mustProvidePhoto);
            }
        }
    }
    using Type = QVQuestion::QuestionType;
    EXPECT_THAT(types, UnorderedElementsAre(Type::barcodeScan, Type::date, Type::multipleAnswers,
                                            Type::numericOpenEnded, Type::openEnded, Type::ratingScale,
                                            Type::ratingScaleWithText, Type::singleAnswer, Type::time));
    EXPECT_EQ(levels.size(), 3U);
    EXPECT_EQ(overlays.size(), 6U);
    EXPECT_EQ(needsPhoto.size(), 2U);
    EXPECT_THAT(rewards, UnorderedElementsAre(0U, 1U, 2U));
    EXPECT_TRUE(hasDraw && hasOverride && hasRequirements);
}

TEST(SeedText, WritesJSON) {
    ObjectText object{{"a", 1}, {"b", "x\"\n\\é"}, {"c", 2.0}, {"d", true}, {"e", ListText{1, "y"}}};
    object["a"] = ObjectText{};
    object["f"];
    EXPECT_EQ(object.text(), R"({"a":{},"b":"x\"\n\\é","c":2.0,"d":true,"e":[1,"y"],"f":null})");
}

} // namespace
} // namespace quorvane::sandbox::test
