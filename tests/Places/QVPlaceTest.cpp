#include <gtest/gtest.h>

#include "Models/ModelTesting.h"
#include "Places/QVPlace.h"

namespace quorvane {
namespace {

TEST(QVPlace, EveryKeyIsReadAndWritten) {
    const std::string text =
        R"({"id":"p1","active":true,"categories":["food","tools"],"chain":{"name":"Acme","slug":"acme"},)"
        R"("clientKey":"k1","clientReference":"ref","dragonId":"d1","emails":["a@example.org"],"group":"g1",)"
        R"("key":"key1","address1":"1 Main St","address2":"Suite 4","city":"Town","country":"US","latitude":46.5,)"
        R"("longitude":-14.25,"phoneNumber":"555","state":"CA","zipCode":"90000",)"
        R"("metadata":{"a":[1,"x",true,2.5]},"name":"Corner shop","owners":{"campaign":"c1"}})";

    const auto place = json::decode<QVPlace>(text);

    EXPECT_EQ(place._id, "p1");
    EXPECT_EQ(place.active, true);
    EXPECT_EQ(place.categories, (std::vector<std::string>{"food", "tools"}));
    ASSERT_TRUE(place.chain);
    EXPECT_EQ(place.chain->slug, "acme");
    EXPECT_EQ(place.clientKey, "k1");
    EXPECT_EQ(place.clientReference, "ref");
    EXPECT_EQ(place.dragonId, "d1");
    EXPECT_EQ(place.emails, (std::vector<std::string>{"a@example.org"}));
    EXPECT_EQ(place.group, "g1");
    EXPECT_EQ(place.key, "key1");
    ASSERT_TRUE(place.location);
    EXPECT_EQ(place.location->address1, "1 Main St");
    EXPECT_EQ(place.location->address2, "Suite 4");
    EXPECT_EQ(place.location->city, "Town");
    EXPECT_EQ(place.location->country, "US");
    EXPECT_EQ(place.location->coordinate, (platform::Coordinate{46.5, -14.25}));
    EXPECT_EQ(place.location->phoneNumber, "555");
    EXPECT_EQ(place.location->state, "CA");
    EXPECT_EQ(place.location->postalCode, "90000");
    EXPECT_EQ(place.metadata, (AnyCodable::Dictionary{{"a", AnyCodable::List{1, "x", true, 2.5}}}));
    EXPECT_EQ(place.name, "Corner shop");
    ASSERT_TRUE(place.owners);
    EXPECT_EQ(place.owners->campaign, "c1");
    EXPECT_EQ(json::encode(place), text);
}

TEST(QVPlace, ANewOneHasNoLocation) {
    const QVPlace place;

    EXPECT_FALSE(place.location);
    EXPECT_EQ(json::encode(place), R"({"id":"","categories":[],"name":""})");
}

TEST(QVPlace, OneDecodedFromAnEmptyObjectHasADefaultLocationWithoutAText) {
    const auto place = json::decode<QVPlace>("{}");

    EXPECT_EQ(place._id, "");
    EXPECT_EQ(place.name, "");
    EXPECT_TRUE(place.categories.empty());
    EXPECT_FALSE(place.active || place.chain || place.emails || place.metadata || place.owners);
    ASSERT_TRUE(place.location);
    EXPECT_EQ(place.location->coordinate, (platform::Coordinate{0, 0}));
    EXPECT_FALSE(place.location->formattedAddress);
}

TEST(QVPlace, ItsIdentifierIsReadFromIdOnly) {
    EXPECT_EQ(json::decode<QVPlace>(R"({"_id":"p1"})")._id, "");
}

TEST(QVPlace, ANestedLocationIsNotRead) {
    const auto place =
        json::decode<QVPlace>(R"({"location":{"city":"Town","latitude":46.5,"longitude":14.5,"zipCode":"12345"}})");

    ASSERT_TRUE(place.location);
    EXPECT_FALSE(place.location->city || place.location->postalCode);
    EXPECT_EQ(place.location->coordinate, (platform::Coordinate{0, 0}));
}

TEST(QVPlace, TheFlatAddressFillsTheLocationAndNoTextIsComputed) {
    const auto place = json::decode<QVPlace>(R"({"zipCode":"12345","latitude":46.5,"longitude":14.5})");

    ASSERT_TRUE(place.location);
    EXPECT_EQ(place.location->postalCode, "12345");
    EXPECT_EQ(place.location->coordinate, (platform::Coordinate{46.5, 14.5}));
    EXPECT_FALSE(place.location->formattedAddress);
}

TEST(QVPlace, ALatitudeWithoutALongitudeLeavesItAtZeroZero) {
    for (const char* const text : {R"({"latitude":46.5})", R"({"latitude":46.5,"longitude":"14"})"}) {
        EXPECT_EQ(json::decode<QVPlace>(text).location->coordinate, (platform::Coordinate{0, 0})) << text;
    }
}

TEST(QVPlace, NoMalformedKeyFailsIt) {
    const auto place = json::decode<QVPlace>(
        R"({"id":7,"active":"yes","categories":["food",3],"chain":[],"clientKey":1,"clientReference":{},)"
        R"("dragonId":true,"emails":"a@example.org","group":[],"key":null,"address1":1,"address2":2,"city":3,)"
        R"("country":4,"latitude":[],"longitude":{},"phoneNumber":5,"state":6,"zipCode":90000,"metadata":7,)"
        R"("name":null,"owners":{"client":8}})");

    EXPECT_EQ(json::encode(place), R"({"id":"","categories":[],"latitude":0.0,"longitude":0.0,"name":""})");
}

TEST(QVPlace, AnEmailThatIsNoTextDropsAllOfThem) {
    EXPECT_FALSE(json::decode<QVPlace>(R"({"emails":["a@example.org",1]})").emails);
}

TEST(QVPlace, ANullInItsMetadataDropsTheMetadataOnly) {
    const auto place = json::decode<QVPlace>(R"({"name":"Corner shop","metadata":{"a":1,"b":null}})");

    EXPECT_FALSE(place.metadata);
    EXPECT_EQ(place.name, "Corner shop");
}

TEST(QVPlace, ANullInItsChainsMetadataDropsTheChain) {
    const auto place = json::decode<QVPlace>(R"({"name":"Corner shop","chain":{"name":"Acme","metadata":{"a":null}}})");

    EXPECT_FALSE(place.chain);
    EXPECT_EQ(place.name, "Corner shop");
}

TEST(QVPlace, OneWithoutALocationIsWrittenWithoutAnAddress) {
    auto place = json::decode<QVPlace>(R"({"city":"Town","latitude":1,"longitude":2})");
    place.location.reset();

    EXPECT_EQ(json::encode(place), R"({"id":"","categories":[],"name":""})");
}

TEST(QVPlace, OneWithoutACoordinateIsWrittenWithoutAPoint) {
    auto place = json::decode<QVPlace>(R"({"city":"Town"})");
    place.location->coordinate.reset();

    EXPECT_EQ(json::encode(place), R"({"id":"","categories":[],"city":"Town","name":""})");
}

TEST(QVPlace, WhatIsNoObjectIsNoPlace) {
    EXPECT_EQ(failureOf<QVPlace>(R"("p1")"), "expected an object, found \"p1\"");
}

TEST(QVChain, EveryKeyIsReadAndWritten) {
    const std::string text = R"({"externalId":"x1","metadata":{"a":{"b":1}},"name":"Acme","slug":"acme"})";

    const auto chain = json::decode<QVChain>(text);

    EXPECT_EQ(chain.externalId, "x1");
    EXPECT_EQ(chain.metadata, (AnyCodable::Dictionary{{"a", AnyCodable::Dictionary{{"b", 1}}}}));
    EXPECT_EQ(chain.name, "Acme");
    EXPECT_EQ(chain.slug, "acme");
    EXPECT_EQ(json::encode(chain), text);
}

TEST(QVChain, ANewOneHasEmptyTextsAndNothingElse) {
    EXPECT_EQ(json::encode(QVChain()), R"({"name":"","slug":""})");
    EXPECT_EQ(recoded<QVChain>("{}"), R"({"name":"","slug":""})");
}

TEST(QVChain, ANullInItsMetadataFailsIt) {
    EXPECT_EQ(failureOf<QVChain>(R"({"name":"Acme","metadata":{"a":null}})"),
              "metadata.a: the container contains nothing serializable");
}

} // namespace
} // namespace quorvane
