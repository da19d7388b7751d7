#include "sandbox/SeedPlaces.h"

#include <array>
#include <optional>
#include <string_view>

namespace quorvane::sandbox {
namespace {

using Text = std::string_view;

/// What one kind of place sells, is called and belongs to.
struct Trade {
    Text word;
    Text category;
    Text group;
    /// Empty where each is its own house.
    Text chain;
    Text slug;
};

constexpr std::array<Trade, 10> trades{{
    {"Grocery", "grocery", "food", "Larkmere Grocers", "larkmere-grocers"},
    {"Bakery", "bakery", "food", "Golden Crumb", "golden-crumb"},
    {"Pharmacy", "pharmacy", "health", "Willow & Reed", "willow-and-reed"},
    {"Hardware", "hardware", "home", "Anvil Yard", "anvil-yard"},
    {"Books", "books", "leisure", "", ""},
    {"Café", "cafe", "food", "", ""},
    {"Garden Centre", "garden", "home", "Fern Hollow", "fern-hollow"},
    {"Fuel Station", "fuel", "travel", "Northline Fuel", "northline-fuel"},
    {"Inn", "lodging", "travel", "", ""},
    {"Cycle Shop", "sports", "leisure", "", ""},
}};

constexpr std::array<Text, 16> names{"Amber",      "Birch",    "Cobble", "Dragonfly", "Elder",   "Foxglove",
                                     "Grey Heron", "Hazel",    "Ivy",    "Jasper",    "Kestrel", "Lindenhöhe",
                                     "Maple",      "Nightjar", "Otter",  "Žerjav"};
constexpr std::array<Text, 12> streets{"Mill Lane",   "Station Road",  "Lake Street",   "Church Row",
                                       "Orchard Way", "Bridge Street", "Old Market",    "Quarry Road",
                                       "Heron Walk",  "Meadow Lane",   "Harbour Steps", "Školska ulica"};
constexpr std::array<Text, 6> cities{"Eastmere", "Kirkhollow", "Sable Ford", "Upper Thorne", "Vinje", "Wrenfield"};
constexpr std::array<Text, 3> states{"Lowland", "Hillshire", "Coast"};

ObjectText makeAddress(Chance& chance, Text city, const platform::Coordinate& coordinate) {
    // Drawn one by one: the order of two draws in one expression is the compiler's.
    const std::string number = std::to_string(chance.whole(1, 180));
    ObjectText address{{"address1", number + " " + std::string(chance.pick(streets))},
                       {"city", city},
                       {"country", "QV"},
                       {"latitude", coordinate.latitude},
                       {"longitude", coordinate.longitude},
                       {"state", chance.pick(states)},
                       {"zipCode", chance.digits(5)}};
    if (chance.oneIn(4)) {
        address["address2"] = "Suite " + std::to_string(chance.whole(1, 40));
    }
    if (!chance.oneIn(5)) {
        address["phoneNumber"] = "+00 555 01" + chance.digits(2);
    }
    return address;
}

ObjectText makeMetadata(Chance& chance) {
    return {{"openOnSunday", chance.oneIn(2)},
            {"parkingSpaces", chance.whole(0, 120)},
            {"rating", static_cast<double>(chance.whole(5, 24)) / 5 + 0.1},
            {"note", "Invented for the sandbox"},
            {"doors", ListText{"front", "yard"}},
            {"hours", ObjectText{{"from", 8}, {"to", chance.whole(17, 22)}}}};
}

ObjectText makeChain(Chance& chance, const Trade& trade) {
    ObjectText chain{{"name", trade.chain}, {"slug", trade.slug}};
    if (!chance.oneIn(3)) {
        chain["externalId"] = "ext-" + std::string(trade.slug);
        chain["metadata"] = ObjectText{{"branches", chance.whole(3, 400)}, {"isFranchise", true}};
    }
    return chain;
}

} // namespace

std::string numbered(const std::string& word, std::int64_t number) {
    std::string digits = std::to_string(number);
    digits.insert(0, digits.size() < 5 ? 5 - digits.size() : 0, '0');
    return word + "-" + digits;
}

SeedPlace makePlace(Chance& chance, std::int64_t number, const platform::Coordinate& coordinate) {
    const Trade& trade = chance.pick(trades);
    const Text city = chance.pick(cities);
    const bool isBranch = !trade.chain.empty();
    const std::string ownName = std::string(chance.pick(names)) + " " + std::string(trade.word);
    SeedPlace place{.number = number,
                    .id = numbered("place", number),
                    .key = numbered("pk", number),
                    .client = isBranch ? std::string(trade.slug) : "independent",
                    .coordinate = coordinate,
                    .address = makeAddress(chance, city, coordinate)};
    place.name = isBranch ? std::string(trade.chain) + " " + std::string(city) : ownName;
    place.json = place.address;
    place.json.add({{"id", place.id},
                    {"key", place.key},
                    {"name", place.name},
                    {"active", !chance.oneIn(12)},
                    {"categories", ListText{trade.category, "shop"}},
                    {"group", trade.group},
                    {"clientKey", place.client},
                    {"owners", ObjectText{{"client", place.client}}},
                    {"dragonId", "D-" + chance.digits(8)}});
    if (isBranch) {
        place.json["chain"] = makeChain(chance, trade);
        place.json["clientReference"] = "branch " + std::to_string(number);
    }
    if (chance.oneIn(2)) {
        place.json["metadata"] = makeMetadata(chance);
    }
    if (chance.oneIn(3)) {
        place.json["emails"] = ListText{place.id + "@example.invalid"};
    }
    return place;
}

} // namespace quorvane::sandbox
