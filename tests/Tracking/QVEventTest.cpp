#include <chrono>
#include <memory>

#include <gtest/gtest.h>

#include "Models/ModelTesting.h"
#include "Tracking/QVEvent.h"

namespace quorvane {
namespace {

using namespace std::chrono_literals;

constexpr json::Date beginningOf2001 = std::chrono::sys_days{2001y / 1 / 1};

TEST(QVEvent, EveryKeyIsReadAndWritten) {
    const std::string text =
        R"({"id":"e1","actualCreatedAt":10.5,"confidence":3,"createdAt":20.25,"duration":90.1,)"
        R"("geofence":{"description":"","id":"g1"},"live":true,"latitude":46.5,"longitude":-14.25,)"
        R"("region":{"id":"r1","code":"","name":"","type":""},"type":4,"verification":-1})";

    const auto event = json::decode<QVEvent>(text);

    EXPECT_EQ(event._id, "e1");
    EXPECT_EQ(event.actualCreatedAt, beginningOf2001 + 10500ms);
    EXPECT_EQ(event.confidence, QVEvent::Confidence::HIGH);
    EXPECT_EQ(event.createdAt, beginningOf2001 + 20250ms);
    EXPECT_EQ(event.duration, 90.1F);
    ASSERT_TRUE(event.geofence);
    EXPECT_EQ(event.geofence->_id, "g1");
    EXPECT_TRUE(event.live);
    ASSERT_TRUE(event.location);
    EXPECT_EQ(event.location->coordinate, (platform::Coordinate{46.5, -14.25}));
    ASSERT_TRUE(event.region);
    EXPECT_EQ(event.region->_id, "r1");
    EXPECT_EQ(event.type, QVEvent::EventType::USER_ENTERED_PLACE);
    EXPECT_EQ(event.verification, QVEvent::Verification::REJECT);
    EXPECT_EQ(json::encode(event), text);
}

TEST(QVEvent, ANewOneIsUnknownAndUnverified) {
    const std::string empty = R"({"id":"","confidence":0,"duration":0.0,"live":false,"type":0,"verification":0})";

    EXPECT_EQ(json::encode(QVEvent()), empty);
    EXPECT_EQ(recoded<QVEvent>("{}"), empty);
}

TEST(QVEvent, TheVerificationDescends) {
    EXPECT_EQ(json::fromRawValue<QVEvent::Verification>(1), QVEvent::Verification::ACCEPT);
    EXPECT_EQ(json::fromRawValue<QVEvent::Verification>(0), QVEvent::Verification::UNVERIFY);
    EXPECT_EQ(json::fromRawValue<QVEvent::Verification>(-1), QVEvent::Verification::REJECT);
    EXPECT_FALSE(json::fromRawValue<QVEvent::Verification>(2));
    EXPECT_FALSE(json::fromRawValue<QVEvent::Verification>(-2));
}

TEST(QVEvent, AVerificationOfMinusTwoFailsIt) {
    EXPECT_EQ(failureOf<QVEvent>(R"({"verification":-2})"), "verification: expected a verification, found -2");
}

TEST(QVEvent, ATypeOfTwentyFailsIt) {
    EXPECT_EQ(failureOf<QVEvent>(R"({"type":20})"), "type: expected an event type, found 20");
    EXPECT_EQ(json::decode<QVEvent>(R"({"type":19})").type, QVEvent::EventType::USER_STOPPED_TRAVELING);
}

TEST(QVEvent, TheTypesAreNumberedInTheirOrder) {
    using EventType = QVEvent::EventType;

    EXPECT_EQ(static_cast<int>(EventType::UNKNOWN), 0);
    EXPECT_EQ(static_cast<int>(EventType::USER_ENTERED_GEOFENCE), 1);
    EXPECT_EQ(static_cast<int>(EventType::USER_ENTERED_HOME), 2);
    EXPECT_EQ(static_cast<int>(EventType::USER_ENTERED_OFFICE), 3);
    EXPECT_EQ(static_cast<int>(EventType::USER_ENTERED_PLACE), 4);
    EXPECT_EQ(static_cast<int>(EventType::USER_ENTERED_REGION_COUNTRY), 5);
    EXPECT_EQ(static_cast<int>(EventType::USER_ENTERED_REGION_DMA), 6);
    EXPECT_EQ(static_cast<int>(EventType::USER_ENTERED_REGION_STATE), 7);
    EXPECT_EQ(static_cast<int>(EventType::USER_EXITED_GEOFENCE), 8);
    EXPECT_EQ(static_cast<int>(EventType::USER_EXITED_HOME), 9);
    EXPECT_EQ(static_cast<int>(EventType::USER_EXITED_OFFICE), 10);
    EXPECT_EQ(static_cast<int>(EventType::USER_EXITED_PLACE), 11);
    EXPECT_EQ(static_cast<int>(EventType::USER_EXITED_REGION_COUNTRY), 12);
    EXPECT_EQ(static_cast<int>(EventType::USER_EXITED_REGION_DMA), 13);
    EXPECT_EQ(static_cast<int>(EventType::USER_EXITED_REGION_STATE), 14);
    EXPECT_EQ(static_cast<int>(EventType::USER_NEARBY_PLACE_CHAIN), 15);
    EXPECT_EQ(static_cast<int>(EventType::USER_STARTED_COMMUTING), 16);
    EXPECT_EQ(static_cast<int>(EventType::USER_STARTED_TRAVELING), 17);
    EXPECT_EQ(static_cast<int>(EventType::USER_STOPPED_COMMUTING), 18);
    EXPECT_EQ(static_cast<int>(EventType::USER_STOPPED_TRAVELING), 19);
}

TEST(QVEvent, AConfidenceOfFourIsNoCase) {
    EXPECT_EQ(json::fromRawValue<QVEvent::Confidence>(3), QVEvent::Confidence::HIGH);
    EXPECT_FALSE(json::fromRawValue<QVEvent::Confidence>(4));
}

TEST(QVEvent, ThePlacesOfAnEventAreLostInItsEncoding) {
    QVEvent event;
    event.place = std::make_shared<QVPlace>();
    event.verifiedPlace = event.place;
    event.alternatePlaces.emplace({event.place});

    const auto text = json::encode(event);
    const auto decoded = json::decode<QVEvent>(text);

    EXPECT_EQ(text, json::encode(QVEvent()));
    EXPECT_FALSE(decoded.place || decoded.verifiedPlace || decoded.alternatePlaces);
}

TEST(QVEvent, AMissingLongitudeLeavesTheLocationAbsent) {
    EXPECT_FALSE(json::decode<QVEvent>(R"({"latitude":46.5})").location);
    EXPECT_FALSE(json::decode<QVEvent>(R"({"location":{"latitude":46.5,"longitude":14.5}})").location);
}

TEST(QVEvent, ALatitudeThatIsNoNumberFailsIt) {
    EXPECT_EQ(failureOf<QVEvent>(R"({"latitude":[],"longitude":1})"), "latitude: expected a number, found a list");
}

TEST(QVEvent, ADurationBeyondAFloatFailsIt) {
    EXPECT_EQ(failureOf<QVEvent>(R"({"duration":1e300})"), "duration: expected a number, found 1e+300");
}

} // namespace
} // namespace quorvane
