#pragma once

#include <optional>
#include <string_view>
#include <vector>

#include "Platform/LocationManagerDelegate.h"

namespace quorvane::platform {

/// Finds out from fixes when the device enters or leaves a circle. Plain value; the regions are in the order of their
/// start.
///
/// The first fix says, without an event, on which side of a border the device is. From then on the border is crossed
/// when two fixes in a row lie on its other side, or one whose accuracy circle lies there as a whole: a single fix that
/// strays crosses nothing.
class RegionMonitor {
public:
    /// The most regions at a time.
    static constexpr std::size_t most = 20;

    struct Finding {
        CircularRegion region;
        RegionState state = RegionState::unknown;
        /// False: it is the state that the region begins in.
        bool isCrossing = false;
    };

    /// Takes the place of a region with the same identifier. Answers the state that it begins in by @p fix; unknown
    /// without one.
    RegionState start(const CircularRegion& region, const std::optional<Location>& fix = std::nullopt);
    /// The same for a region whose state is known from before.
    void resume(const CircularRegion& region, RegionState state);
    void stop(std::string_view identifier);
    /// The regions stay, and begin anew with the next fix.
    void forgetStates();

    [[nodiscard]] bool has(std::string_view identifier) const;
    /// Where the device was last, as far as that region goes; unknown for one that is not there.
    [[nodiscard]] RegionState state(std::string_view identifier) const;
    [[nodiscard]] bool isEmpty() const { return watched.empty(); }
    [[nodiscard]] std::vector<CircularRegion> regions() const;

    /// What @p fix changes. Its coordinate and its accuracy are valid.
    [[nodiscard]] std::vector<Finding> receive(const Location& fix);

private:
    struct Watched {
        CircularRegion region;
        RegionState state = RegionState::unknown;
        /// The last fix lay on the other side, without a doubt only of its own.
        bool isDoubted = false;
    };

    std::vector<Watched> watched;
};

} // namespace quorvane::platform
