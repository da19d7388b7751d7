#include "sandbox/Seed.h"

#include <algorithm>
#include <cmath>
#include <numbers>
#include <utility>

#include "JSON/JSON.h"
#include "JSON/NumberText.h"
#include "sandbox/Chance.h"
#include "sandbox/SeedPlaces.h"
#include "sandbox/SeedTasks.h"

namespace quorvane::sandbox {
namespace {

using platform::Coordinate;

/// A change of the data below changes this, so that a stored database is made anew.
constexpr int generation = 2;

constexpr double anchorSpacing = 500;
constexpr std::size_t mostAnchors = 400;
constexpr std::int64_t fewestPlaces = 60;
constexpr std::int64_t placesPerAnchor = 5;
constexpr double metresPerDegree = 111'195;

/// Points of the track, one every @p spacing metres or more.
std::vector<Coordinate> spacedOut(const std::vector<Coordinate>& points, double spacing) {
    std::vector<Coordinate> anchors;
    for (const Coordinate& point : points) {
        if (anchors.empty() || platform::distance(anchors.back(), point) >= spacing) {
            anchors.push_back(point);
        }
    }
    return anchors;
}

std::vector<Coordinate> anchorsOf(const std::vector<Coordinate>& points) {
    double spacing = anchorSpacing;
    std::vector<Coordinate> anchors = spacedOut(points, spacing);
    while (anchors.size() > mostAnchors) {
        spacing *= 2;
        anchors = spacedOut(anchors, spacing);
    }
    return anchors;
}

/// To a tenth of a metre: what a sine rounds in its last digit does not show.
double rounded(double degrees) {
    return std::round(degrees * 1e6) / 1e6;
}

Coordinate scattered(Chance& chance, const Coordinate& anchor, double farthest) {
    const double bearing = chance.fraction() * 2 * std::numbers::pi;
    const double metres = farthest * std::sqrt(chance.fraction());
    const double latitude = std::clamp(anchor.latitude + metres * std::cos(bearing) / metresPerDegree, -90.0, 90.0);
    const double parallel = std::max(0.01, std::cos(anchor.latitude * std::numbers::pi / 180));
    const double longitude = anchor.longitude + metres * std::sin(bearing) / (metresPerDegree * parallel);
    return {.latitude = rounded(latitude), .longitude = rounded(std::remainder(longitude, 360.0))};
}

} // namespace

SeedData makeSeedData(std::uint64_t seed, const std::vector<Coordinate>& points) {
    Chance chance(seed);
    const std::vector<Coordinate> anchors = anchorsOf(points);
    const auto anchorCount = static_cast<std::int64_t>(anchors.size());
    const std::int64_t placeCount = std::max(fewestPlaces, placesPerAnchor * anchorCount);
    const double farthest = anchorCount == 1 ? 3000 : 600;
    SeedData data;
    std::int64_t taskNumber = 0;
    for (std::int64_t number = 1; number <= placeCount; ++number) {
        // The first places stand one at each anchor, close by, so that nobody passes all of them at a distance.
        const bool isClose = number <= anchorCount;
        const std::int64_t anchor = isClose ? number - 1 : chance.whole(0, anchorCount - 1);
        const Coordinate coordinate =
            scattered(chance, anchors[static_cast<std::size_t>(anchor)], isClose ? 25 : farthest);
        const SeedPlace place = makePlace(chance, number, coordinate);
        data.places.push_back({.number = number, .coordinate = coordinate, .body = place.json.text()});
        const auto add = [&](const SeedTask& task) {
            data.tasks.push_back({.number = taskNumber++,
                                  .coordinate = coordinate,
                                  .body = task.json.text(),
                                  .key = task.key,
                                  .campaign = task.campaign,
                                  .placeID = place.id,
                                  .placeKey = place.key});
        };
        if (number == 1) {
            add(makeTour(place));
        }
        for (std::int64_t count = chance.whole(0, 2); count > 0; --count) {
            add(makeTask(chance, taskNumber, place));
        }
    }
    return data;
}

std::string seedName(std::uint64_t seed, const std::vector<Coordinate>& points) {
    std::string name = std::to_string(generation) + " " + std::to_string(seed);
    for (const Coordinate& point : anchorsOf(points)) {
        name += " " + json::textOf(point.latitude) + "," + json::textOf(point.longitude);
    }
    return name;
}

} // namespace quorvane::sandbox
