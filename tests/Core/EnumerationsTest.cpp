#include <gtest/gtest.h>

#include "Core/Enumerations.h"

namespace quorvane {
namespace {

template <class Enum>
int raw(Enum value) {
    return static_cast<int>(value);
}

TEST(Enumerations, LogLevelsAreNumberedFromNoneToDebug) {
    EXPECT_EQ(raw(QVLogLevel::NONE), 0);
    EXPECT_EQ(raw(QVLogLevel::ERROR), 1);
    EXPECT_EQ(raw(QVLogLevel::WARNING), 2);
    EXPECT_EQ(raw(QVLogLevel::INFO), 3);
    EXPECT_EQ(raw(QVLogLevel::DEBUG), 4);
}

TEST(Enumerations, AnIntegerOutsideTheLogLevelsIsNone) {
    EXPECT_EQ(json::fromRawValue<QVLogLevel>(0), QVLogLevel::NONE);
    EXPECT_EQ(json::fromRawValue<QVLogLevel>(4), QVLogLevel::DEBUG);
    EXPECT_FALSE(json::fromRawValue<QVLogLevel>(5));
    EXPECT_FALSE(json::fromRawValue<QVLogLevel>(-1));
    EXPECT_FALSE(json::fromRawValue<QVLogLevel>(std::int64_t{1} << 32));
}

TEST(Enumerations, LocationSourcesAreNumberedInTheirOrder) {
    EXPECT_EQ(raw(QVLocationSource::BACKGROUND_LOCATION), 0);
    EXPECT_EQ(raw(QVLocationSource::FOREGROUND_LOCATION), 1);
    EXPECT_EQ(raw(QVLocationSource::GEOFENCE_DWELL), 2);
    EXPECT_EQ(raw(QVLocationSource::GEOFENCE_ENTER), 3);
    EXPECT_EQ(raw(QVLocationSource::GEOFENCE_EXIT), 4);
    EXPECT_EQ(raw(QVLocationSource::MANUAL_LOCATION), 5);
    EXPECT_EQ(raw(QVLocationSource::VISIT_ARRIVAL), 6);
    EXPECT_EQ(raw(QVLocationSource::VISIT_DEPARTURE), 7);
    EXPECT_EQ(raw(QVLocationSource::UNKNOWN), 8);
}

TEST(Enumerations, AnIntegerOutsideTheLocationSourcesIsNone) {
    EXPECT_EQ(json::fromRawValue<QVLocationSource>(8), QVLocationSource::UNKNOWN);
    EXPECT_FALSE(json::fromRawValue<QVLocationSource>(9));
    EXPECT_FALSE(json::fromRawValue<QVLocationSource>(-1));
}

TEST(Enumerations, StorageTypesAndRouteUnitsAreNumberedFromZero) {
    EXPECT_EQ(raw(QVStorageType::LOCAL), 0);
    EXPECT_EQ(raw(QVStorageType::REMOTE), 1);
    EXPECT_EQ(raw(QVRouteUnits::IMPERIAL), 0);
    EXPECT_EQ(raw(QVRouteUnits::METRIC), 1);
}

TEST(Enumerations, NotificationsCarryTheirIdentifiersUnderFixedKeys) {
    EXPECT_EQ(NotificationKeys::CAMPAIGN_ID, "GeofenceNotificationUserInfoCampaignIDKey");
    EXPECT_EQ(NotificationKeys::LOCATION_ID, "GeofenceNotificationUserInfoLocationIDKey");
}

} // namespace
} // namespace quorvane
