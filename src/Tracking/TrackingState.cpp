#include "Tracking/TrackingState.h"

#include "Core/PreferenceKeys.h"
#include "Device/QVUtils.h"
#include "Platform/PreferencesStore.h"

namespace quorvane {

TrackingState::TrackingState(platform::PreferencesStore& thePreferences) : preferences(thePreferences) {}

std::optional<bool> TrackingState::stopped() const {
    return preferences.boolean(preference::stopped);
}

bool TrackingState::canExit() const {
    return preferences.boolean(preference::canExit).value_or(false);
}

std::optional<platform::Location> TrackingState::lastMovedLocation() const {
    return QVUtils::toLocation(preferences.dictionary(preference::lastMovedLocation));
}

std::optional<platform::Date> TrackingState::lastMovedAt() const {
    return preferences.date(preference::lastMovedAt);
}

std::optional<platform::Date> TrackingState::lastSentAt() const {
    return preferences.date(preference::lastSentAt);
}

std::optional<platform::Location> TrackingState::lastFailedStoppedLocation() const {
    return QVUtils::toLocation(preferences.dictionary(preference::lastFailedStoppedLocation));
}

void TrackingState::setStopped(bool stopped) {
    preferences.setBoolean(preference::stopped, stopped);
}

void TrackingState::setCanExit(bool canExit) {
    preferences.setBoolean(preference::canExit, canExit);
}

void TrackingState::setLastMovedLocation(const platform::Location& location) {
    store(preference::lastMovedLocation, location);
}

void TrackingState::setLastMovedAt(platform::Date date) {
    preferences.setDate(preference::lastMovedAt, date);
}

void TrackingState::setLastSentAt(platform::Date date) {
    preferences.setDate(preference::lastSentAt, date);
}

void TrackingState::setLastFailedStoppedLocation(const std::optional<platform::Location>& location) {
    if (location) {
        store(preference::lastFailedStoppedLocation, *location);
    } else {
        preferences.remove(preference::lastFailedStoppedLocation);
    }
}

void TrackingState::setInternalUserId(const std::optional<std::string>& userId) {
    preferences.setOptionalString(preference::internalUserId, userId);
}

void TrackingState::store(std::string_view key, const platform::Location& location) {
    if (QVUtils::isValidLocation(location)) {
        preferences.setDictionary(key, QVUtils::fromLocation(location));
    }
}

} // namespace quorvane
