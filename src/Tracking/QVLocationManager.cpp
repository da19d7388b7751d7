#include "Tracking/QVLocationManager.h"

namespace quorvane {

void QVLocationManager::updateTracking(const std::optional<platform::Location>&) {
    ++updates;
}

void QVLocationManager::getLocation(QuorvaneTrackingOptions::DesiredAccuracy, const LocationCompletion& completion) {
    completion(QVStatus::ERROR_UNIMPLEMENTED, std::nullopt, false);
}

} // namespace quorvane
