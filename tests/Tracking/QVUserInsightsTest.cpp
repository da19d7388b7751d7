#include <chrono>

#include <gtest/gtest.h>

#include "Models/ModelTesting.h"
#include "Tracking/QVUserInsights.h"

namespace quorvane {
namespace {

using namespace std::chrono_literals;

TEST(QVUserInsights, EveryKeyIsReadAndWritten) {
    const std::string text =
        R"({"homeLocation":{"type":"HOME"},"officeLocation":{"type":"OFFICE"},"state":{"commuting":false,)"
        R"("home":true,"office":false,"traveling":false}})";

    const auto insights = json::decode<QVUserInsights>(text);

    ASSERT_TRUE(insights.homeLocation && insights.officeLocation && insights.state);
    EXPECT_EQ(insights.homeLocation->type, QVUserInsightsLocation::LocationType::HOME);
    EXPECT_EQ(insights.officeLocation->type, QVUserInsightsLocation::LocationType::OFFICE);
    EXPECT_TRUE(insights.state->home);
    EXPECT_EQ(json::encode(insights), text);
}

TEST(QVUserInsights, NewOnesHoldNothing) {
    EXPECT_EQ(json::encode(QVUserInsights()), "{}");
    EXPECT_EQ(json::encode(QVUserInsightsLocation()), "{}");
    EXPECT_EQ(json::encode(QVUserInsightsState()),
              R"({"commuting":false,"home":false,"office":false,"traveling":false})");
}

TEST(QVUserInsights, AnUnknownTypeOfLocationFailsThemAndTheMessageSaysWhere) {
    EXPECT_EQ(failureOf<QVUserInsights>(R"({"homeLocation":{"type":"home"}})"),
              "homeLocation.type: expected a location type, found \"home\"");
}

TEST(QVUserInsightsLocation, EveryKeyIsReadAndWritten) {
    const std::string text = R"({"confidence":2,"country":)" + regionText("country") + R"(,"dma":)" +
                             regionText("dma") + R"(,"postalCode":)" + regionText("postal") + R"(,"state":)" +
                             regionText("state") +
                             R"(,"location":{"latitude":46.5,"longitude":-14.25},"type":"UNKNOWN","updatedAt":10.5})";

    const auto location = json::decode<QVUserInsightsLocation>(text);

    EXPECT_EQ(location.confidence, QVUserInsightsLocation::Confidence::MEDIUM);
    ASSERT_TRUE(location.country && location.dma && location.postalCode && location.state);
    EXPECT_EQ(location.country->_id, "country");
    EXPECT_EQ(location.dma->_id, "dma");
    EXPECT_EQ(location.postalCode->_id, "postal");
    EXPECT_EQ(location.state->_id, "state");
    ASSERT_TRUE(location.location);
    EXPECT_EQ(location.location->coordinate, (platform::Coordinate{46.5, -14.25}));
    EXPECT_EQ(location.type, QVUserInsightsLocation::LocationType::UNKNOWN);
    EXPECT_EQ(location.updatedAt, std::chrono::sys_days{2001y / 1 / 1} + 10500ms);
    EXPECT_EQ(json::encode(location), text);
}

TEST(QVUserInsightsLocation, ItsPostalCodeIsNotReadFromTheKeyOfTheContext) {
    EXPECT_FALSE(json::decode<QVUserInsightsLocation>(R"({"postal_code":{}})").postalCode);
}

TEST(QVUserInsightsLocation, ADateThatIsATextFailsIt) {
    EXPECT_EQ(failureOf<QVUserInsightsLocation>(R"({"updatedAt":"today"})"),
              "updatedAt: expected a date, found \"today\"");
}

TEST(QVUserInsightsState, EveryKeyIsReadAndWritten) {
    const std::string text = R"({"commuting":true,"home":true,"office":true,"traveling":true})";

    const auto state = json::decode<QVUserInsightsState>(text);

    EXPECT_TRUE(state.commuting && state.home && state.office && state.traveling);
    EXPECT_EQ(json::encode(state), text);
}

TEST(QVUserInsightsState, EveryKeyHasItsOwnField) {
    EXPECT_TRUE(json::decode<QVUserInsightsState>(R"({"commuting":true})").commuting);
    EXPECT_TRUE(json::decode<QVUserInsightsState>(R"({"home":true})").home);
    EXPECT_TRUE(json::decode<QVUserInsightsState>(R"({"office":true})").office);
    EXPECT_TRUE(json::decode<QVUserInsightsState>(R"({"traveling":true})").traveling);
}

TEST(QVUserInsightsState, AFlagThatIsATextFailsIt) {
    EXPECT_EQ(failureOf<QVUserInsightsState>(R"({"home":"true"})"), "home: expected a boolean, found \"true\"");
}

} // namespace
} // namespace quorvane
