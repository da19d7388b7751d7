#include <limits>

#include "JSON/NumberText.h"
#include "Tracking/ExactDistance.h"
#include "Tracking/QVTrackingService.h"
#include "Tracking/TrackingTest.h"

namespace quorvane {
namespace {

using ::testing::ElementsAre;
using ::testing::IsEmpty;
using FenceList = QVTrackingService::FenceList;

class ProximityTest : public TrackingTest {
protected:
    using ProximityCalls = Calls<QVStatus, FenceList, std::shared_ptr<QVPlace>>;

    /// A place as the service sends it.
    [[nodiscard]] static std::string placeOn(const platform::Coordinate& point, const std::string& identifier) {
        return R"({"id":")" + identifier + R"(","name":"Place )" + identifier + R"(","latitude":)" +
               json::textOf(point.latitude) + R"(,"longitude":)" + json::textOf(point.longitude) + "}";
    }

    /// One that many metres north of home.
    [[nodiscard]] static std::string placeAt(double metresNorth, const std::string& identifier) {
        return placeOn(fixAt(metresNorth).coordinate, identifier);
    }

    void find(const platform::Location& location = fixAt(0)) {
        QVTrackingService::shared().getProximityInfo(location, calls.record());
        settle();
    }

    [[nodiscard]] std::vector<std::string> fences() {
        std::vector<std::string> identifiers;
        for (const auto& fence : calls.first<1>()) {
            identifiers.push_back(fence->externalId.value_or("none"));
        }
        return identifiers;
    }

