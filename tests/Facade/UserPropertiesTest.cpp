#include <limits>

#include "Core/QVSettings.h"
#include "Facade/Quorvane.h"
#include "support/Calls.h"
#include "support/SimulatedTest.h"

namespace quorvane {
namespace {

class UserPropertiesTest : public SimulatedTest {
protected:
    void configure() { store("quorvane_access_key", "access-key"); }

    [[nodiscard]] std::optional<std::string> stored(std::string_view key) { return preferences().string(key); }

    /// What the platform was asked for last, in metres.
    [[nodiscard]] double desiredAccuracy() { return phone->locationManagers().managers().at(0).desiredAccuracy; }
};

TEST_F(UserPropertiesTest, WithoutAKeyNothingIsStored) {
    Quorvane::setDescription("a rider");
    Quorvane::setMetadata({{"age", 30}});
    Quorvane::setAdIdEnabled(true);
    Quorvane::setLogLevel(QVLogLevel::DEBUG);

    EXPECT_TRUE(preferences().keys().empty());
}

TEST_F(UserPropertiesTest, WithoutAKeyNothingIsRead) {
    store("quorvane_user_id", "rider");
    store("quorvane_user_description", "a rider");
    preferences().setDictionary("quorvane_user_metadata", {{"age", 30}});

    EXPECT_EQ(Quorvane::getUserId(), std::nullopt);
    EXPECT_EQ(Quorvane::getDescription(), std::nullopt);
    EXPECT_EQ(Quorvane::getMetadata(), std::nullopt);
    EXPECT_EQ(Quorvane::getTrackingOptions(), nullptr);
}

TEST_F(UserPropertiesTest, TheUserIdIsTheStoredOne) {
    configure();
    EXPECT_EQ(Quorvane::getUserId(), std::nullopt);

    store("quorvane_user_id", "rider");
    EXPECT_EQ(Quorvane::getUserId(), "rider");
}

TEST_F(UserPropertiesTest, ADescriptionIsStored) {
    configure();
    EXPECT_EQ(Quorvane::getDescription(), std::nullopt);

    Quorvane::setDescription("a rider");

    EXPECT_EQ(stored("quorvane_user_description"), "a rider");
    EXPECT_EQ(Quorvane::getDescription(), "a rider");
}

TEST_F(UserPropertiesTest, AnEmptyDescriptionIsOne) {
    configure();

    Quorvane::setDescription("");

    EXPECT_EQ(Quorvane::getDescription(), "");
}

TEST_F(UserPropertiesTest, NoDescriptionRemovesTheStoredOne) {
    configure();
    Quorvane::setDescription("a rider");

    Quorvane::setDescription(std::nullopt);

    EXPECT_EQ(stored("quorvane_user_description"), std::nullopt);
}

TEST_F(UserPropertiesTest, NoDescriptionWithoutAKeyChangesNothing) {
    store("quorvane_user_description", "a rider");

    Quorvane::setDescription(std::nullopt);

    EXPECT_EQ(stored("quorvane_user_description"), "a rider");
}

TEST_F(UserPropertiesTest, MetadataKeepItsKinds) {
    configure();
    const AnyCodable::Dictionary metadata{
        {"age", 30},
        {"height", 1.75},
        {"whole", 2.0},
        {"pro", true},
        {"name", "Ana"},
        {"tags", AnyCodable::List{"a", 1}},
        {"more", AnyCodable::Dictionary{{"deep", false}}},
    };

    Quorvane::setMetadata(metadata);

    EXPECT_EQ(Quorvane::getMetadata(), metadata);
    EXPECT_EQ(preferences().dictionary("quorvane_user_metadata"), metadata);
}

TEST_F(UserPropertiesTest, EmptyMetadataAreMetadata) {
    configure();
    EXPECT_EQ(Quorvane::getMetadata(), std::nullopt);

    Quorvane::setMetadata({});

    EXPECT_EQ(Quorvane::getMetadata(), AnyCodable::Dictionary());
}

TEST_F(UserPropertiesTest, MetadataWithAValueThatIsNoJSONValueReadAsNone) {
    configure();
    preferences().setDictionary("quorvane_user_metadata", {{"age", 30}, {"nothing", AnyCodable()}});

    EXPECT_EQ(Quorvane::getMetadata(), std::nullopt);
}

TEST_F(UserPropertiesTest, MetadataWithAValueDeepInsideThatIsNoJSONValueReadAsNone) {
    configure();
    const double nan = std::numeric_limits<double>::quiet_NaN();
    for (const AnyCodable& value :
         {AnyCodable(AnyCodable::List{1, nan}), AnyCodable(AnyCodable::Dictionary{{"nan", nan}}),
          AnyCodable(AnyCodable::List{AnyCodable::Dictionary{{"list", AnyCodable::List{AnyCodable()}}}})}) {
        Quorvane::setMetadata({{"age", 30}, {"more", value}});

        EXPECT_EQ(Quorvane::getMetadata(), std::nullopt);
    }
}

TEST_F(UserPropertiesTest, MetadataStoredAsSomethingElseReadAsNone) {
    configure();
    store("quorvane_user_metadata", "{}");

    EXPECT_EQ(Quorvane::getMetadata(), std::nullopt);
}

TEST_F(UserPropertiesTest, TheAdvertisingSwitchIsStored) {
    configure();
    EXPECT_EQ(preferences().boolean("quorvane_ad_id_enabled"), std::nullopt);

    Quorvane::setAdIdEnabled(true);
    EXPECT_EQ(preferences().boolean("quorvane_ad_id_enabled"), true);

    Quorvane::setAdIdEnabled(false);
    EXPECT_EQ(preferences().boolean("quorvane_ad_id_enabled"), false);
}

TEST_F(UserPropertiesTest, TheLogLevelIsStoredAsItsInteger) {
    configure();

    Quorvane::setLogLevel(QVLogLevel::WARNING);

    EXPECT_EQ(preferences().integer("quorvane_log_level"), 2);
    EXPECT_EQ(QVSettings::getLogLevel(), QVLogLevel::WARNING);
}

TEST_F(UserPropertiesTest, TrackingOptionsAreThoseOfTheSettings) {
    configure();
    EXPECT_EQ(Quorvane::getTrackingOptions(), QuorvaneTrackingOptions::EFFICIENT());

    QVSettings::setTrackingOptions(*QuorvaneTrackingOptions::CONTINUOUS());
    EXPECT_EQ(*Quorvane::getTrackingOptions(), *QuorvaneTrackingOptions::CONTINUOUS());
}

TEST_F(UserPropertiesTest, WhetherTheUserIsAuthenticatedIsTheFlagAloneAndNeedsNoKey) {
    EXPECT_FALSE(Quorvane::isAuthenticated());

    preferences().setBoolean("quorvane_background_tracking", true);
    EXPECT_TRUE(Quorvane::isAuthenticated());

    configure();
    preferences().setBoolean("quorvane_background_tracking", false);
    store("quorvane_access_token", "Bearer a");
    store("quorvane_refresh_token", "r");
    store("qourvane_access_token_expiry", now() + 100);
    EXPECT_FALSE(Quorvane::isAuthenticated());
}

TEST_F(UserPropertiesTest, ALocationIsThatOfTheDeviceAtMediumAccuracyUnlessAskedOtherwiseAndNeedsNoKey) {
    const Calls<QVStatus, std::optional<platform::Location>, bool> calls;
    const platform::Location here{{46.0, 14.5}, 5, 3, phone->clock().now()};

    Quorvane::getLocation(calls.record());
    EXPECT_EQ(desiredAccuracy(), platform::DesiredAccuracy::hundredMeters);
    Quorvane::getLocation(QuorvaneTrackingOptions::DesiredAccuracy::HIGH, calls.record());
    EXPECT_EQ(desiredAccuracy(), platform::DesiredAccuracy::best);
    phone->locationManagers().receive(here);
    phone->runUntilIdle();

    ASSERT_EQ(calls.count(), 2U);
    for (std::size_t i = 0; i < 2; ++i) {
        EXPECT_EQ(std::get<0>(calls[i]), QVStatus::SUCCESS);
        EXPECT_EQ(std::get<1>(calls[i]), here);
        EXPECT_TRUE(std::get<2>(calls[i]));
    }
}

} // namespace
} // namespace quorvane
