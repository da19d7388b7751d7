#include "Tracking/QVTrackingService.h"

#include "Core/PreferenceKeys.h"
#include "Platform/PreferencesStore.h"
#include "Tracking/TrackingObserver.h"
#include "Tracking/TrackingState.h"

namespace quorvane {

QVTrackingService::QVTrackingService(platform::Platform& thePlatform)
    : platform(thePlatform), observation(TrackingObservation::shared()) {}

void QVTrackingService::track(const platform::Location& location, bool stopped, QVLocationSource source, bool replayed,
                              TrackCompletion completion) {
    const std::shared_ptr<QVUser> user = userRecord(location, stopped);
    getProximityInfo(location, [this, location, stopped, source, replayed, user, completion = std::move(completion)](
                                   QVStatus status, const FenceList& fences, const std::shared_ptr<QVPlace>& place) {
        std::shared_ptr<QVTrackingResponse> response;
        if (status == QVStatus::SUCCESS) {
            response = std::make_shared<QVTrackingResponse>();
            response->events = getEvents(location, stopped, fences, place);
            response->user = user;
            lastFences = fences;
            lastPlace = place;
            wasStopped = stopped;
        }
        observation.tell([&] {
            return observed::Sync{location, stopped,       source, replayed,
                                  status,   fences.size(), place,  response ? response->events : EventList()};
        });
        if (response) {
            finish(location, response);
        } else if (stopped && !replayed) {
            TrackingState(platform.preferences()).setLastFailedStoppedLocation(location);
            observation.tell([&] { return observed::FailedStop{false, location}; });
        }
        completion(status, response);
    });
}

void QVTrackingService::finish(const platform::Location& location,
                               const std::shared_ptr<QVTrackingResponse>& response) {
    if (const auto receiver = delegate.lock()) {
        receiver->onLocationUpdated(location, response->user);
        if (!response->events.empty()) {
            receiver->onEventsReceived(response->events, response->user);
        }
    }
}

std::shared_ptr<QVUser> QVTrackingService::userRecord(const platform::Location& location, bool stopped) const {
    const platform::PreferencesStore& preferences = platform.preferences();
    auto user = std::make_shared<QVUser>();
    user->deviceId = preferences.string(preference::deviceId);
    user->_id = preferences.string(preference::internalUserId).value_or("");
    user->_description = preferences.string(preference::userDescription);
    user->userId = preferences.string(preference::userId);
    user->metadata = preferences.dictionary(preference::userMetadata);
    user->location = location;
    user->stopped = stopped;
    return user;
}

} // namespace quorvane
