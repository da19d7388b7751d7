#include <algorithm>
#include <map>

#include "Platform/contract/LocationManagerContract.h"
#include "testing/SimulatedPlatform.h"

namespace quorvane::platform::contract {
namespace {

/// The services hand on what they are given, so the rig itself sees which borders a move crosses.
class SimulatedLocationRig : public LocationRig {
public:
    LocationManagerFactory& locations() override { return services(); }

    void moveTo(Coordinate coordinate) override {
        services().receive({coordinate, 5, 5, simulated->clock().now()});
        for (const CircularRegion& region : services().regions()) {
            const bool isInside = distance(coordinate, region.center) <= region.radius;
            if (isInside && !wasInside(region)) {
                services().enter(region.identifier);
            } else if (!isInside && wasInside(region)) {
                services().exit(region.identifier);
            }
        }
        last = coordinate;
    }

    void loseSignal() override { services().fail({LocationError::Kind::unknown, "No signal."}); }

    void permit(bool permitted) override {
        services().setAuthorization(permitted ? LocationAuthorization::always : LocationAuthorization::denied);
    }

    void settle() override { simulated->runUntilIdle(); }

private:
    [[nodiscard]] testing::SimulatedLocations& services() const { return simulated->locationManagers(); }

    [[nodiscard]] bool wasInside(const CircularRegion& region) const {
        return last && distance(*last, region.center) <= region.radius;
    }

    std::shared_ptr<testing::SimulatedPlatform> simulated = testing::SimulatedPlatform::make();
    std::optional<Coordinate> last;
};

std::unique_ptr<LocationRig> makeSimulatedLocationRig() {
    return std::make_unique<SimulatedLocationRig>();
}

INSTANTIATE_TEST_SUITE_P(Simulated, LocationManagerContract, ::testing::Values(&makeSimulatedLocationRig));
INSTANTIATE_TEST_SUITE_P(Simulated, LocationPermissionContract, ::testing::Values(&makeSimulatedLocationRig));

} // namespace
} // namespace quorvane::platform::contract
