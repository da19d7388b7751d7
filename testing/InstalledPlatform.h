#pragma once

#include <memory>

#include "testing/SimulatedPlatform.h"

namespace quorvane::testing {

/// A simulated platform that is the one in use from its construction to its destruction: a member of a test's fixture,
/// so that each test starts in a clean world. Main thread only.
class InstalledPlatform {
public:
    explicit InstalledPlatform(const SimulatedOptions& options = {});
    InstalledPlatform(const InstalledPlatform&) = delete;
    InstalledPlatform& operator=(const InstalledPlatform&) = delete;
    /// Leaves no platform in use.
    ~InstalledPlatform();

    [[nodiscard]] SimulatedPlatform& operator*() const { return *simulated; }
    [[nodiscard]] SimulatedPlatform* operator->() const { return simulated.get(); }

    /// The application ends and starts again with what it stored; see `SimulatedPlatform::nextLaunch`.
    void relaunch();

    /// The same, but the application did not end by itself: nothing that it does on its way out is stored.
    void relaunchAfterKill();

private:
    std::shared_ptr<SimulatedPlatform> simulated;
};

} // namespace quorvane::testing
