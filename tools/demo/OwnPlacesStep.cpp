#include "tools/demo/OwnPlacesStep.h"

#include <algorithm>
#include <cmath>
#include <memory>
#include <numbers>
#include <string>

#include "tools/Failure.h"
#include "tools/OwnPlaces.h"
#include "tools/Text.h"
#include "tools/demo/Stage.h"

namespace quorvane::tool {
namespace {

/// Some metres to the north and to the east.
platform::Coordinate moved(const platform::Coordinate& from, double north, double east) {
    constexpr double metresPerDegree = 111'195;
    const double parallel = std::max(std::cos(from.latitude * std::numbers::pi / 180), 0.01);
    return {std::clamp(from.latitude + north / metresPerDegree, -90.0, 90.0),
            std::remainder(from.longitude + east / metresPerDegree / parallel, 360.0)};
}

std::shared_ptr<QVPlace> makePlace(const std::string& identifier, const std::string& name, const std::string& street,
                                   const platform::Coordinate& coordinate) {
    auto place = std::make_shared<QVPlace>();
    place->_id = identifier;
    place->name = name;
    place->location = std::make_shared<QVAddress>();
    place->location->address1 = street;
    place->location->coordinate = coordinate;
    return place;
}

} // namespace

AnyCodable::List storeAndFindPlaces(Stage& stage, const platform::Coordinate& near) {
    stage.heading("Places of your own, near " + coordinateText(near));
    const QVPlaceList own{
        makePlace("own-shed", "Our bicycle shed", "behind the mill", moved(near, 60, 0)),
        makePlace("own-bench", "The bench where we meet", "on the dike", moved(near, -40, 110)),
    };
    storePlaces(stage.session, own);
    stage.tell(QVStatus::SUCCESS, counted(own.size(), "place") + " stored on the device");

    ListStyle style = Stage::listStyle();
    style.own = identifiersOf(own);
    const QVPlaceList found = stage.searchPlaces(near, style);
    const auto isOwn = [&](const auto& place) { return style.own.contains(place->_id); };
    if (std::count_if(found.begin(), found.end(), isOwn) != 2) {
        throw Failure("the places that were stored are not among those that were found");
    }
    return documentOf(found, near);
}

} // namespace quorvane::tool
