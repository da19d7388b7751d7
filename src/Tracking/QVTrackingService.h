#pragma once

#include <functional>
#include <memory>
#include <vector>

#include "Core/Enumerations.h"
#include "Core/QVStatus.h"
#include "Core/SharedService.h"
#include "Models/QVGeofence.h"
#include "Places/QVPlace.h"
#include "Platform/Location.h"
#include "Platform/Platform.h"
#include "Tracking/QVEvent.h"
#include "Tracking/QVTrackingResponse.h"

namespace quorvane {

class TrackingObservation;

/// Turns a location that is synced into events and a user. Main thread only.
///
/// It remembers, in memory, the fences and the place that the last successful sync found, and whether the user was
/// stopped then; events are what has changed since.
class QVTrackingService : public SharedService<QVTrackingService> {
public:
    using FenceList = std::vector<std::shared_ptr<QVGeofence>>;
    using EventList = std::vector<std::shared_ptr<QVEvent>>;
    /// A status, and with `SUCCESS` the events and the user; null otherwise.
    using TrackCompletion = std::function<void(QVStatus, const std::shared_ptr<QVTrackingResponse>&)>;
    /// A status, the fences of the places near by, and the first of these places; empty and null without `SUCCESS`.
    using ProximityCompletion = std::function<void(QVStatus, const FenceList&, const std::shared_ptr<QVPlace>&)>;

    /// Metres around a location within which the service is asked for places.
    static constexpr int searchRadius = 5000;
    /// Metres from a location within which a place is near; a place exactly that far away is.
    static constexpr double proximityRadius = 300.0;
    /// Metres.
    static constexpr double fenceRadius = 5000.0;

    explicit QVTrackingService(platform::Platform& platform);

    /// Syncs @p location: finds the places around it, by one request, and derives the events. With `SUCCESS` the
    /// delegate gets `onLocationUpdated`, and `onEventsReceived` where there are events, before @p completion.
    ///
    /// Answers once, on the main queue; `ERROR_PUBLISHABLE_KEY` comes before this returns. A stopped location that
    /// fails, unless it is @p replayed, is stored for a replay.
    void track(const platform::Location& location, bool stopped, QVLocationSource source, bool replayed,
               TrackCompletion completion);

    /// The places within `proximityRadius` of @p location, in the service's order. Answers as `track`.
    void getProximityInfo(const platform::Location& location, ProximityCompletion completion);

    /// What has changed since the last successful sync: travelling, then the place, then the geofences. Changes
    /// nothing.
    [[nodiscard]] EventList getEvents(const platform::Location& location, bool stopped, const FenceList& fences,
                                      const std::shared_ptr<QVPlace>& place) const;

    /// By coordinate alone and without any tolerance: neither identifiers nor names count. None equals none.
    [[nodiscard]] static bool arePlacesEqual(const std::shared_ptr<QVPlace>& first,
                                             const std::shared_ptr<QVPlace>& second);

    /// Whether both lists are of one length and have equal geofences at each index: equal in description, tag, external
    /// identifier and geometry.
    [[nodiscard]] static bool areFencesEqual(const FenceList& first, const FenceList& second);

    /// A circle of `fenceRadius` around a place, with its name as the description and its identifier as `externalId`.
    [[nodiscard]] static std::shared_ptr<QVGeofence> placeToFence(const QVPlace& place);

private:
    [[nodiscard]] std::shared_ptr<QVUser> userRecord(const platform::Location& location, bool stopped) const;
    void finish(const platform::Location& location, const std::shared_ptr<QVTrackingResponse>& response);

    platform::Platform& platform;
    const TrackingObservation& observation;
    FenceList lastFences;
    std::shared_ptr<QVPlace> lastPlace;
    bool wasStopped = false;
};

} // namespace quorvane
