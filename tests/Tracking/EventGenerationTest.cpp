#include <gmock/gmock.h>

#include "JSON/JSON.h"
#include "Tracking/QVTrackingService.h"
#include "Tracking/TrackingTest.h"

namespace quorvane {
namespace {

using ::testing::ElementsAre;
using ::testing::IsEmpty;
using FenceList = QVTrackingService::FenceList;
using Type = QVEvent::EventType;
using PlacePointer = std::shared_ptr<QVPlace>;

PlacePointer place(const std::string& identifier, std::optional<platform::Coordinate> coordinate) {
    auto made = std::make_shared<QVPlace>();
    made->_id = identifier;
    made->location = std::make_shared<QVAddress>();
    made->location->coordinate = coordinate;
    return made;
}

FenceList fencesOf(const std::vector<PlacePointer>& places) {
    FenceList fences;
    for (const PlacePointer& one : places) {
        fences.push_back(QVTrackingService::placeToFence(*one));
    }
    return fences;
}

/// Syncs, and what they find has changed.
class EventGenerationTest : public TrackingTest {
protected:
    [[nodiscard]] static QVTrackingService& service() { return QVTrackingService::shared(); }

    /// A sync that succeeds with these places near by.
    void sync(bool isStopped, const std::vector<PlacePointer>& places) {
        std::string list;
        for (const PlacePointer& one : places) {
            list += (list.empty() ? "" : ",") + json::encode(*one);
        }
        answerPlaces("[" + list + "]");
        service().track(fixAt(0), isStopped, Source::BACKGROUND_LOCATION, false, [](QVStatus, const auto&) {});
        settle();
    }

    [[nodiscard]] static QVTrackingService::EventList events(bool isStopped, const std::vector<PlacePointer>& places) {
        return service().getEvents(fixAt(7), isStopped, fencesOf(places), places.empty() ? nullptr : places.front());
    }

    [[nodiscard]] static std::vector<Type> types(const QVTrackingService::EventList& list) {
        std::vector<Type> result;
        for (const auto& event : list) {
            result.push_back(event->type);
        }
        return result;
    }

