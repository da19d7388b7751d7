#pragma once

#include <chrono>
#include <cstddef>
#include <cstdint>
#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "Platform/Lifetime.h"
#include "Platform/LocationManager.h"
#include "Platform/Support/Delay.h"
#include "Platform/Support/RegionMonitor.h"
#include "Platform/Support/SignificantChangeMonitor.h"
#include "Platform/Support/VisitMonitor.h"

namespace quorvane::platform {

class Clock;

/// Location services over a receiver that gives fixes and nothing else: continuous updates, requests, regions, visits
/// and significant changes are made of them here, and told on the main queue. Whoever has a receiver derives from it,
/// says what comes from it, and hears what is wanted. Main thread only.
class DerivedLocations : public LocationManagerFactory {
public:
    using Permission = LocationManager::Permission;

    /// What the managers want of the receiver together. Without permission it is nothing.
    struct Demand {
        bool request = false;
        /// The finest accuracy that an open request is for; metres, or `DesiredAccuracy`.
        double requestAccuracy = DesiredAccuracy::threeKilometers;
        /// Continuous updates that are not held back in the background.
        bool updates = false;
        /// The finest accuracy of these.
        double updatesAccuracy = DesiredAccuracy::threeKilometers;
        /// Continuous updates that go on in the background.
        bool backgroundUpdates = false;
        /// Regions, visits or significant changes.
        bool monitoring = false;

        friend bool operator==(const Demand&, const Demand&) = default;
    };

    /// What the system keeps of an application between its launches.
    struct Kept {
        LocationAuthorization authorization = LocationAuthorization::notDetermined;
        std::optional<Location> last;
        RegionMonitor regions;
        VisitMonitor visits;
        SignificantChangeMonitor significantChanges;
        /// The launch before monitored these, and this one has said nothing of them: they are told to every manager.
        bool keepsVisits = false;
        bool keepsSignificantChanges = false;
    };

    /// What became of a fix.
    struct Outcome {
        /// How many managers get it as a location.
        std::size_t receivers = 0;
        /// For how many borders, visits and significant changes it counts.
        std::size_t events = 0;
    };

    /// A last fix counts as fresh, and says in which state a region begins, for that long.
    static constexpr std::chrono::seconds freshness{60};

    /// @p theClock and @p theQueue outlive the services. No @p kept: there was no launch before.
    DerivedLocations(const Clock& theClock, MainQueue& theQueue, std::shared_ptr<Kept> kept = nullptr);
    ~DerivedLocations() override;

    [[nodiscard]] std::unique_ptr<LocationManager> make() override;

    /// The receiver has a fix. One whose coordinate or accuracy is not valid is told, and nothing is derived from it.
    Outcome receive(const Location& fix);
    /// The receiver has nothing for those who want a fix now.
    void fail(const LocationError& error);
    /// What the user, or the system, lets the application do.
    void setAuthorization(LocationAuthorization status);
    /// In the background continuous updates are held back but for managers that allow them there. False at first.
    void setInBackground(bool background);
    /// The application is about to end: what its managers monitor goes on for the next launch.
    void endLaunch();

    [[nodiscard]] Demand demand() const;
    [[nodiscard]] bool isAuthorized() const;
    [[nodiscard]] const std::shared_ptr<Kept>& kept() const { return contents; }

protected:
    /// What is wanted may have changed. Called inside calls of the managers and of this object.
    virtual void demandChanged() = 0;
    /// The application wants more permission than it has. The answer goes to `setAuthorization`, now or later.
    virtual void askForPermission(Permission permission) = 0;
    /// Whether the receiver tells of changes only, so that a device stays where it was while there is no further fix,
    /// and no failure. Else a visit is told by the fixes alone.
    [[nodiscard]] virtual bool isSilentWhenStill() const { return false; }

private:
    class Manager;
    struct Report;
    /// A region whose first state is not known yet, and who is told it.
    struct Undetermined {
        std::string region;
        std::uint64_t manager = 0;
    };

    [[nodiscard]] static LocationError denied();
    void startMonitoring(Manager& manager, const CircularRegion& region);
    void stopMonitoring(const CircularRegion& region);
    void derive(const Location& fix, Report& report);
    void tell(const Report& report);
    void tellVisit(const Visit& visit);
    /// Looks, when that is due, whether the device has stayed where it was.
    void watchStay();
    void tellFirstState(const RegionMonitor::Finding& finding);
    [[nodiscard]] Manager* find(std::uint64_t id) const;
    /// Calls @p visit with each manager that has a delegate then, in the order of their making; they may end meanwhile.
    void forEach(const std::function<void(Manager&)>& visit) const;
    [[nodiscard]] bool anyWantsVisits() const;
    [[nodiscard]] bool anyWantsSignificantChanges() const;

    const Clock& clock;
    MainQueue& queue;
    const std::shared_ptr<Kept> contents;
    /// In the order of their making.
    std::vector<Manager*> living;
    std::uint64_t lastId = 0;
    std::vector<Undetermined> undetermined;
    /// The last fix that something was derived from, and when it came by monotonic time.
    std::optional<Location> lastUsed;
    std::chrono::nanoseconds lastUsedAt{0};
    bool isInBackground = false;
    Delay stayWatch;
    Lifetime lifetime;
};

} // namespace quorvane::platform
