#include "Search/PlaceSort.h"

#include <algorithm>
#include <cstdint>
#include <limits>
#include <span>

namespace quorvane {
namespace {

/// A place's distance and where it stood. Not a number stands for a place without a coordinate: such a distance
/// compares as neither less nor greater than any other, which is just the order asked for.
struct Entry {
    double distance;
    std::uint32_t index;
};

double distanceTo(const QVPlace* place, const platform::Coordinate& origin) {
    if (place == nullptr || !place->location || !place->location->coordinate) {
        return std::numeric_limits<double>::quiet_NaN();
    }
    return platform::distance(origin, *place->location->coordinate);
}

/// Sorts @p entries with @p spare, of at least half their number, as room to merge in.
void mergeSort(std::span<Entry> entries, std::span<Entry> spare) {
    if (entries.size() < 2) {
        return;
    }
    const std::size_t middle = entries.size() / 2;
    mergeSort(entries.first(middle), spare);
    mergeSort(entries.subspan(middle), spare);

    const std::span<Entry> left = spare.first(middle);
    std::ranges::copy(entries.first(middle), left.begin());
    auto nextLeft = left.begin();
    auto nextRight = entries.begin() + static_cast<std::ptrdiff_t>(middle);
    auto out = entries.begin();
    while (nextLeft != left.end() && nextRight != entries.end()) {
        *out++ = nextRight->distance < nextLeft->distance ? *nextRight++ : *nextLeft++;
    }
    std::copy(nextLeft, left.end(), out);
}

} // namespace

void sortByDistance(QVPlaceList& places, const platform::Location& origin) {
    std::vector<Entry> entries;
    entries.reserve(places.size());
    for (const auto& place : places) {
        entries.push_back({distanceTo(place.get(), origin.coordinate), static_cast<std::uint32_t>(entries.size())});
    }
    std::vector<Entry> spare(entries.size() / 2);
    mergeSort(entries, spare);

    QVPlaceList sorted;
    sorted.reserve(places.size());
    for (const Entry& entry : entries) {
        sorted.push_back(std::move(places[entry.index]));
    }
    places = std::move(sorted);
}

} // namespace quorvane