    const PlacePointer market = place("market", platform::Coordinate{46.0001, 14.5});
    const PlacePointer station = place("station", platform::Coordinate{46.0002, 14.5});
};

TEST_F(EventGenerationTest, AtFirstTheUserTravelsAndIsNowhere) {
    EXPECT_THAT(events(false, {}), IsEmpty());
    EXPECT_THAT(types(events(true, {})), ElementsAre(Type::USER_STOPPED_TRAVELING));
}

TEST_F(EventGenerationTest, StoppingAndSettingOutAreEventsAndStayingIsNone) {
    sync(true, {});

    EXPECT_THAT(events(true, {}), IsEmpty());
    EXPECT_THAT(types(events(false, {})), ElementsAre(Type::USER_STARTED_TRAVELING));
}

TEST_F(EventGenerationTest, APlaceThatWasNotThereIsEnteredAndItsFenceToo) {
    const auto list = events(false, {market});

    EXPECT_THAT(types(list), ElementsAre(Type::USER_ENTERED_PLACE, Type::USER_ENTERED_GEOFENCE));
    for (const auto& event : list) {
        EXPECT_EQ(event->location, fixAt(7));
        EXPECT_EQ(event->place, market);
    }
    EXPECT_EQ(list[0]->geofence, nullptr);
    EXPECT_EQ(list[1]->geofence->externalId, "market");
}

TEST_F(EventGenerationTest, APlaceThatIsGoneIsExitedWithoutAPlaceAndItsFenceToo) {
    sync(false, {market});

    const auto list = events(false, {});

    EXPECT_THAT(types(list), ElementsAre(Type::USER_EXITED_PLACE, Type::USER_EXITED_GEOFENCE));
    EXPECT_EQ(list[0]->place, nullptr);
    EXPECT_EQ(list[1]->place, nullptr);
    EXPECT_EQ(list[1]->geofence->externalId, "market");
}

TEST_F(EventGenerationTest, FromOnePlaceToAnotherIsEnteredThenExitedBothWithTheNewPlace) {
    sync(false, {market});

    const auto list = events(false, {station});

    EXPECT_THAT(types(list), ElementsAre(Type::USER_ENTERED_PLACE, Type::USER_EXITED_PLACE, Type::USER_EXITED_GEOFENCE,
                                         Type::USER_ENTERED_GEOFENCE));
    for (const auto& event : list) {
        EXPECT_EQ(event->place, station);
    }
    EXPECT_EQ(list[2]->geofence->externalId, "market");
    EXPECT_EQ(list[3]->geofence->externalId, "station");
}

TEST_F(EventGenerationTest, TheSamePlaceAgainIsNoEvent) {
    sync(false, {market});

    EXPECT_THAT(events(false, {market}), IsEmpty());
}

TEST_F(EventGenerationTest, AnotherPlaceAtTheSamePointIsTheSamePlaceWithAnotherFence) {
    const PlacePointer kiosk = place("kiosk", market->location->coordinate);
    sync(false, {market});

    const auto list = events(false, {kiosk});

    EXPECT_THAT(types(list), ElementsAre(Type::USER_EXITED_GEOFENCE, Type::USER_ENTERED_GEOFENCE));
    EXPECT_EQ(list[0]->geofence->externalId, "market");
    EXPECT_EQ(list[1]->geofence->externalId, "kiosk");
    EXPECT_EQ(list[0]->place, kiosk);
}

TEST_F(EventGenerationTest, ASecondPlaceThereIsAPlaceTheSameButAFenceMore) {
    sync(false, {market});

    const auto list = events(false, {market, station});

    EXPECT_THAT(types(list), ElementsAre(Type::USER_ENTERED_GEOFENCE));
    EXPECT_EQ(list[0]->geofence->externalId, "market");
}

TEST_F(EventGenerationTest, AFenceLessIsAnExitOfTheFirstOldOne) {
    sync(false, {station, market});

    const auto list = events(false, {station});

    EXPECT_THAT(types(list), ElementsAre(Type::USER_EXITED_GEOFENCE));
    EXPECT_EQ(list[0]->geofence->externalId, "station");
    EXPECT_EQ(list[0]->place, station);
}

TEST_F(EventGenerationTest, TravelComesFirstThenThePlaceThenTheGeofence) {
    EXPECT_THAT(types(events(true, {market})),
                ElementsAre(Type::USER_STOPPED_TRAVELING, Type::USER_ENTERED_PLACE, Type::USER_ENTERED_GEOFENCE));
}

TEST_F(EventGenerationTest, AskingForEventsRemembersNothing) {
    EXPECT_EQ(events(true, {market}).size(), 3U);
    EXPECT_EQ(events(true, {market}).size(), 3U);
}

TEST(ArePlacesEqual, PlacesAreTheSameByTheirCoordinateAlone) {
    const auto equal = &QVTrackingService::arePlacesEqual;
    const platform::Coordinate here{46.0, 14.5};

    EXPECT_TRUE(equal(place("a", here), place("b", here)));
    EXPECT_FALSE(equal(place("a", here), place("a", platform::Coordinate{46.0, 14.500001})));
    EXPECT_FALSE(equal(place("a", here), place("a", platform::Coordinate{46.0000001, 14.5})));
}

TEST(ArePlacesEqual, NoneEqualsNoneOnly) {
    const auto equal = &QVTrackingService::arePlacesEqual;
    const platform::Coordinate here{46.0, 14.5};
    const auto unaddressed = std::make_shared<QVPlace>();

    EXPECT_TRUE(equal(nullptr, nullptr));
    EXPECT_FALSE(equal(nullptr, place("a", here)));
    EXPECT_FALSE(equal(place("a", here), nullptr));
    EXPECT_TRUE(equal(place("a", std::nullopt), place("b", std::nullopt)));
    EXPECT_TRUE(equal(unaddressed, place("b", std::nullopt)));
    EXPECT_FALSE(equal(place("a", std::nullopt), place("a", here)));
    EXPECT_FALSE(equal(place("a", here), unaddressed));
}

TEST(AreFencesEqual, FencesAreEqualInDescriptionTagExternalIdentifierAndGeometry) {
    const platform::Coordinate here{46.0, 14.5};
    const FenceList one = fencesOf({place("a", here)});
    const auto changed = [&](auto change) {
        FenceList list = fencesOf({place("a", here)});
        change(*list[0]);
        return QVTrackingService::areFencesEqual(one, list);
    };
    const auto circle = [](QVGeofence& fence) -> QVCircleGeometry& {
        return dynamic_cast<QVCircleGeometry&>(*fence.geometry);
    };

    EXPECT_TRUE(changed([](QVGeofence&) {}));
    EXPECT_TRUE(changed([](QVGeofence& fence) { fence._id = "other"; }));
    EXPECT_TRUE(changed([](QVGeofence& fence) { fence.metadata = AnyCodable::Dictionary{{"a", 1}}; }));
    EXPECT_FALSE(changed([](QVGeofence& fence) { fence._description = "other"; }));
    EXPECT_FALSE(changed([](QVGeofence& fence) { fence.tag = "other"; }));
    EXPECT_FALSE(changed([](QVGeofence& fence) { fence.tag.reset(); }));
    EXPECT_FALSE(changed([](QVGeofence& fence) { fence.externalId = "b"; }));
    EXPECT_FALSE(changed([&](QVGeofence& fence) { circle(fence).radius = 5000.5; }));
    EXPECT_FALSE(changed([&](QVGeofence& fence) { circle(fence).center->coordinate->latitude = 46.0000001; }));
    EXPECT_FALSE(changed([&](QVGeofence& fence) { circle(fence).center = nullptr; }));
    EXPECT_FALSE(changed([](QVGeofence& fence) { fence.geometry = nullptr; }));
    EXPECT_FALSE(changed([](QVGeofence& fence) { fence.geometry = std::make_shared<QVGeofenceGeometry>(); }));
    EXPECT_FALSE(changed([](QVGeofence& fence) { fence.geometry = std::make_shared<QVPolygonGeometry>(); }));
}

TEST(AreFencesEqual, ListsAreEqualIndexByIndex) {
    const platform::Coordinate here{46.0, 14.5};
    const auto equal = &QVTrackingService::areFencesEqual;
    const FenceList ab = fencesOf({place("a", here), place("b", here)});
    const FenceList ba = fencesOf({place("b", here), place("a", here)});

    EXPECT_TRUE(equal({}, {}));
    EXPECT_TRUE(equal({nullptr}, {nullptr}));
    EXPECT_FALSE(equal({nullptr}, fencesOf({place("a", here)})));
    EXPECT_FALSE(equal(ab, ba));
    EXPECT_FALSE(equal(ab, fencesOf({place("a", here)})));
    EXPECT_TRUE(equal(ab, fencesOf({place("a", here), place("b", here)})));
}

TEST(AreFencesEqual, PolygonsAndShapelessFencesHaveAGeometryToo) {
    const auto equal = &QVTrackingService::areFencesEqual;
    const auto polygon = [](std::vector<platform::Coordinate> corners) {
        const auto fence = std::make_shared<QVGeofence>("", "");
        const auto geometry = std::make_shared<QVPolygonGeometry>();
        geometry->coordinates.emplace();
        for (const platform::Coordinate& corner : corners) {
            geometry->coordinates->push_back(std::make_shared<QVCoordinate>(corner));
        }
        fence->geometry = geometry;
        return FenceList{fence};
    };
    const auto shapeless = [](std::shared_ptr<QVGeofenceGeometry> geometry) {
        const auto fence = std::make_shared<QVGeofence>("", "");
        fence->geometry = std::move(geometry);
        return FenceList{fence};
    };
    const auto base = [] { return std::make_shared<QVGeofenceGeometry>(); };
    const auto bare = [] { return std::make_shared<QVPolygonGeometry>(); };

    EXPECT_TRUE(equal(polygon({{1, 2}, {3, 4}}), polygon({{1, 2}, {3, 4}})));
    EXPECT_FALSE(equal(polygon({{1, 2}, {3, 4}}), polygon({{3, 4}, {1, 2}})));
    EXPECT_FALSE(equal(polygon({}), shapeless(bare())));
    EXPECT_TRUE(equal(shapeless(bare()), shapeless(bare())));
    EXPECT_TRUE(equal(shapeless(base()), shapeless(base())));
    EXPECT_TRUE(equal(shapeless(nullptr), shapeless(nullptr)));
    EXPECT_FALSE(equal(shapeless(base()), shapeless(nullptr)));
    EXPECT_FALSE(equal(shapeless(base()), polygon({})));
}

} // namespace
} // namespace quorvane
