#include "testing/TrackingSummary.h"

#include <variant>

namespace quorvane::testing {

void TrackingSummary::count(const observed::Observation& observation) {
    if (const auto* const fix = std::get_if<observed::Fix>(&observation)) {
        ++fixes;
        dropped += fix->outcome == observed::Fix::Outcome::processed ? 0 : 1;
        stops += fix->stoppedAfter && !fix->stoppedBefore ? 1 : 0;
    } else if (const auto* const sync = std::get_if<observed::Sync>(&observation)) {
        ++(sync->status == QVStatus::SUCCESS ? syncs : failedSyncs);
        events += sync->events.size();
    } else if (const auto* const fence = std::get_if<observed::Geofence>(&observation)) {
        geofences += fence->isPlaced ? 1 : 0;
    } else if (const auto* const grant = std::get_if<observed::BackgroundGrant>(&observation)) {
        backgroundGrants += grant->change == observed::BackgroundGrant::Change::begun ? 1 : 0;
    }
}

} // namespace quorvane::testing
