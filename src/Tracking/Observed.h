#pragma once

#include <cstddef>
#include <cstdint>
#include <memory>
#include <optional>
#include <variant>
#include <vector>

#include "Core/Enumerations.h"
#include "Core/QVStatus.h"
#include "Platform/Application.h"
#include "Platform/LocationManager.h"
#include "Tracking/QVEvent.h"
#include "Tracking/StopDetection.h"
#include "Tracking/SyncDecision.h"

/// What tracking does, as it does it: plain values for whoever wants to keep a log of its decisions.
namespace quorvane::observed {

/// A fix has been decided on. Told once a fix, before the location is sent.
struct Fix {
    enum class Outcome {
        /// No location on this earth.
        invalid,
        /// Of a stopped user, and too inaccurate to tell anything.
        inaccurate,
        /// Taken before the user last moved.
        old,
        processed,
    };
    platform::Location location;
    QVLocationSource source = QVLocationSource::UNKNOWN;
    Outcome outcome = Outcome::processed;
    bool stoppedBefore = false;
    /// As before, unless the fix was processed.
    bool stoppedAfter = false;
    /// Where the fix came as far as the stop detection.
    std::optional<StopDecision> stop;
    /// Where the fix was processed.
    std::optional<SyncDecision> sync;
};

/// Tracking was switched on or off.
struct Tracking {
    enum class Cause { host, startDate, stopDate };
    bool isOn = false;
    Cause cause = Cause::host;
};

/// The timer that asks for locations. Restarting is stopping and starting.
struct UpdateTimer {
    enum class Change { started, stopped, fired };
    Change change = Change::started;
    /// Seconds.
    std::int64_t interval = 0;
};

/// One location was asked for, by the timer or by a caller.
struct LocationRequest {
    bool byTimer = false;
    /// As the manager was told with it; as it was before where the timer asks.
    std::optional<double> accuracy;
};

/// A service of the platform was started or stopped. The coarse updates keep the application running.
struct Service {
    enum class Kind { coarseUpdates, visits, significantChanges };
    Kind kind = Kind::coarseUpdates;
    bool isRunning = false;
};

/// One of the library's own geofences.
struct Geofence {
    bool isPlaced = false;
    platform::CircularRegion region;
};

/// Time in the background.
struct BackgroundGrant {
    enum class Change {
        begun,
        /// Too little time is left to begin another one.
        expiring,
        expired,
        ended,
    };
    Change change = Change::begun;
    /// 0 where none was begun.
    platform::Application::BackgroundTask task = 0;
    /// Seconds that the grant is meant for; of a begun or expiring one.
    double duration = 0;
};

/// The end of the coarse updates and of all grants.
struct Shutdown {
    enum class Change { scheduled, cancelled, done };
    Change change = Change::scheduled;
    /// Seconds until then, when scheduled.
    double delay = 0;
};

/// The callers who asked for one location were answered.
struct Answer {
    QVStatus status = QVStatus::SUCCESS;
    std::size_t callers = 0;
    bool timedOut = false;
};

/// A location on its way to the service.
struct Send {
    enum class Change {
        /// It goes in two seconds.
        scheduled,
        begun,
        /// No key is configured: nothing goes.
        dropped,
        ended,
    };
    Change change = Change::begun;
    platform::Location location;
    bool stopped = false;
    QVLocationSource source = QVLocationSource::UNKNOWN;
    bool replayed = false;
    /// When ended.
    QVStatus status = QVStatus::SUCCESS;
    bool canExit = false;
};

/// A stop that could not be sent was put aside, or is sent in the place of a fix.
struct FailedStop {
    bool isReplayed = false;
    platform::Location location;
};

/// The tracking service has its answer, and is about to hand it over.
struct Sync {
    platform::Location location;
    bool stopped = false;
    QVLocationSource source = QVLocationSource::UNKNOWN;
    bool replayed = false;
    QVStatus status = QVStatus::SUCCESS;
    /// With `SUCCESS`: how many fences are near, the place that the user is at, and what has changed.
    std::size_t fences = 0;
    std::shared_ptr<QVPlace> place;
    std::vector<std::shared_ptr<QVEvent>> events;
};

/// The platform could not give a location.
struct Failure {
    platform::LocationError error;
};

using Observation = std::variant<Fix, Tracking, UpdateTimer, LocationRequest, Service, Geofence, BackgroundGrant,
                                 Shutdown, Answer, Send, FailedStop, Sync, Failure>;

} // namespace quorvane::observed
