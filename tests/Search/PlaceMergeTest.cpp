#include "Places/QVPlaceService.h"
#include "Search/QVSearchService.h"
#include "support/APITest.h"

namespace quorvane {
namespace {

using namespace std::chrono_literals;

/// The host's own places among those of the service.
class PlaceMergeTest : public APITest {
protected:
    using Found = Calls<QVStatus, std::optional<platform::Location>, std::optional<QVPlaceList>>;

    PlaceMergeTest() { storeTokens(3600); }

    static void keep(const std::string& identifier, std::optional<double> latitude) {
        const auto place = std::make_shared<QVPlace>();
        place->_id = identifier;
        place->location = std::make_shared<QVAddress>();
        place->location->coordinate = latitude ? std::optional(platform::Coordinate{*latitude, 14.5}) : std::nullopt;
        Calls<QVStatus, std::optional<json::Dictionary>, std::optional<QVPlaceList>> kept;
        QVPlaceService::shared().create({place}, QVStorageType::LOCAL, kept.record());
        EXPECT_EQ(kept.first<0>(), QVStatus::SUCCESS);
    }

    void answer(const std::string& places) {
        transport().answer("GET", "/locations/find", Answer::json(R"({"count":1,"data":[)" + places + "]}"));
    }

    [[nodiscard]] Found search(int radius = 1000) {
        Found found;
        QVSearchService::shared().places(here, radius, std::nullopt, std::nullopt, std::nullopt, 10, found.record());
        phone->runUntilIdle();
        return found;
    }

    [[nodiscard]] std::vector<std::string> identifiersFound(int radius = 1000) {
        const Found found = search(radius);
        EXPECT_EQ(found.first<0>(), QVStatus::SUCCESS);
        EXPECT_EQ(found.first<1>(), here);
        std::vector<std::string> identifiers;
        for (const auto& place : found.first<2>().value()) {
            identifiers.push_back(place->_id);
        }
        return identifiers;
    }

    using Identifiers = std::vector<std::string>;
    const platform::Location here{{46.0, 14.5}, 5, 3, quorvane::testing::SimulatedClock::start};
};

TEST_F(PlaceMergeTest, PlacesOfTheHostsOwnStandAmongTheServicesByDistance) {
    answer(R"({"id":"far","latitude":46.004,"longitude":14.5},{"id":"near","latitude":46.001,"longitude":14.5})");
    keep("farthest", 46.005);
    keep("middle", 46.002);

    EXPECT_EQ(identifiersFound(), (Identifiers{"near", "middle", "far", "farthest"}));
}

TEST_F(PlaceMergeTest, AtEqualDistanceTheServicesPlacesStandFirst) {
    keep("own", 46.001);
    answer(R"({"id":"one","latitude":46.001,"longitude":14.5},{"id":"two","latitude":46.001,"longitude":14.5})");

    EXPECT_EQ(identifiersFound(), (Identifiers{"one", "two", "own"}));
}

TEST_F(PlaceMergeTest, OnlyTheHostsPlacesWithinTheRadiusAreThere) {
    answer(R"({"id":"beyond the radius but the service's","latitude":46.5,"longitude":14.5})");
    keep("beyond", 46.01);
    keep("within", 46.001);
    keep("nowhere", std::nullopt);

    EXPECT_EQ(identifiersFound(1000), (Identifiers{"within", "beyond the radius but the service's"}));
    EXPECT_EQ(identifiersFound(2000), (Identifiers{"within", "beyond", "beyond the radius but the service's"}));
}

TEST_F(PlaceMergeTest, WithoutAPlaceOfTheServiceTheHostsOwnAreFound) {
    answer("");
    keep("own", 46.001);

    EXPECT_EQ(identifiersFound(), Identifiers{"own"});
}

TEST_F(PlaceMergeTest, AnIdentifierThatBothHaveIsThereTwice) {
    answer(R"({"id":"p1","latitude":46.002,"longitude":14.5})");
    keep("p1", 46.001);

    EXPECT_EQ(identifiersFound(), (Identifiers{"p1", "p1"}));
}

TEST_F(PlaceMergeTest, AFailedSearchHasNoListWhateverIsStored) {
    transport().answer("GET", "/locations/find", Answer::with(500));
    keep("own", 46.001);

    const Found found = search();

    ASSERT_EQ(found.count(), 1U);
    EXPECT_NE(found.first<0>(), QVStatus::SUCCESS);
    EXPECT_EQ(found.first<2>(), std::nullopt);
}

TEST_F(PlaceMergeTest, ASuccessWithoutABodyHasNoListWhateverIsStored) {
    transport().answer("GET", "/locations/find", Answer::with(204));
    keep("own", 46.001);

    const Found found = search();

    ASSERT_EQ(found.count(), 1U);
    EXPECT_EQ(found.first<0>(), QVStatus::SUCCESS);
    EXPECT_EQ(found.first<2>(), std::nullopt);
}

TEST_F(PlaceMergeTest, ASearchIsNeverAnsweredWhenTheStoreCannotBeRead) {
    setLogLevel(QVLogLevel::ERROR);
    storeTokens(100 * 3600);
    answer(R"({"id":"one","latitude":46.001,"longitude":14.5})");
    keep("own", 46.001);
    phone->advance(12h);

    EXPECT_EQ(search().count(), 0U);

    EXPECT_EQ(messages(), std::vector<std::string>{"error: No such file or directory"});
    EXPECT_EQ(identifiersFound(), Identifiers{"one"}) << "the expired place is forgotten, the next search answers";
}

TEST_F(PlaceMergeTest, ThePlacesOfAnEarlierRunAreNotFound) {
    answer(R"({"id":"one","latitude":46.002,"longitude":14.5})");
    keep("own", 46.001);

    phone.relaunch();
    api().setEndpoints(QVEndpoints(Environment::LOCAL));
    answer(R"({"id":"one","latitude":46.002,"longitude":14.5})");

    EXPECT_EQ(identifiersFound(), Identifiers{"one"});
}

} // namespace
} // namespace quorvane
