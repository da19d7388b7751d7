#include <algorithm>

#include "Models/Equality.h"
#include "Tracking/QVTrackingService.h"

namespace quorvane {
namespace {

using Type = QVEvent::EventType;

/// The coordinate by which places are told apart; none where there is none.
std::optional<platform::Coordinate> coordinateOf(const QVPlace& place) {
    return place.location ? place.location->coordinate : std::nullopt;
}

template <class Geometry>
const Geometry* as(const QVGeofence& fence) {
    return dynamic_cast<const Geometry*>(fence.geometry.get());
}

/// Whether both fences have circles that are equal.
bool haveEqualCircles(const QVGeofence& a, const QVGeofence& b) {
    const auto* const first = as<QVCircleGeometry>(a);
    const auto* const second = as<QVCircleGeometry>(b);
    return first != nullptr && second != nullptr && first->radius == second->radius &&
           haveEqualObjects(first->center, second->center);
}

bool haveEqualPolygons(const QVGeofence& a, const QVGeofence& b) {
    const auto* const first = as<QVPolygonGeometry>(a);
    const auto* const second = as<QVPolygonGeometry>(b);
    if (first == nullptr || second == nullptr || first->coordinates.has_value() != second->coordinates.has_value()) {
        return false;
    }
    return !first->coordinates || haveEqualObjects(*first->coordinates, *second->coordinates);
}

/// Whether a fence has no shape at all: no geometry, or the empty one that decoding leaves.
bool isShapeless(const QVGeofence& fence) {
    return as<QVCircleGeometry>(fence) == nullptr && as<QVPolygonGeometry>(fence) == nullptr;
}

bool haveEqualGeometry(const QVGeofence& a, const QVGeofence& b) {
    const bool areBothShapeless = isShapeless(a) && isShapeless(b) && !a.geometry == !b.geometry;
    return areBothShapeless || haveEqualCircles(a, b) || haveEqualPolygons(a, b);
}

bool areEqual(const std::shared_ptr<QVGeofence>& a, const std::shared_ptr<QVGeofence>& b) {
    if (a == b || !a || !b) {
        return a == b;
    }
    return a->_description == b->_description && a->tag == b->tag && a->externalId == b->externalId &&
           haveEqualGeometry(*a, *b);
}

std::shared_ptr<QVGeofence> firstOf(const QVTrackingService::FenceList& fences) {
    return fences.empty() ? nullptr : fences.front();
}

} // namespace

QVTrackingService::EventList QVTrackingService::getEvents(const platform::Location& location, bool stopped,
                                                          const FenceList& fences,
                                                          const std::shared_ptr<QVPlace>& place) const {
    EventList events;
    const auto add = [&](Type type) -> QVEvent& {
        const auto event = std::make_shared<QVEvent>();
        event->type = type;
        event->location = location;
        event->place = place;
        events.push_back(event);
        return *event;
    };

    if (wasStopped && !stopped) {
        add(Type::USER_STARTED_TRAVELING);
    } else if (!wasStopped && stopped) {
        add(Type::USER_STOPPED_TRAVELING);
    }

    if (!lastPlace && place) {
        add(Type::USER_ENTERED_PLACE);
    } else if (lastPlace && !place) {
        add(Type::USER_EXITED_PLACE);
    } else if (!arePlacesEqual(lastPlace, place)) {
        // In this order, and both with the new place.
        add(Type::USER_ENTERED_PLACE);
        add(Type::USER_EXITED_PLACE);
    }

    if (fences.size() > lastFences.size()) {
        add(Type::USER_ENTERED_GEOFENCE).geofence = firstOf(fences);
    } else if (fences.size() < lastFences.size()) {
        add(Type::USER_EXITED_GEOFENCE).geofence = firstOf(lastFences);
    } else if (!areFencesEqual(lastFences, fences)) {
        add(Type::USER_EXITED_GEOFENCE).geofence = firstOf(lastFences);
        add(Type::USER_ENTERED_GEOFENCE).geofence = firstOf(fences);
    }
    return events;
}

bool QVTrackingService::arePlacesEqual(const std::shared_ptr<QVPlace>& first, const std::shared_ptr<QVPlace>& second) {
    if (!first || !second) {
        return !first && !second;
    }
    return coordinateOf(*first) == coordinateOf(*second);
}

bool QVTrackingService::areFencesEqual(const FenceList& first, const FenceList& second) {
    return std::equal(first.begin(), first.end(), second.begin(), second.end(), &areEqual);
}

} // namespace quorvane
