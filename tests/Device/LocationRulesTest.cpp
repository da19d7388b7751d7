#include <limits>

#include "Device/QVUtils.h"
#include "support/SimulatedTest.h"

namespace quorvane {
namespace {

constexpr double infinity = std::numeric_limits<double>::infinity();
const double nan = std::numeric_limits<double>::quiet_NaN();

bool isValid(double latitude, double longitude, double accuracy = 5) {
    return QVUtils::isValidLocation(platform::Location{{latitude, longitude}, accuracy});
}

TEST(ValidLocation, NoLocationIsNotValid) {
    EXPECT_FALSE(QVUtils::isValidLocation(std::nullopt));
}

TEST(ValidLocation, ALocationOfADeviceIsValid) {
    EXPECT_TRUE(isValid(46.05, 14.5));
    EXPECT_TRUE(isValid(-33.9, -70.6));
    EXPECT_TRUE(isValid(1e-9, -1e-9));
}

TEST(ValidLocation, LatitudeZeroAndLongitudeZeroAreNot) {
    EXPECT_FALSE(isValid(0, 14.5));
    EXPECT_FALSE(isValid(46.05, 0));
    EXPECT_FALSE(isValid(-0.0, 14.5));
}

TEST(ValidLocation, ThePolesThemselvesAreNot) {
    EXPECT_FALSE(isValid(90, 14.5));
    EXPECT_FALSE(isValid(-90, 14.5));
    EXPECT_TRUE(isValid(89.9999, 14.5));
    EXPECT_TRUE(isValid(-89.9999, 14.5));
    EXPECT_FALSE(isValid(200, 14.5));
}

TEST(ValidLocation, LongitudesBelowMinus180AreNotAndThoseAbove180Are) {
    EXPECT_FALSE(isValid(46.05, -180));
    EXPECT_FALSE(isValid(46.05, -200));
    EXPECT_TRUE(isValid(46.05, -179.9999));
    EXPECT_TRUE(isValid(46.05, 180));
    EXPECT_TRUE(isValid(46.05, 200));
}

TEST(ValidLocation, AHorizontalAccuracyThatIsNotPositiveIsNot) {
    EXPECT_FALSE(isValid(46.05, 14.5, 0));
    EXPECT_FALSE(isValid(46.05, 14.5, -1));
    EXPECT_TRUE(isValid(46.05, 14.5, 0.001));
    EXPECT_TRUE(isValid(46.05, 14.5, 1e6));
}

TEST(ValidLocation, WhatIsNoNumberIsNot) {
    EXPECT_FALSE(isValid(nan, 14.5));
    EXPECT_FALSE(isValid(46.05, nan));
    EXPECT_FALSE(isValid(46.05, 14.5, nan));
    EXPECT_FALSE(isValid(infinity, 14.5));
    EXPECT_FALSE(isValid(46.05, -infinity));
}

class LocationRecordTest : public SimulatedTest {
protected:
    const platform::Location here{
        {46.1, 14.5000001}, 12.5, -3.25, quorvane::testing::SimulatedClock::start + std::chrono::nanoseconds(7)};
};

TEST_F(LocationRecordTest, HasItsFiveKeysAndReadsBackToTheLastBit) {
    const AnyCodable::Dictionary record = QVUtils::fromLocation(here);

    EXPECT_EQ(record.size(), 5U);
    EXPECT_EQ(record.at("latitude"), AnyCodable(46.1));
    EXPECT_EQ(record.at("longitude"), AnyCodable(14.5000001));
    EXPECT_EQ(record.at("horizontalAccuracy"), AnyCodable(12.5));
    EXPECT_EQ(record.at("verticalAccuracy"), AnyCodable(-3.25));
    EXPECT_EQ(record.at("timestamp"), AnyCodable(std::int64_t{1772366400000000007}));
    EXPECT_EQ(QVUtils::toLocation(record), here);
}

TEST_F(LocationRecordTest, WithoutARecordThereIsNoLocation) {
    EXPECT_EQ(QVUtils::toLocation(std::nullopt), std::nullopt);
    EXPECT_EQ(QVUtils::toLocation(AnyCodable::Dictionary()), std::nullopt);
}

TEST_F(LocationRecordTest, WithoutAnyOneOfItsKeysOrWithAnotherKindThereIsNoLocation) {
    for (const char* const key : {"latitude", "longitude", "horizontalAccuracy", "verticalAccuracy", "timestamp"}) {
        AnyCodable::Dictionary record = QVUtils::fromLocation(here);
        record[key] = "text";
        EXPECT_EQ(QVUtils::toLocation(record), std::nullopt) << key;
        record.erase(key);
        EXPECT_EQ(QVUtils::toLocation(record), std::nullopt) << key;
    }
}

TEST_F(LocationRecordTest, OtherKeysAreNoObstacle) {
    AnyCodable::Dictionary record = QVUtils::fromLocation(here);
    record["speed"] = 3.0;

    EXPECT_EQ(QVUtils::toLocation(record), here);
}

TEST_F(LocationRecordTest, AccuraciesThatAreNoNumbersAreStoredAsTheLargestAndAsNotKnown) {
    platform::Location odd = here;
    odd.horizontalAccuracy = infinity;
    odd.verticalAccuracy = nan;
    preferences().setDictionary("place", QVUtils::fromLocation(odd));

    const auto read = QVUtils::toLocation(preferences().dictionary("place"));

    ASSERT_TRUE(read);
    EXPECT_EQ(read->horizontalAccuracy, std::numeric_limits<double>::max());
    EXPECT_EQ(read->verticalAccuracy, -1);
}

TEST_F(LocationRecordTest, AnInfiniteLongitudeIsValidAndIsStoredAsTheLargest) {
    platform::Location odd = here;
    odd.coordinate.longitude = infinity;
    ASSERT_TRUE(QVUtils::isValidLocation(odd));
    preferences().setDictionary("place", QVUtils::fromLocation(odd));

    const auto read = QVUtils::toLocation(preferences().dictionary("place"));

    ASSERT_TRUE(read);
    EXPECT_EQ(read->coordinate.longitude, std::numeric_limits<double>::max());
    EXPECT_TRUE(QVUtils::isValidLocation(read));
}

class BackgroundModeTest : public SimulatedTest {
protected:
    [[nodiscard]] bool modeWith(const AnyCodable::Dictionary& information) {
        phone->application().setInformationDictionary(information);
        return QVUtils::getLocationBackgroundMode();
    }
};

TEST_F(BackgroundModeTest, IsOnWhereTheApplicationListsLocation) {
    EXPECT_TRUE(modeWith({{"UIBackgroundModes", AnyCodable::List{"location"}}}));
    EXPECT_TRUE(modeWith({{"UIBackgroundModes", AnyCodable::List{"fetch", "location", "audio"}}}));
}

TEST_F(BackgroundModeTest, IsOffWhereItDoesNot) {
    EXPECT_FALSE(modeWith({}));
    EXPECT_FALSE(modeWith({{"UIBackgroundModes", AnyCodable::List{}}}));
    EXPECT_FALSE(modeWith({{"UIBackgroundModes", AnyCodable::List{"fetch", "Location"}}}));
    EXPECT_FALSE(modeWith({{"BackgroundModes", AnyCodable::List{"location"}}}));
}

TEST_F(BackgroundModeTest, IsOffWhereTheEntryIsNoListOfTexts) {
    EXPECT_FALSE(modeWith({{"UIBackgroundModes", "location"}}));
    EXPECT_FALSE(modeWith({{"UIBackgroundModes", AnyCodable::List{"location", 3}}}));
    EXPECT_FALSE(modeWith({{"UIBackgroundModes", true}}));
}

} // namespace
} // namespace quorvane
