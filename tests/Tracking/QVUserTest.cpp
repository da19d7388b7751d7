#include <gtest/gtest.h>

#include "Models/ModelTesting.h"
#include "Tracking/QVUser.h"

namespace quorvane {
namespace {

TEST(QVUser, EveryKeyIsReadAndWritten) {
    const std::string text =
        R"({"description":"A rider","id":"u1","country":)" + regionText("country") + R"(,"deviceId":"d1","dma":)" +
        regionText("dma") +
        R"(,"foreground":true,"geofences":[{"description":"","id":"g1"}],"insights":{"state":{"commuting":true,)"
        R"("home":false,"office":false,"traveling":false}},"metadata":{"a":[1,"x",true,2.5]},)"
        R"("nearbyPlaceChains":[{"name":"Acme","slug":"acme"}],"place":{"id":"p1","categories":[],"latitude":1.5,)"
        R"("longitude":2.5,"name":""},"postalCode":)" +
        regionText("postal") + R"(,"segments":[{"description":"cyclists","externalId":"s1"}],"state":)" +
        regionText("state") +
        R"(,"stopped":true,"topChains":[{"name":"Best","slug":"best"}],"userId":"host1","latitude":46.5,)"
        R"("longitude":-14.25})";

    const auto user = json::decode<QVUser>(text);

    EXPECT_EQ(user._description, "A rider");
    EXPECT_EQ(user._id, "u1");
    ASSERT_TRUE(user.country && user.dma && user.postalCode && user.state);
    EXPECT_EQ(user.country->_id, "country");
    EXPECT_EQ(user.deviceId, "d1");
    EXPECT_EQ(user.dma->_id, "dma");
    EXPECT_TRUE(user.foreground);
    ASSERT_TRUE(user.geofences && user.geofences->size() == 1);
    EXPECT_EQ(user.geofences->front()->_id, "g1");
    ASSERT_TRUE(user.insights && user.insights->state);
    EXPECT_TRUE(user.insights->state->commuting);
    EXPECT_EQ(user.metadata, (AnyCodable::Dictionary{{"a", AnyCodable::List{1, "x", true, 2.5}}}));
    ASSERT_TRUE(user.nearbyPlaceChains && user.nearbyPlaceChains->size() == 1);
    EXPECT_EQ(user.nearbyPlaceChains->front()->slug, "acme");
    ASSERT_TRUE(user.place);
    EXPECT_EQ(user.place->_id, "p1");
    EXPECT_EQ(user.postalCode->_id, "postal");
    ASSERT_TRUE(user.segments && user.segments->size() == 1);
    EXPECT_EQ(user.segments->front()->externalId, "s1");
    EXPECT_EQ(user.state->_id, "state");
    EXPECT_TRUE(user.stopped);
    ASSERT_TRUE(user.topChains && user.topChains->size() == 1);
    EXPECT_EQ(user.topChains->front()->slug, "best");
    EXPECT_EQ(user.userId, "host1");
    ASSERT_TRUE(user.location);
    EXPECT_EQ(user.location->coordinate, (platform::Coordinate{46.5, -14.25}));
    EXPECT_EQ(json::encode(user), text);
}

TEST(QVUser, ANewOneIsNobodyOnTheMove) {
    EXPECT_EQ(json::encode(QVUser()), R"({"id":"","foreground":false,"stopped":false})");
    EXPECT_EQ(recoded<QVUser>("{}"), R"({"id":"","foreground":false,"stopped":false})");
}

TEST(QVUser, LatitudeAndLongitudeMakeALocationOnlyTogether) {
    EXPECT_TRUE(json::decode<QVUser>(R"({"latitude":1,"longitude":2})").location);
    EXPECT_FALSE(json::decode<QVUser>(R"({"latitude":1})").location);
    EXPECT_FALSE(json::decode<QVUser>(R"({"longitude":2})").location);
    EXPECT_FALSE(json::decode<QVUser>(R"({"latitude":null,"longitude":2})").location);
}

TEST(QVUser, AChainWithoutATextForItsNameFailsItAndTheMessageSaysWhere) {
    EXPECT_EQ(failureOf<QVUser>(R"({"topChains":[{"name":"Acme"},{"name":1}]})"),
              "topChains[1].name: expected a text, found 1");
}

TEST(QVUser, ANullInItsMetadataFailsIt) {
    EXPECT_EQ(failureOf<QVUser>(R"({"metadata":{"a":null}})"),
              "metadata.a: the container contains nothing serializable");
}

TEST(QVSegment, EveryKeyIsReadAndWritten) {
    const auto segment = json::decode<QVSegment>(R"({"description":"cyclists","externalId":"s1"})");

    EXPECT_EQ(segment._description, "cyclists");
    EXPECT_EQ(segment.externalId, "s1");
    EXPECT_EQ(json::encode(segment), R"({"description":"cyclists","externalId":"s1"})");
}

TEST(QVSegment, ANewOneHasEmptyTexts) {
    EXPECT_EQ(json::encode(QVSegment()), R"({"description":"","externalId":""})");
}

TEST(QVSegment, AnIdentifierThatIsNoTextFailsIt) {
    EXPECT_EQ(failureOf<QVSegment>(R"({"externalId":1})"), "externalId: expected a text, found 1");
}

} // namespace
} // namespace quorvane
