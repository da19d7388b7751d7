#include <gtest/gtest.h>

#include "Models/ModelTesting.h"
#include "Places/QVAddress.h"

namespace quorvane {
namespace {

TEST(QVAddress, EveryKeyIsReadAndWritten) {
    const std::string text =
        R"({"address1":"1 Main St","address2":"Suite 4","city":"Town","confidence":2,"latitude":46.5,)"
        R"("longitude":-14.25,"country":"US","formattedAddress":"1 Main St Suite 4 Town, CA 90000 US",)"
        R"("geofenceRadius":75.5,"name":"Corner shop","number":"1","phoneNumber":"555","zipCode":"90000",)"
        R"("state":"CA","borough":"West","countryCode":"USA","countryFlag":"us.png","county":"Lake",)"
        R"("neighborhood":"Hill","placeLabel":"shop","stateCode":"06"})";

    const auto address = json::decode<QVAddress>(text);

    EXPECT_EQ(address.address1, "1 Main St");
    EXPECT_EQ(address.address2, "Suite 4");
    EXPECT_EQ(address.city, "Town");
    EXPECT_EQ(address.confidence, QVAddress::Confidence::INTERPOLATED);
    EXPECT_EQ(address.coordinate, (platform::Coordinate{46.5, -14.25}));
    EXPECT_EQ(address.country, "US");
    EXPECT_EQ(address.formattedAddress, "1 Main St Suite 4 Town, CA 90000 US");
    EXPECT_EQ(address.geofenceRadius, 75.5);
    EXPECT_EQ(address.name, "Corner shop");
    EXPECT_EQ(address.number, "1");
    EXPECT_EQ(address.phoneNumber, "555");
    EXPECT_EQ(address.postalCode, "90000");
    EXPECT_EQ(address.state, "CA");
    EXPECT_EQ(address.borough, "West");
    EXPECT_EQ(address.countryCode, "USA");
    EXPECT_EQ(address.countryFlag, "us.png");
    EXPECT_EQ(address.county, "Lake");
    EXPECT_EQ(address.neighborhood, "Hill");
    EXPECT_EQ(address.placeLabel, "shop");
    EXPECT_EQ(address.stateCode, "06");
    EXPECT_EQ(json::encode(address), text);
}

TEST(QVAddress, ANewOneHasNoTextsAndLiesAtZeroZero) {
    const QVAddress address;

    EXPECT_EQ(address.confidence, QVAddress::Confidence::NONE);
    EXPECT_EQ(address.coordinate, (platform::Coordinate{0, 0}));
    EXPECT_FALSE(address.geofenceRadius);
    EXPECT_FALSE(address.formattedAddress);
    EXPECT_EQ(json::encode(address), R"({"confidence":0,"latitude":0.0,"longitude":0.0})");
}

TEST(QVAddress, OneDecodedFromAnEmptyObjectLiesAtTheInvalidCoordinateAndHasAText) {
    const auto address = json::decode<QVAddress>("{}");

    EXPECT_EQ(address.coordinate, platform::Coordinate::invalid);
    EXPECT_EQ(address.formattedAddress, " ,   ");
    EXPECT_EQ(address.confidence, QVAddress::Confidence::NONE);
}

TEST(QVAddress, ALatitudeWithoutALongitudeLeavesItAtTheInvalidCoordinate) {
    for (const char* const text : {R"({"latitude":46.5})", R"({"longitude":46.5})",
                                   R"({"latitude":46.5,"longitude":"x"})", R"({"latitude":null,"longitude":46.5})"}) {
        EXPECT_EQ(json::decode<QVAddress>(text).coordinate, platform::Coordinate::invalid) << text;
    }
}

TEST(QVAddress, ThePostalCodeIsReadFromZipCodeOnly) {
    EXPECT_EQ(json::decode<QVAddress>(R"({"zipCode":"12345"})").postalCode, "12345");
    EXPECT_FALSE(json::decode<QVAddress>(R"({"postalCode":"12345"})").postalCode);
}

TEST(QVAddress, TheTextThatWasSentIsReplacedByTheOneMadeOfItsParts) {
    EXPECT_EQ(json::decode<QVAddress>(
                  R"({"formattedAddress":"X","address1":"1 Main St","city":"Town","state":"CA","zipCode":"90000",)"
                  R"("country":"US"})")
                  .formattedAddress,
              "1 Main St Town, CA 90000 US");
}

TEST(QVAddress, TheSecondLineFollowsTheFirstInItsText) {
    EXPECT_EQ(json::decode<QVAddress>(
                  R"({"address1":"1 Main St","address2":"Suite 4","city":"Town","state":"CA","zipCode":"90000",)"
                  R"("country":"US","formattedAddress":"X"})")
                  .formattedAddress,
              "1 Main St Suite 4 Town, CA 90000 US");
}

TEST(QVAddress, TheBlanksOfAbsentPartsStayInItsText) {
    QVAddress address;
    address.city = "Springfield";

    EXPECT_EQ(QVAddress::formatAddress(address), " Springfield,   ");
}

TEST(QVAddress, AnEmptySecondLineStillAddsItsBlank) {
    QVAddress address;
    address.address1 = "1 Main St";
    address.address2 = "";

    EXPECT_EQ(QVAddress::formatAddress(address), "1 Main St  ,   ");
}

TEST(QVAddress, NoMalformedKeyFailsIt) {
    const auto address = json::decode<QVAddress>(
        R"({"address1":1,"address2":[],"city":null,"confidence":9,"latitude":true,"longitude":2,"country":{},)"
        R"("geofenceRadius":"wide","name":1,"zipCode":90000,"state":false,"stateCode":1.5,"county":"Lake"})");

    EXPECT_EQ(json::encode(address),
              R"({"confidence":0,"latitude":-180.0,"longitude":-180.0,"formattedAddress":" ,   ","county":"Lake"})");
}

TEST(QVAddress, AConfidenceOfFourOrMoreIsNoCase) {
    EXPECT_EQ(json::fromRawValue<QVAddressConfidence>(3), QVAddressConfidence::FALLBACK);
    EXPECT_FALSE(json::fromRawValue<QVAddressConfidence>(4));
}

TEST(QVAddress, WhatIsNoObjectIsNoAddress) {
    EXPECT_EQ(failureOf<QVAddress>("[]"), "expected an object, found a list");
}

} // namespace
} // namespace quorvane
