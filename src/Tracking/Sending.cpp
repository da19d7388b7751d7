#include "Core/Configured.h"
#include "Tracking/Descriptions.h"
#include "Tracking/LocationManagerParts.h"
#include "Tracking/LocationSource.h"
#include "Tracking/QVTrackingService.h"

namespace quorvane {
namespace {

using Change = observed::Send::Change;

/// Whether the service's answer lets the locations of a moving user be sent.
bool allowsExits(const QVUser& user) {
    return user.insights || user.geofences || user.place;
}

} // namespace

void QVLocationManager::sendLocation(const platform::Location& location, bool stopped, QVLocationSource source,
                                     bool replayed) {
    parts->log.always(QVLogLevel::DEBUG, [location, stopped, source, replayed] {
        return "sending location |\n    \tsource = " + std::string(nameOf(source)) +
               ";\n    \tlocation = " + descriptionOf(location) +
               ";\n    \tstopped = " + std::string(trueOrFalse(stopped)) +
               ";\n    \treplayed = " + std::string(trueOrFalse(replayed));
    });
    parts->sending = true;
    if (!isConfigured()) {
        parts->observation.tell([&] { return observed::Send{Change::dropped, location, stopped, source, replayed}; });
        parts->sending = false;
        updateTracking(std::nullopt);
        return;
    }
    parts->observation.tell([&] { return observed::Send{Change::begun, location, stopped, source, replayed}; });
    QVTrackingService::shared().track(
        location, stopped, source, replayed,
        [this, location, stopped, source, replayed](QVStatus status,
                                                    const std::shared_ptr<QVTrackingResponse>& response) {
            bool canExit = parts->state.canExit();
            if (response && response->user) {
                canExit = allowsExits(*response->user);
                parts->state.setInternalUserId(response->user->userId);
                parts->state.setCanExit(canExit);
            }
            parts->observation.tell(
                [&] { return observed::Send{Change::ended, location, stopped, source, replayed, status, canExit}; });
            parts->sending = false;
            updateTracking(std::nullopt);
        });
}

} // namespace quorvane
