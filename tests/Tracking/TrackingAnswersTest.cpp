#include <gtest/gtest.h>

#include "Models/ModelTesting.h"
#include "Tracking/QVContext.h"
#include "Tracking/QVTrackingResponse.h"

namespace quorvane {
namespace {

TEST(QVContext, EveryKeyIsReadAndWritten) {
    const std::string text = R"({"country":)" + regionText("country") + R"(,"dma":)" + regionText("dma") +
                             R"(,"postal_code":)" + regionText("postal") + R"(,"state":)" + regionText("state") +
                             R"(,"place":{"id":"p1","categories":[],"latitude":1.5,"longitude":2.5,"name":""},)"
                             R"("geofences":[{"description":"","id":"g1"}]})";

    const auto context = json::decode<QVContext>(text);

    ASSERT_TRUE(context.country && context.dma && context.postalCode && context.state);
    EXPECT_EQ(context.country->_id, "country");
    EXPECT_EQ(context.dma->_id, "dma");
    EXPECT_EQ(context.postalCode->_id, "postal");
    EXPECT_EQ(context.state->_id, "state");
    ASSERT_TRUE(context.place);
    EXPECT_EQ(context.place->_id, "p1");
    ASSERT_EQ(context.geofences.size(), 1U);
    EXPECT_EQ(context.geofences[0]->_id, "g1");
    EXPECT_EQ(json::encode(context), text);
}

TEST(QVContext, ItsPostalCodeIsReadFromTheKeyWithTheUnderlineOnly) {
    EXPECT_FALSE(json::decode<QVContext>(R"({"postalCode":{}})").postalCode);
    EXPECT_TRUE(json::decode<QVContext>(R"({"postal_code":{}})").postalCode);
}

TEST(QVContext, ANewOneHasNoGeofencesAndNothingElse) {
    EXPECT_EQ(json::encode(QVContext()), R"({"geofences":[]})");
    EXPECT_EQ(recoded<QVContext>("{}"), R"({"geofences":[]})");
}

TEST(QVContext, GeofencesThatAreNoListFailIt) {
    EXPECT_EQ(failureOf<QVContext>(R"({"geofences":{}})"), "geofences: expected a list, found an object");
}

TEST(QVTrackingResponse, EveryKeyIsReadAndWritten) {
    const std::string text =
        R"({"events":[{"id":"e1","confidence":0,"duration":0.0,"live":false,"type":17,"verification":1}],)"
        R"("user":{"id":"u1","foreground":false,"stopped":true}})";

    const auto response = json::decode<QVTrackingResponse>(text);

    ASSERT_EQ(response.events.size(), 1U);
    EXPECT_EQ(response.events[0]->type, QVEvent::EventType::USER_STARTED_TRAVELING);
    EXPECT_EQ(response.events[0]->verification, QVEvent::Verification::ACCEPT);
    ASSERT_TRUE(response.user);
    EXPECT_EQ(response.user->_id, "u1");
    EXPECT_EQ(json::encode(response), text);
}

TEST(QVTrackingResponse, ANewOneHasNoEventsAndNoUser) {
    EXPECT_EQ(json::encode(QVTrackingResponse()), R"({"events":[]})");
}

TEST(QVTrackingResponse, AnEventOfNoTypeFailsItAndTheMessageSaysWhere) {
    EXPECT_EQ(failureOf<QVTrackingResponse>(R"({"events":[{},{"type":20}]})"),
              "events[1].type: expected an event type, found 20");
}

} // namespace
} // namespace quorvane
