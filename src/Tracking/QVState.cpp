#include "Tracking/QVState.h"

#include "Platform/Platform.h"
#include "Tracking/TrackingState.h"

namespace quorvane {
namespace {

TrackingState state() {
    return TrackingState(platform::current().preferences());
}

} // namespace

std::optional<platform::Location> QVState::getLastMovedLocation() {
    return state().lastMovedLocation();
}

std::optional<platform::Location> QVState::getLastFailedStoppedLocation() {
    return state().lastFailedStoppedLocation();
}

std::optional<platform::Date> QVState::getLastMovedAt() {
    return state().lastMovedAt();
}

std::optional<platform::Date> QVState::getLastSentAt() {
    return state().lastSentAt();
}

} // namespace quorvane
