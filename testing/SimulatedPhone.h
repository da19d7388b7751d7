#pragma once

#include <chrono>
#include <cstddef>
#include <functional>
#include <memory>
#include <optional>
#include <string>

#include "Platform/LocationManagerDelegate.h"
#include "testing/PhoneEvents.h"
#include "testing/SimulatedPlatform.h"
#include "testing/Track.h"
#include "testing/TrackPath.h"

namespace quorvane {
class TrackingObserver;
}

namespace quorvane::testing {

/// How a simulated phone begins.
struct PhoneOptions {
    /// Of the first launch; its `clock`, which is the phone's, and its `locations` do not count.
    SimulatedOptions platform;
    /// Whether the application declares the background mode "location", which it needs to be kept running.
    bool declaresBackgroundLocation = true;
    platform::LocationAuthorization authorization = platform::LocationAuthorization::always;
    /// What the user says when asked for permission; none: what is asked for is given.
    std::optional<platform::LocationAuthorization> permissionAnswer;
};

/// A phone on the virtual clock: it follows a track, and runs an application as its system would. Main thread only. One
/// at a time: the platform of the application that it launches is the one in use.
///
/// **Location.** A request for one fix is answered at once with the position at that moment. While there are continuous
/// updates, or regions, visits or significant changes are monitored, the phone looks where it is at each fix of its
/// track, and between them every ten seconds for continuous updates finer than a kilometre, every minute for anything
/// else. What it monitors is derived from that, whether the application runs or not: a border is crossed by two fixes
/// in a row or one whose accuracy circle lies beyond it, a visit is five minutes within 100 metres, a change of more
/// than 500 metres is significant, once in five minutes. The accuracy of a fix is the track's, whatever accuracy was
/// asked for. Without signal, or nowhere, what wants a fix fails after ten seconds, a request each time, continuous
/// updates once.
///
/// **Running.** In the background the application runs while it has continuous updates that go on there, else for ten
/// seconds after it came there, was woken or lost them, and longer where it has a grant of background time, which is
/// 180 seconds at most. Then it is suspended: its main queue stands still. A region that is crossed, a visit and a
/// significant change wake it, or launch it where it has ended; nothing else does, and without permission `always` not
/// even these. Timers that fell due meanwhile run when it is woken.
///
/// **Time.** `advance` of this class, not that of the platform, moves it. What other things happen in the world is work
/// on `world`, which runs whatever the application does.
class SimulatedPhone {
public:
    /// Sets up the application at a launch, once its platform is the one in use, and answers what is to live until it
    /// ends, if anything; the library's own objects need not be kept.
    using Host = std::function<std::shared_ptr<void>(phone::LaunchReason reason)>;

    /// How often the phone looks where it is between two fixes of its track.
    static constexpr std::chrono::seconds sampling{10};
    static constexpr std::chrono::seconds coarseSampling{60};
    static constexpr std::chrono::seconds fixTimeout{10};
    static constexpr std::chrono::seconds wakeTime{10};
    static constexpr std::chrono::seconds backgroundTime{180};
    /// How long the receiver is taken to run for one request; the answer comes at once all the same.
    static constexpr std::chrono::seconds timeToFix{5};

    explicit SimulatedPhone(const PhoneOptions& options = {});
    SimulatedPhone(const SimulatedPhone&) = delete;
    SimulatedPhone& operator=(const SimulatedPhone&) = delete;
    /// Leaves no platform in use.
    ~SimulatedPhone();

    /// From now on the phone follows these fixes: it is at the first one now, and at each further one as much later as
    /// their times say. The fixes that it gives carry the wall clock's time, which is that of the recorded ones where
    /// the clock was set to the first one's.
    void follow(Track track);
    void follow(TrackPath::Source fixes);
    /// The phone is there, and stays there.
    void moveTo(platform::Coordinate coordinate, double accuracy = 5);
    /// The fix that the receiver would give now, had it signal; none: it has never been anywhere.
    [[nodiscard]] std::optional<platform::Location> position();
    /// What is left of the track that it follows; null: it follows none.
    [[nodiscard]] const TrackPath* path() const;

    /// For all further launches.
    void setHost(Host host);
    /// The user starts the application, or brings it back to the foreground.
    void launch();
    /// The user turns to something else. The application is in the foreground.
    void enterBackground();
    /// The application ends, by its user or the system.
    void terminate();
    [[nodiscard]] phone::AppState state() const;
    /// The parts of the running application's platform; it must have been launched. They are others after the next
    /// launch, but keep what is stored. Location, background time and the transport that the application sees are the
    /// phone's.
    [[nodiscard]] SimulatedPlatform& platform();

    /// Moves the clock by @p duration and lets happen what falls due on the way: at each moment first work on `world`,
    /// then the phone's location, then the application's work. Answers false as `SimulatedPlatform::advance` does.
    bool advance(std::chrono::nanoseconds duration);
    /// What happens in the world beside the phone. Its work may call the phone, but for `advance`.
    [[nodiscard]] SimulatedMainQueue& world();
    [[nodiscard]] SimulatedClock& clock();
    /// Sets the wall clock without letting time pass.
    void setWallTime(platform::Date now);

    /// Whether the receiver sees the sky. True at first.
    void setSignal(bool hasSignal);
    /// How accurate fixes are, whatever the track says; none: as it says.
    void setAccuracy(const std::optional<double>& metres);
    /// What the user, or the system, lets the application do.
    void setAuthorization(platform::LocationAuthorization status);

    [[nodiscard]] phone::Usage usage() const;
    /// Who hears what happens on the phone, and what tracking does in it, at this launch and all further ones. Not
    /// owned; they outlive the phone or are taken off before. None takes the former one off.
    void setObservers(phone::Observer* observer, TrackingObserver* trackingObserver);

private:
    class Device;
    const std::unique_ptr<Device> device;
};

} // namespace quorvane::testing
