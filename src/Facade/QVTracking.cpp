#include "Facade/QVTracking.h"

#include "Facade/Gate.h"

namespace quorvane {

void QVTracking::once(const Callback& callback) {
    callback(unimplementedStatus(), std::nullopt, std::nullopt, nullptr);
}

void QVTracking::once(const platform::Location&, const Callback& callback) {
    callback(unimplementedStatus(), std::nullopt, std::nullopt, nullptr);
}

void QVTracking::start(const std::shared_ptr<QuorvaneTrackingOptions>&) {}

void QVTracking::stop() {}

bool QVTracking::isTracking() {
    return false;
}

} // namespace quorvane
