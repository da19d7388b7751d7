#include "testing/InstalledPlatform.h"

namespace quorvane::testing {

InstalledPlatform::InstalledPlatform(const SimulatedOptions& options) : simulated(SimulatedPlatform::make(options)) {
    platform::install(simulated);
}

InstalledPlatform::~InstalledPlatform() {
    platform::install(nullptr);
}

void InstalledPlatform::relaunch() {
    simulated = SimulatedPlatform::make(simulated->nextLaunch());
    platform::install(simulated);
}

void InstalledPlatform::relaunchAfterKill() {
    simulated->preferences().refuseWrites(true);
    relaunch();
}

} // namespace quorvane::testing
