#include <memory>

#include <gtest/gtest.h>

#include "Models/Equality.h"
#include "Models/ModelTesting.h"
#include "Models/QVGeofence.h"

namespace quorvane {
namespace {

std::shared_ptr<QVCoordinate> centre(double latitude, double longitude) {
    return std::make_shared<QVCoordinate>(platform::Coordinate{latitude, longitude});
}

std::shared_ptr<QVCircleGeometry> circle() {
    auto geometry = std::make_shared<QVCircleGeometry>();
    geometry->center = centre(1.5, 2.5);
    geometry->radius = 5000.5;
    return geometry;
}

TEST(QVGeofence, EveryKeyIsReadAndWritten) {
    const std::string text =
        R"({"description":"Corner shop","id":"g1","externalId":"x1","geometry":{},"metadata":{"floors":2},)"
        R"("tag":"place"})";

    const auto geofence = json::decode<QVGeofence>(text);

    EXPECT_EQ(geofence._description, "Corner shop");
    EXPECT_EQ(geofence._id, "g1");
    EXPECT_EQ(geofence.externalId, "x1");
    EXPECT_TRUE(geofence.geometry);
    EXPECT_EQ(geofence.metadata, (AnyCodable::Dictionary{{"floors", 2}}));
    EXPECT_EQ(geofence.tag, "place");
    EXPECT_EQ(json::encode(geofence), text);
}

TEST(QVGeofence, ANewOneHasEmptyTextsAndNothingElse) {
    const QVGeofence geofence;

    EXPECT_EQ(geofence._id + geofence._description, "");
    EXPECT_FALSE(geofence.externalId || geofence.geometry || geofence.metadata || geofence.tag);
    EXPECT_EQ(recoded<QVGeofence>("{}"), R"({"description":"","id":""})");
}

TEST(QVGeofence, ItIsMadeOfAnIdentifierAndADescription) {
    const QVGeofence geofence("g1", "Corner shop");

    EXPECT_EQ(geofence._id, "g1");
    EXPECT_EQ(geofence._description, "Corner shop");
}

TEST(QVGeofence, ACircleInJSONIsDecodedAsAnEmptyGeometry) {
    const auto geofence =
        json::decode<QVGeofence>(R"({"id":"g1","geometry":{"center":{"latitude":1.5,"longitude":2.5},"radius":100}})");

    ASSERT_TRUE(geofence.geometry);
    EXPECT_FALSE(std::dynamic_pointer_cast<QVCircleGeometry>(geofence.geometry));
    EXPECT_EQ(json::encode(*geofence.geometry), "{}");
}

TEST(QVGeofence, WhateverStandsForTheGeometryIsDecodedAsAnEmptyGeometry) {
    for (const char* const value : {R"("circle")", "[1]", "7", "true", R"({"radius":"wide"})"}) {
        EXPECT_EQ(recoded<QVGeofence>(std::string(R"({"geometry":)") + value + "}"),
                  R"({"description":"","id":"","geometry":{}})")
            << value;
    }
}

TEST(QVGeofence, ANullGeometryIsNone) {
    EXPECT_FALSE(json::decode<QVGeofence>(R"({"geometry":null})").geometry);
}

TEST(QVGeofence, ACircleIsEncodedAsACircle) {
    QVGeofence geofence("g1", "");
    geofence.geometry = circle();

    EXPECT_EQ(json::encode(geofence),
              R"({"description":"","id":"g1","geometry":{"center":{"latitude":1.5,"longitude":2.5},"radius":5000.5}})");
}

TEST(QVGeofence, APolygonIsEncodedAsAPolygon) {
    auto polygon = std::make_shared<QVPolygonGeometry>();
    polygon->coordinates.emplace({centre(1.5, 2.5), centre(3.5, 4.5)});
    QVGeofence geofence("g1", "");
    geofence.geometry = polygon;

    EXPECT_EQ(json::encode(geofence),
              R"({"description":"","id":"g1","geometry":)"
              R"({"coordinates":[{"latitude":1.5,"longitude":2.5},{"latitude":3.5,"longitude":4.5}]}})");
}

TEST(QVGeofence, ANullInItsMetadataFailsIt) {
    EXPECT_EQ(failureOf<QVGeofence>(R"({"metadata":{"a":[1,null]}})"),
              "metadata.a[1]: the container contains nothing serializable");
}

TEST(QVCircleGeometry, EveryKeyIsReadAndWritten) {
    const std::string text = R"({"center":{"latitude":1.5,"longitude":2.5},"radius":5000.5})";

    const auto geometry = json::decode<QVCircleGeometry>(text);

    EXPECT_TRUE(haveEqualObjects(geometry.center, centre(1.5, 2.5)));
    EXPECT_EQ(geometry.radius, 5000.5);
    EXPECT_EQ(json::encode(geometry), text);
}

TEST(QVCircleGeometry, ANewOneHasNoCentreAndNoRadius) {
    EXPECT_FALSE(QVCircleGeometry().center);
    EXPECT_EQ(QVCircleGeometry().radius, 0);
}

TEST(QVCircleGeometry, ARadiusThatIsNoNumberFailsIt) {
    EXPECT_EQ(failureOf<QVCircleGeometry>(R"({"radius":true})"), "radius: expected a number, found true");
}

TEST(QVPolygonGeometry, EveryKeyIsReadAndWrittenInTheOrderOfTheRing) {
    const std::string text = R"({"coordinates":[{"latitude":1.5,"longitude":2.5},{"latitude":3.5,"longitude":4.5}]})";

    const auto geometry = json::decode<QVPolygonGeometry>(text);

    ASSERT_TRUE(geometry.coordinates);
    EXPECT_TRUE(haveEqualObjects(*geometry.coordinates, {centre(1.5, 2.5), centre(3.5, 4.5)}));
    EXPECT_EQ(json::encode(geometry), text);
}

TEST(QVPolygonGeometry, ANewOneHasNoCorners) {
    EXPECT_FALSE(QVPolygonGeometry().coordinates);
}

TEST(QVPolygonGeometry, AHoleAmongItsCornersFailsIt) {
    EXPECT_EQ(failureOf<QVPolygonGeometry>(R"({"coordinates":[{},null]})"),
              "coordinates[1]: expected an object, found null");
}

} // namespace
} // namespace quorvane
