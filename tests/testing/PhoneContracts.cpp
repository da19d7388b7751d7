#include "Platform/contract/AllContracts.h"
#include "Platform/contract/LocationManagerContract.h"
#include "testing/SimulatedPhone.h"
#include "testing/SimulatedRig.h"

namespace quorvane::platform::contract {
namespace {

using testing::SimulatedPhone;

class PhoneRig : public SimulatedRig {
public:
    PhoneRig() { start(); }

    Platform& platform() override { return current(); }
    void pass(std::chrono::nanoseconds time) override { phone.advance(time); }
    void relaunch() override {
        phone.terminate();
        start();
    }

private:
    testing::SimulatedPlatform& parts() override { return phone.platform(); }

    void start() {
        phone.launch();
        parts().application().setInformationDictionary(information());
    }

    SimulatedPhone phone;
};

std::unique_ptr<Rig> makePhoneRig() {
    return std::make_unique<PhoneRig>();
}

class PhoneLocationRig : public LocationRig {
public:
    PhoneLocationRig() { phone.launch(); }

    LocationManagerFactory& locations() override { return current().locationManagers(); }
    void moveTo(Coordinate coordinate) override { phone.moveTo(coordinate); }
    void loseSignal() override {
        phone.setSignal(false);
        phone.advance(SimulatedPhone::fixTimeout);
    }
    void permit(bool permitted) override {
        phone.setAuthorization(permitted ? LocationAuthorization::always : LocationAuthorization::denied);
    }
    void settle() override { phone.advance(std::chrono::nanoseconds(0)); }

private:
    SimulatedPhone phone;
};

std::unique_ptr<LocationRig> makePhoneLocationRig() {
    return std::make_unique<PhoneLocationRig>();
}

INSTANTIATE_TEST_SUITE_P(Phone, LocationManagerContract, ::testing::Values(&makePhoneLocationRig));
INSTANTIATE_TEST_SUITE_P(Phone, LocationPermissionContract, ::testing::Values(&makePhoneLocationRig));

} // namespace

QUORVANE_INSTANTIATE_CONTRACTS(Phone, makePhoneRig);

} // namespace quorvane::platform::contract
