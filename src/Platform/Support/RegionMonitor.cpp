#include "Platform/Support/RegionMonitor.h"

#include <algorithm>
#include <iterator>

namespace quorvane::platform {
namespace {

RegionState sideOf(const CircularRegion& region, double fromCenter) {
    return fromCenter <= region.radius ? RegionState::inside : RegionState::outside;
}

} // namespace

RegionState RegionMonitor::start(const CircularRegion& region, const std::optional<Location>& fix) {
    stop(region.identifier);
    watched.push_back({region});
    if (fix) {
        watched.back().state = sideOf(region, distance(fix->coordinate, region.center));
    }
    return watched.back().state;
}

void RegionMonitor::resume(const CircularRegion& region, RegionState state) {
    start(region);
    watched.back().state = state;
}

void RegionMonitor::stop(std::string_view identifier) {
    std::erase_if(watched, [identifier](const Watched& one) { return one.region.identifier == identifier; });
}

void RegionMonitor::forgetStates() {
    for (Watched& one : watched) {
        one.state = RegionState::unknown;
        one.isDoubted = false;
    }
}

bool RegionMonitor::has(std::string_view identifier) const {
    return std::any_of(watched.begin(), watched.end(),
                       [identifier](const Watched& one) { return one.region.identifier == identifier; });
}

RegionState RegionMonitor::state(std::string_view identifier) const {
    const auto found = std::find_if(watched.begin(), watched.end(),
                                    [identifier](const Watched& one) { return one.region.identifier == identifier; });
    return found == watched.end() ? RegionState::unknown : found->state;
}

std::vector<CircularRegion> RegionMonitor::regions() const {
    std::vector<CircularRegion> result;
    std::transform(watched.begin(), watched.end(), std::back_inserter(result),
                   [](const Watched& one) { return one.region; });
    return result;
}

std::vector<RegionMonitor::Finding> RegionMonitor::receive(const Location& fix) {
    std::vector<Finding> findings;
    for (Watched& one : watched) {
        const double away = distance(fix.coordinate, one.region.center);
        const RegionState side = sideOf(one.region, away);
        if (side == one.state) {
            one.isDoubted = false;
            continue;
        }
        const bool isFirst = one.state == RegionState::unknown;
        const bool isCertain = side == RegionState::inside ? away + fix.horizontalAccuracy <= one.region.radius
                                                           : away - fix.horizontalAccuracy > one.region.radius;
        if (isFirst || isCertain || one.isDoubted) {
            one.state = side;
            one.isDoubted = false;
            findings.push_back({one.region, side, !isFirst});
        } else {
            one.isDoubted = true;
        }
    }
    return findings;
}

} // namespace quorvane::platform
