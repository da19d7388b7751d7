#include "Platform/contract/AllContracts.h"
#include "testing/SimulatedRig.h"

namespace quorvane::platform::contract {
namespace {

class OwnSimulatedRig : public SimulatedRig {
public:
    OwnSimulatedRig() { simulated->application().setInformationDictionary(information()); }

    Platform& platform() override { return *simulated; }
    void pass(std::chrono::nanoseconds time) override { simulated->advance(time); }
    void relaunch() override { simulated = testing::SimulatedPlatform::make(simulated->nextLaunch()); }

private:
    testing::SimulatedPlatform& parts() override { return *simulated; }

    std::shared_ptr<testing::SimulatedPlatform> simulated = testing::SimulatedPlatform::make();
};

std::unique_ptr<Rig> makeSimulatedRig() {
    return std::make_unique<OwnSimulatedRig>();
}

} // namespace

QUORVANE_INSTANTIATE_CONTRACTS(Simulated, makeSimulatedRig);

} // namespace quorvane::platform::contract
