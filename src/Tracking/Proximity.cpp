#include <optional>

#include "API/QuorvaneAPI.h"
#include "Core/Configured.h"
#include "Search/SearchEndpoints.h"
#include "Tracking/QVTrackingService.h"

namespace quorvane {
namespace {

/// Whether @p place has a point that lies within the radius of @p location. What cannot be measured does not.
bool isNear(const QVPlace& place, const platform::Location& location, double radius) {
    return place.location && place.location->coordinate &&
           *place.location->coordinate != platform::Coordinate::invalid &&
           platform::distance(*place.location->coordinate, location.coordinate) <= radius;
}

} // namespace

void QVTrackingService::getProximityInfo(const platform::Location& location, ProximityCompletion completion) {
    if (!isConfigured()) {
        completion(QVStatus::ERROR_PUBLISHABLE_KEY, {}, nullptr);
        return;
    }
    const SearchPlacesEndpoint endpoint(location, searchRadius, std::nullopt, std::nullopt, std::nullopt, std::nullopt,
                                        0);
    QuorvaneAPI::shared().request(
        endpoint, [location, completion = std::move(completion)](
                      QVStatus status, const auto&, const std::shared_ptr<JSONResponseList<QVPlace>>& found) {
            FenceList fences;
            std::shared_ptr<QVPlace> first;
            if (status == QVStatus::SUCCESS && found) {
                for (const std::shared_ptr<QVPlace>& place : found->data) {
                    if (isNear(*place, location, proximityRadius)) {
                        fences.push_back(placeToFence(*place));
                        first = first ? first : place;
                    }
                }
            }
            completion(status, fences, first);
        });
}

std::shared_ptr<QVGeofence> QVTrackingService::placeToFence(const QVPlace& place) {
    const auto circle = std::make_shared<QVCircleGeometry>();
    if (place.location && place.location->coordinate) {
        circle->center = std::make_shared<QVCoordinate>(*place.location->coordinate);
    }
    circle->radius = fenceRadius;

    auto fence = std::make_shared<QVGeofence>("", place.name);
    fence->externalId = place._id;
    fence->geometry = circle;
    fence->tag = "place";
    return fence;
}

} // namespace quorvane
