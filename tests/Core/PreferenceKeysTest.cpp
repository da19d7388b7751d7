#include <gtest/gtest.h>

#include "Core/PreferenceKeys.h"

namespace quorvane::preference {
namespace {

TEST(PreferenceKeys, SettingsStandUnderTheirFixedKeys) {
    EXPECT_EQ(publishableKey, "quorvane_publishable_key");
    EXPECT_EQ(accessKey, "quorvane_access_key");
    EXPECT_EQ(deviceId, "quorvane_device_id");
    EXPECT_EQ(installId, "quorvane_install_id");
    EXPECT_EQ(userId, "quorvane_user_id");
    EXPECT_EQ(userDescription, "quorvane_user_description");
    EXPECT_EQ(userMetadata, "quorvane_user_metadata");
    EXPECT_EQ(adIdEnabled, "quorvane_ad_id_enabled");
    EXPECT_EQ(logLevel, "quorvane_log_level");
    EXPECT_EQ(trackingOptions, "quorvane_tracking_options");
    EXPECT_EQ(config, "quorvane_config");
}

TEST(PreferenceKeys, TheSignedInFlagStandsUnderTheNameOfTracking) {
    EXPECT_EQ(backgroundTracking, "quorvane_background_tracking");
}

TEST(PreferenceKeys, TheStateOfTrackingStandsUnderItsFixedKeys) {
    EXPECT_EQ(stopped, "quorvane_stopped");
    EXPECT_EQ(canExit, "quorvane_can_exit");
    EXPECT_EQ(lastSentAt, "quorvane_last_sent_at");
    EXPECT_EQ(lastMovedLocation, "quorvane_last_moved_location");
    EXPECT_EQ(lastMovedAt, "quorvane_last_moved_at");
    EXPECT_EQ(lastFailedStoppedLocation, "quorvane_last_failed_stopped_location");
    EXPECT_EQ(internalUserId, "quorvane_internal_user_id");
}

TEST(PreferenceKeys, TheExpiryStandsUnderAKeyWithTransposedLetters) {
    EXPECT_EQ(accessToken, "quorvane_access_token");
    EXPECT_EQ(refreshToken, "quorvane_refresh_token");
    EXPECT_EQ(accessTokenExpiry, "qourvane_access_token_expiry");
    EXPECT_EQ(accessTokenCreationTime, "quorvane_access_token_creation_time");
}

} // namespace
} // namespace quorvane::preference
