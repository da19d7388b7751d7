#pragma once

#include <string_view>

/// The keys of everything that the library keeps in the preferences. One flat namespace, shared with the host's own
/// entries; the texts never change.
namespace quorvane::preference {

inline constexpr std::string_view publishableKey = "quorvane_publishable_key";
/// The publishable key without its first nine characters. Its presence means that the library is configured.
inline constexpr std::string_view accessKey = "quorvane_access_key";
inline constexpr std::string_view deviceId = "quorvane_device_id";
inline constexpr std::string_view installId = "quorvane_install_id";
inline constexpr std::string_view userId = "quorvane_user_id";
inline constexpr std::string_view userDescription = "quorvane_user_description";
inline constexpr std::string_view userMetadata = "quorvane_user_metadata";
inline constexpr std::string_view adIdEnabled = "quorvane_ad_id_enabled";
inline constexpr std::string_view logLevel = "quorvane_log_level";
inline constexpr std::string_view trackingOptions = "quorvane_tracking_options";
inline constexpr std::string_view config = "quorvane_config";
/// Despite its name also the signed-in flag; see SignedInFlag.h.
inline constexpr std::string_view backgroundTracking = "quorvane_background_tracking";
inline constexpr std::string_view stopped = "quorvane_stopped";
/// Whether the last answer of the service lets locations of a moving user be sent.
inline constexpr std::string_view canExit = "quorvane_can_exit";
inline constexpr std::string_view lastSentAt = "quorvane_last_sent_at";
inline constexpr std::string_view lastMovedLocation = "quorvane_last_moved_location";
inline constexpr std::string_view lastMovedAt = "quorvane_last_moved_at";
inline constexpr std::string_view lastFailedStoppedLocation = "quorvane_last_failed_stopped_location";
inline constexpr std::string_view internalUserId = "quorvane_internal_user_id";
/// The token type, one blank, and the access token: what the "Authorization" header carries.
inline constexpr std::string_view accessToken = "quorvane_access_token";
inline constexpr std::string_view refreshToken = "quorvane_refresh_token";
/// Seconds since 1970. The transposed letters belong to the key.
inline constexpr std::string_view accessTokenExpiry = "qourvane_access_token_expiry";
/// Seconds since 1970.
inline constexpr std::string_view accessTokenCreationTime = "quorvane_access_token_creation_time";

} // namespace quorvane::preference
