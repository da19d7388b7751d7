#include "testing/DecisionNames.h"

#include <array>
#include <cstddef>

#include "Tracking/Descriptions.h"

namespace quorvane::testing {
namespace {

/// The names of an enumeration's cases, in their order.
template <class Enumeration, std::size_t count>
std::string_view named(Enumeration value, const std::array<std::string_view, count>& names) {
    const auto index = static_cast<std::size_t>(value);
    return index < count ? names[index] : "unknown";
}

} // namespace

std::string_view nameOf(observed::Fix::Outcome outcome) {
    static constexpr std::array<std::string_view, 4> names{"invalid", "inaccurate", "old", "processed"};
    return named(outcome, names);
}

std::string_view nameOf(SyncDecision::Rule rule) {
    static constexpr std::array<std::string_view, 6> names{"send",      "alreadyStopped", "desiredSyncInterval",
                                                           "rateLimit", "syncMode",       "cantExit"};
    return named(rule, names);
}

std::string_view nameOf(SyncDecision::Force force) {
    static constexpr std::array<std::string_view, 5> names{"none", "neverSent", "justStopped", "waitingHandlers",
                                                           "replay"};
    return named(force, names);
}

std::string_view nameOf(observed::Tracking::Cause cause) {
    static constexpr std::array<std::string_view, 3> names{"host", "startDate", "stopDate"};
    return named(cause, names);
}

std::string_view nameOf(observed::UpdateTimer::Change change) {
    static constexpr std::array<std::string_view, 3> names{"started", "stopped", "fired"};
    return named(change, names);
}

std::string_view nameOf(observed::Service::Kind kind) {
    static constexpr std::array<std::string_view, 3> names{"coarseUpdates", "visits", "significantChanges"};
    return named(kind, names);
}

std::string_view nameOf(observed::BackgroundGrant::Change change) {
    static constexpr std::array<std::string_view, 4> names{"begun", "expiring", "expired", "ended"};
    return named(change, names);
}

std::string_view nameOf(observed::Shutdown::Change change) {
    static constexpr std::array<std::string_view, 3> names{"scheduled", "cancelled", "done"};
    return named(change, names);
}

std::string_view nameOf(observed::Send::Change change) {
    static constexpr std::array<std::string_view, 4> names{"scheduled", "begun", "dropped", "ended"};
    return named(change, names);
}

std::string_view nameOf(QVEventType type) {
    static constexpr std::array<std::string_view, 20> names{"UNKNOWN",
                                                            "USER_ENTERED_GEOFENCE",
                                                            "USER_ENTERED_HOME",
                                                            "USER_ENTERED_OFFICE",
                                                            "USER_ENTERED_PLACE",
                                                            "USER_ENTERED_REGION_COUNTRY",
                                                            "USER_ENTERED_REGION_DMA",
                                                            "USER_ENTERED_REGION_STATE",
                                                            "USER_EXITED_GEOFENCE",
                                                            "USER_EXITED_HOME",
                                                            "USER_EXITED_OFFICE",
                                                            "USER_EXITED_PLACE",
                                                            "USER_EXITED_REGION_COUNTRY",
                                                            "USER_EXITED_REGION_DMA",
                                                            "USER_EXITED_REGION_STATE",
                                                            "USER_NEARBY_PLACE_CHAIN",
                                                            "USER_STARTED_COMMUTING",
                                                            "USER_STARTED_TRAVELING",
                                                            "USER_STOPPED_COMMUTING",
                                                            "USER_STOPPED_TRAVELING"};
    return named(type, names);
}

std::string_view nameOf(platform::LocationAuthorization status) {
    return textOf(status);
}

std::string_view nameOf(platform::LocationError::Kind kind) {
    static constexpr std::array<std::string_view, 3> names{"denied", "unknown", "monitoring"};
    return named(kind, names);
}

std::string_view nameOf(phone::AppState state) {
    static constexpr std::array<std::string_view, 4> names{"notRunning", "foreground", "background", "suspended"};
    return named(state, names);
}

} // namespace quorvane::testing
