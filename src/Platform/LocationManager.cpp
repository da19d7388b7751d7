#include "Platform/LocationManager.h"

#include <utility>

#include "Platform/Lifetime.h"
#include "Platform/MainQueue.h"

namespace quorvane::platform {

class FixedLocationManagerFactory::Manager : public LocationManager {
public:
    explicit Manager(FixedLocationManagerFactory& theFactory) : factory(theFactory) {}

    void setDelegate(LocationManagerDelegate* newDelegate) override {
        delegate = newDelegate;
        tell([](LocationManagerDelegate& receiver) { receiver.didChangeAuthorization(LocationAuthorization::denied); });
    }

    [[nodiscard]] std::optional<Location> location() const override { return factory.last; }

    [[nodiscard]] LocationAuthorization authorization() const override { return LocationAuthorization::denied; }
    void requestAuthorization(Permission) override {}

    void setDesiredAccuracy(double) override {}
    void setDistanceFilter(double) override {}
    void setPausesLocationUpdatesAutomatically(bool) override {}
    void setAllowsBackgroundLocationUpdates(bool) override {}
    void setShowsBackgroundLocationIndicator(bool) override {}

    void requestLocation() override { fail(); }
    void startUpdatingLocation() override { fail(); }
    void stopUpdatingLocation() override {}
    void startMonitoringVisits() override {}
    void stopMonitoringVisits() override {}
    void startMonitoringSignificantLocationChanges() override {}
    void stopMonitoringSignificantLocationChanges() override {}

    void startMonitoring(const CircularRegion& region) override {
        tell([region](LocationManagerDelegate& receiver) { receiver.monitoringDidFail(region, denied()); });
    }
    void stopMonitoring(const CircularRegion&) override {}
    [[nodiscard]] std::vector<CircularRegion> monitoredRegions() const override { return {}; }

private:
    static LocationError denied() { return {LocationError::Kind::denied, "This platform has no location service."}; }

    void fail() {
        tell([](LocationManagerDelegate& receiver) { receiver.didFail(denied()); });
    }

    template <class Call>
    void tell(Call call) {
        factory.queue.post(lifetime.guard([this, told = delegate, call = std::move(call)] {
            if (told != nullptr && told == delegate) {
                call(*told);
            }
        }));
    }

    FixedLocationManagerFactory& factory;
    LocationManagerDelegate* delegate = nullptr;
    Lifetime lifetime;
};

FixedLocationManagerFactory::FixedLocationManagerFactory(MainQueue& theQueue) : queue(theQueue) {}

std::unique_ptr<LocationManager> FixedLocationManagerFactory::make() {
    return std::make_unique<Manager>(*this);
}

} // namespace quorvane::platform
