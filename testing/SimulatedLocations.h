#pragma once

#include <functional>
#include <memory>
#include <optional>
#include <string_view>
#include <vector>

#include "Platform/LocationManager.h"

namespace quorvane::testing {

/// Location services that know and tell what the test says, and record what their managers were asked for. Main thread
/// only. Permission is given at all times (`always`) unless the test says otherwise.
///
/// Everything is told to the delegates by work that is posted to the main queue.
class SimulatedLocations : public platform::LocationManagerFactory {
public:
    /// What outlives a launch.
    struct Contents {
        platform::LocationAuthorization authorization = platform::LocationAuthorization::always;
        std::optional<platform::Location> last;
        std::vector<platform::CircularRegion> regions;
    };

    /// What one manager was asked for.
    struct Asked {
        double desiredAccuracy = platform::DesiredAccuracy::best;
        double distanceFilter = platform::noDistanceFilter;
        bool pausesAutomatically = true;
        bool allowsBackgroundUpdates = false;
        bool showsBackgroundIndicator = false;
        bool updates = false;
        bool visits = false;
        bool significantChanges = false;
        bool hasOpenRequest = false;
        /// How often one location was requested.
        int requests = 0;
    };

    /// @p queue outlives the services. None begins with no location and no regions.
    explicit SimulatedLocations(platform::MainQueue& queue, std::shared_ptr<Contents> contents = nullptr);
    ~SimulatedLocations() override;

    [[nodiscard]] std::unique_ptr<platform::LocationManager> make() override;

    /// The receiver has a fix: from now on it is the last location, and the managers with an open request or with
    /// continuous updates are told.
    void receive(const platform::Location& fix);
    /// As `receive`, for the managers that monitor significant changes.
    void receiveSignificantChange(const platform::Location& fix);
    /// Sets the last location and tells nobody; none: it is not known.
    void setLastLocation(const std::optional<platform::Location>& location);

    /// Tells the managers that monitor visits.
    void visit(const platform::Visit& visit);

    /// The device crosses the border of a region that is monitored. Any other @p identifier is ignored.
    void enter(std::string_view identifier);
    void exit(std::string_view identifier);

    /// The receiver has no position for those who want one now.
    void fail(const platform::LocationError& error);

    /// What the user lets the application do.
    void setAuthorization(platform::LocationAuthorization status);
    /// What the user will say when asked; none: what is asked for is given.
    void answerPermissionWith(const std::optional<platform::LocationAuthorization>& status);

    /// What each living manager was asked for, in the order of their making.
    [[nodiscard]] std::vector<Asked> managers() const;
    [[nodiscard]] const std::vector<platform::CircularRegion>& regions() const { return kept->regions; }

    /// What a further launch starts from.
    [[nodiscard]] std::shared_ptr<Contents> contents() const { return kept; }

private:
    class Manager;
    using Tell = std::function<void(platform::LocationManagerDelegate&)>;

    [[nodiscard]] bool isAuthorized() const;
    /// Posts @p tell for the managers that @p wants picks then, if permission is given then.
    void post(std::function<bool(Manager&)> wants, Tell tell);
    void tellAll(const std::function<bool(Manager&)>& wants, const Tell& tell);
    [[nodiscard]] const platform::CircularRegion* find(std::string_view identifier) const;
    [[nodiscard]] platform::RegionState stateOf(const platform::CircularRegion& region) const;

    platform::MainQueue& queue;
    const std::shared_ptr<Contents> kept;
    std::optional<platform::LocationAuthorization> permissionAnswer;
    /// In the order of their making; one that has ended leaves a gap while it is being told to.
    std::vector<Manager*> living;
};

} // namespace quorvane::testing
