#include "sandbox/SeedTasks.h"

#include <array>
#include <string_view>
#include <utility>

namespace quorvane::sandbox {
namespace {

struct Campaign {
    std::string_view id;
    std::string_view title;
    std::string_view description;
};

constexpr std::array<Campaign, 5> campaigns{{
    {"campaign-shelf", "Shelf check", "See whether the shelf is tidy and full."},
    {"campaign-prices", "Price round", "Write down what five things cost."},
    {"campaign-display", "Window display", "Photograph the display in the window."},
    {"campaign-service", "Mystery visit", "Tell how you were served."},
    {"campaign-stock", "Stock count", "Scan and count what is left."},
}};

constexpr std::int64_t day = 86'400'000;

} // namespace

ObjectText makeLocation(const SeedPlace& place) {
    ObjectText location = place.address;
    location["name"] = place.name;
    location["countryCode"] = "QV";
    return location;
}

SeedTask makeTask(Chance& chance, std::int64_t number, const SeedPlace& place) {
    const auto& campaign = campaigns[static_cast<std::size_t>(number) % campaigns.size()];
    const std::int64_t created = seedTime + chance.whole(0, 300) * day;
    const ObjectText owners{{"campaign", campaign.id}, {"client", place.client}, {"user", "sandbox"}};
    ListText questions = makeQuestions(chance, number, owners);
    const bool isForAssociates = chance.oneIn(8);
    ObjectText location = makeLocation(place);
    location["confidence"] = chance.whole(0, 3);
    location["geofenceRadius"] = static_cast<double>(chance.whole(5, 20)) * 10 + 0.5;
    const auto least = static_cast<std::int64_t>(questions.size());
    SeedTask task{.key = numbered("task", number), .campaign = std::string(campaign.id)};
    task.json = {{"associatesOnly", isForAssociates},
                 {"created", created},
                 {"modified", created + day},
                 {"due", created + 3650 * day},
                 {"description", campaign.description},
                 {"key", task.key},
                 {"location", std::move(location)},
                 {"locationKey", place.key},
                 {"logo", "https://images.example.invalid/" + std::string(campaign.id) + ".png"},
                 {"nextQuestion", task.key + "-q1"},
                 {"owners", owners},
                 {"questions", std::move(questions)},
                 {"rewards", makeRewards(chance, number, owners)},
                 {"taskRequirements", ListText{}},
                 {"time", ObjectText{{"min", least}, {"max", least * 3}}},
                 {"title", std::string(campaign.title) + " at " + place.name},
                 {"version", 1}};
    if (chance.oneIn(3)) {
        task.json["claimDistanceOverride"] = static_cast<double>(chance.whole(1, 8)) / 4;
    }
    if (chance.oneIn(3)) {
        task.json["taskRequirements"] = ListText{"Keep the receipt.", "Ask before you take photographs."};
    }
    return task;
}

} // namespace quorvane::sandbox
