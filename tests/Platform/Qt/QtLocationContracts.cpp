#include "Platform/Qt/GeoClueMock.h"
#include "Platform/Qt/QtPlatform.h"
#include "Platform/contract/LocationManagerContract.h"
#include "support/ScratchDirectory.h"

namespace quorvane::platform::contract {
namespace {

/// GeoClue, whose client somebody else on the device keeps running, so that permission is known at all times.
class GeoClueRig : public LocationRig {
public:
    GeoClueRig() {
        keeper->requestAuthorization(LocationManager::Permission::always);
        keeper->startUpdatingLocation();
        GeoClueRig::settle();
    }

    LocationManagerFactory& locations() override { return platform->locationManagers(); }
    void moveTo(Coordinate coordinate) override { service.moveTo(coordinate); }
    void loseSignal() override { service.leave(); }
    void permit(bool permitted) override { service.answer(permitted ? "permit" : "off"); }
    void settle() override { service.settle(platform->mainQueue()); }

private:
    const testing::ScratchDirectory home;
    qt::GeoClueMock service;
    const std::shared_ptr<QtPlatform> platform = QtPlatform::make({{.home = home.path()}, GeoClue{}});
    const std::unique_ptr<LocationManager> keeper = platform->locationManagers().make();
};

std::unique_ptr<LocationRig> makeGeoClueRig() {
    return std::make_unique<GeoClueRig>();
}

INSTANTIATE_TEST_SUITE_P(Qt, LocationManagerContract, ::testing::Values(&makeGeoClueRig));

} // namespace
} // namespace quorvane::platform::contract
