#include "Platform/Qt/KeptServices.h"

#include <optional>
#include <string>
#include <utility>
#include <variant>

#include "Platform/PreferencesStore.h"

namespace quorvane::platform::qt {
namespace {

using Kept = DerivedLocations::Kept;

template <class Value>
std::optional<Value> valueIn(const AnyCodable::Dictionary& dictionary, std::string_view name) {
    const auto found = dictionary.find(name);
    const Value* const value = found == dictionary.end() ? nullptr : std::get_if<Value>(&found->second.value);
    return value == nullptr ? std::nullopt : std::optional<Value>(*value);
}

AnyCodable::Dictionary entryFor(const CircularRegion& region, RegionState state) {
    AnyCodable::Dictionary entry{{"identifier", region.identifier},
                                 {"latitude", region.center.latitude},
                                 {"longitude", region.center.longitude},
                                 {"radius", region.radius}};
    if (state != RegionState::unknown) {
        entry["inside"] = state == RegionState::inside;
    }
    return entry;
}

void resume(RegionMonitor& regions, const AnyCodable& entry) {
    const auto* const values = std::get_if<AnyCodable::Dictionary>(&entry.value);
    if (values == nullptr) {
        return;
    }
    const auto identifier = valueIn<std::string>(*values, "identifier");
    const CircularRegion region{identifier.value_or(""),
                                {valueIn<double>(*values, "latitude").value_or(Coordinate::invalid.latitude),
                                 valueIn<double>(*values, "longitude").value_or(Coordinate::invalid.longitude)},
                                valueIn<double>(*values, "radius").value_or(0)};
    if (identifier && region.center.isValid() && region.radius > 0 && regions.regions().size() < RegionMonitor::most) {
        const auto inside = valueIn<bool>(*values, "inside");
        const RegionState side = inside.value_or(false) ? RegionState::inside : RegionState::outside;
        regions.resume(region, inside ? side : RegionState::unknown);
    }
}

} // namespace

std::shared_ptr<Kept> KeptServices::stored(const PreferencesStore& preferences) {
    auto kept = std::make_shared<Kept>();
    const AnyCodable::Dictionary dictionary = preferences.dictionary(key).value_or(AnyCodable::Dictionary());
    if (valueIn<bool>(dictionary, "permitted").value_or(false)) {
        kept->authorization = LocationAuthorization::always;
    }
    for (const AnyCodable& entry : valueIn<AnyCodable::List>(dictionary, "regions").value_or(AnyCodable::List())) {
        resume(kept->regions, entry);
    }
    return kept;
}

KeptServices::KeptServices(PreferencesStore& thePreferences)
    : preferences(thePreferences),
      written(preferences.dictionary(key).value_or(
          AnyCodable::Dictionary{{"permitted", false}, {"regions", AnyCodable::List()}})) {}

void KeptServices::keep(const RegionMonitor& monitored, std::optional<bool> answer) {
    AnyCodable::List regions;
    for (const CircularRegion& region : monitored.regions()) {
        regions.emplace_back(entryFor(region, monitored.state(region.identifier)));
    }
    const bool isPermitted = answer.value_or(valueIn<bool>(written, "permitted").value_or(false));
    AnyCodable::Dictionary now{{"permitted", isPermitted}, {"regions", std::move(regions)}};
    if (now != written) {
        written = std::move(now);
        preferences.setDictionary(key, written);
    }
}

} // namespace quorvane::platform::qt
