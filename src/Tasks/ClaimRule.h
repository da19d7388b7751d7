#pragma once

#include <optional>

namespace quorvane {

/// Who may claim a task: whoever is no farther from it than its own limit, or than 0.1 miles without one. Miles here
/// are metres times 0.6213712 and divided by 1000.
struct ClaimRule {
    static constexpr double milesPerKilometre = 0.6213712;
    static constexpr double defaultRadiusMiles = 0.1;

    [[nodiscard]] static constexpr double miles(double metres) { return metres * milesPerKilometre / 1000; }

    /// A distance exactly at the limit is allowed. @p overrideMiles is the task's own limit.
    [[nodiscard]] static constexpr bool allows(double distanceMetres, std::optional<double> overrideMiles) {
        return !(overrideMiles.value_or(defaultRadiusMiles) < miles(distanceMetres));
    }
};

} // namespace quorvane