    const ProximityCalls calls{};
};

TEST_F(ProximityTest, AsksForPlacesWithinFiveKilometresByOneRequest) {
    find();

    EXPECT_THAT(requestLines(), ElementsAre("GET /locations/find"));
    EXPECT_EQ(transport().requests()[0].request.url, "http://localhost:3000/locations/find?lat=46.0&lng=14.5&rad=5000");
}

TEST_F(ProximityTest, APlace299MetresAwayIsNearAndOne301MetresAwayIsNot) {
    answerPlaces("[" + placeAt(301, "far") + "," + placeAt(299, "near") + "]");

    find();

    EXPECT_EQ(calls.first<0>(), QVStatus::SUCCESS);
    EXPECT_THAT(fences(), ElementsAre("near"));
    EXPECT_EQ(calls.first<2>()->_id, "near");
}

TEST_F(ProximityTest, ExactlyThreeHundredMetresAreNear) {
    platform::Coordinate place = pointExactly(300, nearTheEquator);
    ASSERT_EQ(platform::distance(nearTheEquator, place), 300.0);
    answerPlaces("[" + placeOn(place, "p") + "]");
    find({nearTheEquator, 10});
    EXPECT_THAT(fences(), ElementsAre("p"));

    place.latitude += 1e-9;
    answerPlaces("[" + placeOn(place, "p") + "]");
    find({nearTheEquator, 10});
    EXPECT_THAT(std::get<1>(calls[1]), IsEmpty());
    EXPECT_EQ(std::get<2>(calls[1]), nullptr);
}

TEST_F(ProximityTest, TheServicesOrderIsKeptAndTheFirstPlaceIsTheUsers) {
    answerPlaces("[" + placeAt(200, "b") + "," + placeAt(20, "a") + "," + placeAt(290, "c") + "]");

    find();

    EXPECT_THAT(fences(), ElementsAre("b", "a", "c"));
    EXPECT_EQ(calls.first<2>()->_id, "b");
}

TEST_F(ProximityTest, TheHostsOwnPlacesHaveNoPartInIt) {
    const auto own = std::make_shared<QVPlace>();
    own->_id = "own";
    own->location = std::make_shared<QVAddress>();
    own->location->coordinate = fixAt(0).coordinate;
    const Calls<QVStatus, std::optional<std::vector<std::shared_ptr<QVPlace>>>> created;
    Quorvane::Places::create(own, QVStorageType::LOCAL, created.record());
    ASSERT_EQ(created.first<0>(), QVStatus::SUCCESS);

    find();

    EXPECT_THAT(fences(), IsEmpty());
}

TEST_F(ProximityTest, NoPlacesAreASuccessWithNothing) {
    find();

    ASSERT_EQ(calls.count(), 1U);
    EXPECT_EQ(calls.first<0>(), QVStatus::SUCCESS);
    EXPECT_THAT(calls.first<1>(), IsEmpty());
    EXPECT_EQ(calls.first<2>(), nullptr);
}

TEST_F(ProximityTest, AFailureIsHandedOnWithNothing) {
    for (const int status : {400, 404, 500}) {
        transport().answer("GET", "/locations/find", Answer::with(status, "[" + placeAt(0, "p") + "]"));
        find();
    }

    EXPECT_EQ(std::get<0>(calls[0]), QVStatus::ERROR_BAD_REQUEST);
    EXPECT_EQ(std::get<0>(calls[1]), QVStatus::ERROR_NOT_FOUND);
    EXPECT_EQ(std::get<0>(calls[2]), QVStatus::ERROR_SERVER);
    EXPECT_THAT(std::get<1>(calls[2]), IsEmpty());
    EXPECT_EQ(std::get<2>(calls[2]), nullptr);
}

TEST_F(ProximityTest, AnAnswerWithoutAListOrWithoutABodyIsASuccessWithNothing) {
    for (const Answer& answer : {Answer::json("{}"), Answer::json(R"({"count":3})"), Answer::with(204)}) {
        const ProximityCalls answers;
        transport().answer("GET", "/locations/find", answer);

        QVTrackingService::shared().getProximityInfo(fixAt(0), answers.record());
        settle();

        ASSERT_EQ(answers.count(), 1U);
        EXPECT_EQ(answers.first<0>(), QVStatus::SUCCESS);
        EXPECT_THAT(answers.first<1>(), IsEmpty());
        EXPECT_EQ(answers.first<2>(), nullptr);
    }
}

TEST_F(ProximityTest, AnAnswerThatIsNoListOfPlacesAndNoAnswerAtAllAreHandedOnAsWhatTheyAre) {
    transport().answer("GET", "/locations/find", Answer::json(R"([{"id":"p"}])"));
    find();
    transport().answer("GET", "/locations/find", Answer::json("<html>"));
    find();
    transport().answer("GET", "/locations/find", Answer::failure(Transport::connection));
    find();
    transport().answer("GET", "/locations/find", Answer::never());
    find();
    EXPECT_EQ(calls.count(), 3U);
    advance(10s);

    ASSERT_EQ(calls.count(), 4U);
    EXPECT_EQ(std::get<0>(calls[0]), QVStatus::ERROR_SERIALIZATION);
    EXPECT_EQ(std::get<0>(calls[1]), QVStatus::ERROR_SERIALIZATION);
    EXPECT_EQ(std::get<0>(calls[2]), QVStatus::ERROR_NETWORK);
    EXPECT_EQ(std::get<0>(calls[3]), QVStatus::ERROR_NETWORK);
    for (std::size_t i = 0; i < 4; ++i) {
        EXPECT_THAT(std::get<1>(calls[i]), IsEmpty());
        EXPECT_EQ(std::get<2>(calls[i]), nullptr);
    }
}

TEST_F(ProximityTest, WithoutAKeyTheAnswerComesAtOnceAndNothingIsSent) {
    preferences().remove("quorvane_access_key");

    QVTrackingService::shared().getProximityInfo(fixAt(0), calls.record());

    ASSERT_EQ(calls.count(), 1U);
    EXPECT_EQ(calls.first<0>(), QVStatus::ERROR_PUBLISHABLE_KEY);
    EXPECT_THAT(calls.first<1>(), IsEmpty());
    EXPECT_THAT(requestLines(), IsEmpty());
}

TEST_F(ProximityTest, APlaceWithoutAPointIsNeverNear) {
    // Neither the one that was sent without a point, which lies at zero, nor one that lies nowhere on the earth.
    answerPlaces(R"([{"id":"none"},{"id":"beyond","latitude":-180,"longitude":-180}])");

    find({{0.0001, 0.0001}, 5, 5, noon});

    EXPECT_THAT(fences(), ElementsAre("none"));
}

TEST_F(ProximityTest, APlaceBeyondTheRangeOfLongitudesIsMeasuredLikeAnyOther) {
    answerPlaces(R"([{"id":"beyond","latitude":46,"longitude":200},{"id":"far","latitude":46,"longitude":201}])");

    find({{46, 200}, 5, 5, noon});

    EXPECT_THAT(fences(), ElementsAre("beyond"));
}

TEST_F(ProximityTest, NothingIsNearALocationThatNoDistanceCanBeMeasuredTo) {
    answerPlaces(R"([{"id":"near","latitude":46,"longitude":14}])");

    find({{46, std::numeric_limits<double>::infinity()}, 5, 5, noon});

    EXPECT_THAT(fences(), IsEmpty());
}

TEST_F(ProximityTest, AFenceIsACircleOfFiveKilometresAroundThePlace) {
    QVPlace place;
    place._id = "p1";
    place.name = "Market Hall";
    place.location = std::make_shared<QVAddress>();
    place.location->coordinate = platform::Coordinate{46.0, 14.5};

    const auto fence = QVTrackingService::placeToFence(place);

    EXPECT_EQ(fence->_id, "");
    EXPECT_EQ(fence->_description, "Market Hall");
    EXPECT_EQ(fence->externalId, "p1");
    EXPECT_EQ(fence->tag, "place");
    EXPECT_EQ(fence->metadata, std::nullopt);
    const auto circle = std::dynamic_pointer_cast<QVCircleGeometry>(fence->geometry);
    ASSERT_TRUE(circle && circle->center);
    EXPECT_EQ(circle->center->coordinate, (platform::Coordinate{46.0, 14.5}));
    EXPECT_EQ(circle->radius, 5000.0);
}

TEST_F(ProximityTest, TheFenceOfAPlaceWithoutAPointHasNoCentre) {
    QVPlace nowhere;
    const auto fence = QVTrackingService::placeToFence(nowhere);
    EXPECT_EQ(std::dynamic_pointer_cast<QVCircleGeometry>(fence->geometry)->center, nullptr);

    nowhere.location = std::make_shared<QVAddress>();
    nowhere.location->coordinate.reset();
    const auto other = QVTrackingService::placeToFence(nowhere);
    EXPECT_EQ(std::dynamic_pointer_cast<QVCircleGeometry>(other->geometry)->center, nullptr);
}

} // namespace
} // namespace quorvane
