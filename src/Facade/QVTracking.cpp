#include "Facade/QVTracking.h"

#include "Core/Configured.h"
#include "Core/Enumerations.h"
#include "Core/SignedInFlag.h"
#include "Tracking/QVLocationManager.h"
#include "Tracking/QVTrackingService.h"

namespace quorvane {
namespace {

/// Syncs a location and answers with what came of it.
void sync(const platform::Location& location, bool stopped, QVLocationSource source,
          const QVTracking::Callback& callback) {
    QVTrackingService::shared().track(
        location, stopped, source, false,
        [location, callback](QVStatus status, const std::shared_ptr<QVTrackingResponse>& response) {
            if (response) {
                callback(status, location, response->events, response->user);
            } else {
                callback(status, location, std::nullopt, nullptr);
            }
        });
}

} // namespace

void QVTracking::once(const Callback& callback) {
    if (!isConfigured()) {
        callback(QVStatus::ERROR_PUBLISHABLE_KEY, std::nullopt, std::nullopt, nullptr);
        return;
    }
    QVLocationManager::shared().getLocation(
        QuorvaneTrackingOptions::DesiredAccuracy::MEDIUM,
        [callback](QVStatus status, const std::optional<platform::Location>& location, bool stopped) {
            if (status == QVStatus::SUCCESS && location) {
                sync(*location, stopped, QVLocationSource::FOREGROUND_LOCATION, callback);
            } else {
                callback(status, location, std::nullopt, nullptr);
            }
        });
}

void QVTracking::once(const platform::Location& location, const Callback& callback) {
    if (isConfigured()) {
        sync(location, false, QVLocationSource::MANUAL_LOCATION, callback);
    } else {
        callback(QVStatus::ERROR_PUBLISHABLE_KEY, std::nullopt, std::nullopt, nullptr);
    }
}

void QVTracking::start(const std::shared_ptr<QuorvaneTrackingOptions>& options) {
    if (isConfigured() && options) {
        QVLocationManager::shared().startTracking(*options);
    }
}

void QVTracking::stop() {
    if (isConfigured()) {
        QVLocationManager::shared().stopTracking();
    }
}

bool QVTracking::isTracking() {
    return SignedInFlag::shared().isSet();
}

} // namespace quorvane
