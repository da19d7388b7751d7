#pragma once

#include <utility>

#include "Tracking/Observed.h"

namespace quorvane {

/// Hears what tracking does, on the main thread, in the middle of it: it must not call the library.
class TrackingObserver {
public:
    TrackingObserver() = default;
    TrackingObserver(const TrackingObserver&) = delete;
    TrackingObserver& operator=(const TrackingObserver&) = delete;
    virtual ~TrackingObserver() = default;

    virtual void observe(const observed::Observation& observation) = 0;
};

/// Whom the tracking code tells. One shared object, gone with the platform in use. Main thread only.
class TrackingObservation {
public:
    [[nodiscard]] static TrackingObservation& shared();

    /// Not owned; outlives the platform in use or is taken off before. None takes the former one off.
    void setObserver(TrackingObserver* newObserver) { observer = newObserver; }

    /// Tells what @p make makes. Where nobody observes, nothing is made.
    template <class Make>
    void tell(Make&& make) const {
        if (observer != nullptr) {
            observer->observe(observed::Observation(std::forward<Make>(make)()));
        }
    }

private:
    TrackingObserver* observer = nullptr;
};

} // namespace quorvane
