#pragma once

#include <algorithm>
#include <functional>
#include <optional>
#include <utility>
#include <vector>

#include "Platform/MainQueue.h"
#include "Platform/Support/DerivedLocations.h"

namespace quorvane::platform {

/// One manager: what it was asked for, and its delegate.
class DerivedLocations::Manager : public LocationManager {
public:
    Manager(DerivedLocations& theServices, std::uint64_t theId) : id(theId), services(theServices) {
        services.living.push_back(this);
    }
    ~Manager() override {
        std::erase(services.living, this);
        services.demandChanged();
    }

    void setDelegate(LocationManagerDelegate* newDelegate) override {
        delegate = newDelegate;
        post([this](LocationManagerDelegate& told) { told.didChangeAuthorization(authorization()); });
    }

    [[nodiscard]] std::optional<Location> location() const override {
        return services.isAuthorized() ? services.contents->last : std::nullopt;
    }

    [[nodiscard]] LocationAuthorization authorization() const override { return services.contents->authorization; }
    void requestAuthorization(Permission permission) override {
        const bool isMore = authorization() == LocationAuthorization::whenInUse && permission == Permission::always;
        if (authorization() == LocationAuthorization::notDetermined || isMore) {
            services.askForPermission(permission);
        }
    }

    void setDesiredAccuracy(double metres) override {
        desiredAccuracy = metres;
        services.demandChanged();
    }
    void setDistanceFilter(double metres) override { distanceFilter = metres; }
    void setPausesLocationUpdatesAutomatically(bool) override {}
    void setAllowsBackgroundLocationUpdates(bool allows) override {
        allowsBackground = allows;
        services.demandChanged();
    }
    void setShowsBackgroundLocationIndicator(bool) override {}

    void requestLocation() override {
        if (!services.isAuthorized()) {
            fail(services.denied());
            return;
        }
        hasRequest = true;
        requestAccuracy = desiredAccuracy;
        services.demandChanged();
    }

    void startUpdatingLocation() override {
        if (std::exchange(updates, true)) {
            return;
        }
        lastUpdate.reset();
        if (!services.isAuthorized()) {
            fail(services.denied());
        }
        services.demandChanged();
    }
    void stopUpdatingLocation() override {
        updates = false;
        services.demandChanged();
    }

    void startMonitoringVisits() override {
        if (!services.anyWantsVisits()) {
            services.contents->visits.reset();
        }
        setMonitoring(visits, services.contents->keepsVisits, true);
    }
    void stopMonitoringVisits() override { setMonitoring(visits, services.contents->keepsVisits, false); }
    void startMonitoringSignificantLocationChanges() override {
        if (!services.anyWantsSignificantChanges()) {
            services.contents->significantChanges.reset();
        }
        setMonitoring(significantChanges, services.contents->keepsSignificantChanges, true);
    }
    void stopMonitoringSignificantLocationChanges() override {
        setMonitoring(significantChanges, services.contents->keepsSignificantChanges, false);
    }

    void startMonitoring(const CircularRegion& region) override { services.startMonitoring(*this, region); }
    void stopMonitoring(const CircularRegion& region) override { services.stopMonitoring(region); }
    [[nodiscard]] std::vector<CircularRegion> monitoredRegions() const override {
        return services.contents->regions.regions();
    }

    /// Whether continuous updates come now.
    [[nodiscard]] bool isUpdating() const { return updates && (allowsBackground || !services.isInBackground); }

    /// Whether what is monitored is told to this manager, which asked for it or may have done so in an earlier launch.
    [[nodiscard]] static bool isTold(bool asked, bool isKept) { return asked || isKept; }

    /// Whether @p fix is for this manager as an update, or as the answer to its request, which is answered then.
    [[nodiscard]] bool takes(const Location& fix) {
        const bool isFar = distanceFilter < 0 || !lastUpdate || lastUpdate->distance(fix) >= distanceFilter;
        const bool isUpdate = isUpdating() && isFar;
        if (isUpdate) {
            lastUpdate = fix;
        }
        return std::exchange(hasRequest, false) || isUpdate;
    }

    void fail(const LocationError& error) {
        post([error](LocationManagerDelegate& told) { told.didFail(error); });
    }

    /// Posts @p tell, for the delegate that there is then.
    void post(std::function<void(LocationManagerDelegate&)> tell) {
        services.queue.post(lifetime.guard([this, tell = std::move(tell)] {
            if (delegate != nullptr) {
                tell(*delegate);
            }
        }));
    }

    const std::uint64_t id;
    LocationManagerDelegate* delegate = nullptr;
    double desiredAccuracy = DesiredAccuracy::best;
    double requestAccuracy = DesiredAccuracy::best;
    double distanceFilter = noDistanceFilter;
    bool allowsBackground = false;
    bool hasRequest = false;
    bool updates = false;
    bool visits = false;
    bool significantChanges = false;

private:
    void setMonitoring(bool& service, bool& isKept, bool on) {
        isKept = false;
        service = on;
        services.demandChanged();
    }

    DerivedLocations& services;
    std::optional<Location> lastUpdate;
    Lifetime lifetime;
};

} // namespace quorvane::platform
