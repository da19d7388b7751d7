#include <memory>
#include <vector>

#include <gtest/gtest.h>

#include "Models/Equality.h"
#include "Models/ModelTesting.h"
#include "Models/QVCoordinate.h"

namespace quorvane {
namespace {

QVCoordinate at(double latitude, double longitude) {
    return QVCoordinate(platform::Coordinate{latitude, longitude});
}

std::shared_ptr<QVCoordinate> sharedAt(double latitude, double longitude) {
    return std::make_shared<QVCoordinate>(at(latitude, longitude));
}

TEST(QVCoordinate, LatitudeAndLongitudeMakeThePointAndAreWrittenFromIt) {
    const std::string text = R"({"latitude":46.5,"longitude":-14.25})";

    const auto coordinate = json::decode<QVCoordinate>(text);

    EXPECT_EQ(coordinate, at(46.5, -14.25));
    EXPECT_EQ(json::encode(coordinate), text);
}

TEST(QVCoordinate, OneOfTheTwoMakesNoPoint) {
    EXPECT_EQ(json::decode<QVCoordinate>(R"({"latitude":46.5})"), QVCoordinate());
    EXPECT_EQ(json::decode<QVCoordinate>(R"({"longitude":46.5})"), QVCoordinate());
    EXPECT_EQ(json::decode<QVCoordinate>(R"({"latitude":46.5,"longitude":null})"), QVCoordinate());
}

TEST(QVCoordinate, ANewOneHasNoPoint) {
    EXPECT_FALSE(QVCoordinate().coordinate);
    EXPECT_EQ(json::encode(QVCoordinate()), "{}");
}

TEST(QVCoordinate, ALatitudeThatIsNoNumberFailsIt) {
    EXPECT_EQ(failureOf<QVCoordinate>(R"({"latitude":"x","longitude":1})"), "latitude: expected a number, found \"x\"");
}

TEST(QVCoordinate, EqualityHasNoTolerance) {
    EXPECT_EQ(at(10.0, 20.0), at(10.0, 20.0));
    EXPECT_NE(at(10.0, 20.0), at(10.0, 20.000001));
    EXPECT_NE(at(10.0, 20.0), at(10.000001, 20.0));
}

TEST(QVCoordinate, TwoWithoutAPointAreEqualAndOneWithAPointDiffersFromThem) {
    EXPECT_EQ(QVCoordinate(), QVCoordinate());
    EXPECT_NE(QVCoordinate(), at(0, 0));
    EXPECT_NE(at(0, 0), QVCoordinate());
}

TEST(Equality, PointersAreComparedByTheirObjectsAndNoneEqualsNone) {
    const std::shared_ptr<QVCoordinate> none;

    EXPECT_TRUE(haveEqualObjects(sharedAt(1, 2), sharedAt(1, 2)));
    EXPECT_FALSE(haveEqualObjects(sharedAt(1, 2), sharedAt(1, 3)));
    EXPECT_FALSE(haveEqualObjects(sharedAt(1, 2), none));
    EXPECT_FALSE(haveEqualObjects(none, sharedAt(1, 2)));
    EXPECT_TRUE(haveEqualObjects(none, none));
}

TEST(Equality, ListsAreEqualWhenTheyAreOfOneLengthAndEqualElementByElement) {
    using List = std::vector<std::shared_ptr<QVCoordinate>>;
    const List both{sharedAt(1, 2), sharedAt(3, 4)};

    EXPECT_TRUE(haveEqualObjects(both, List{sharedAt(1, 2), sharedAt(3, 4)}));
    EXPECT_FALSE(haveEqualObjects(both, List{sharedAt(3, 4), sharedAt(1, 2)}));
    EXPECT_FALSE(haveEqualObjects(both, List{sharedAt(1, 2)}));
    EXPECT_TRUE(haveEqualObjects(List{}, List{}));
}

} // namespace
} // namespace quorvane
