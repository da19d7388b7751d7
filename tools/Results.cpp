#include "tools/Results.h"

#include <algorithm>
#include <optional>
#include <span>
#include <string>
#include <utility>
#include <vector>

#include "JSON/JSON.h"
#include "JSON/RawValues.h"
#include "Tasks/QVTaskState.h"
#include "tools/Table.h"
#include "tools/Terminal.h"
#include "tools/Text.h"

namespace quorvane::tool {
namespace {

std::optional<double> distanceOf(const QVPlace& place, const platform::Coordinate& point) {
    if (!place.location || !place.location->coordinate) {
        return std::nullopt;
    }
    return platform::distance(point, *place.location->coordinate);
}

/// Street and town; the library's own text of an address keeps the separators of absent parts.
std::string addressText(const QVAddress* address) {
    std::string text;
    if (address != nullptr) {
        for (const auto* const part : {&address->address1, &address->city}) {
            if (*part && !(*part)->empty()) {
                text += (text.empty() ? "" : ", ") + **part;
            }
        }
    }
    return text;
}

std::string nameOf(const QVReward& reward) {
    if (reward.barcode && reward.barcode->alternateText) {
        return *reward.barcode->alternateText;
    }
    if (reward.isRandomDraw.value_or(false)) {
        return "a draw";
    }
    return reward.message && reward.message->header ? *reward.message->header : reward.key.value_or("a reward");
}

std::string rewardsText(const QVTask& task) {
    std::string text;
    for (const auto& reward : task.rewards) {
        text += (text.empty() ? "" : ", ") + rewardText(*reward);
    }
    return text;
}

template <class Item>
std::span<const Item> beginningOf(const std::vector<Item>& list, const ListStyle& style) {
    return std::span(list).first(std::min(list.size(), style.mostRows));
}

void print(const Table& table, std::size_t count, Terminal& terminal, const ListStyle& style) {
    if (count > 0) {
        table.print(terminal, style.indent);
    }
    if (count > style.mostRows) {
        terminal.line(std::string(style.indent, ' ') +
                      terminal.painted("and " + std::to_string(count - style.mostRows) + " more", Paint::faint));
    }
}

} // namespace

std::string rewardText(const QVReward& reward) {
    const std::string state = reward.state.value_or("");
    return nameOf(reward) + (state.empty() ? "" : " (" + state + ")");
}

void printPlaces(const QVPlaceList& places, const platform::Coordinate& point, Terminal& terminal,
                 const ListStyle& style) {
    Table table({{"distance", 10, true}, {"place", 34}, {"address", 44}, {"own", 3}});
    for (const auto& place : beginningOf(places, style)) {
        const std::optional<double> metres = distanceOf(*place, point);
        table.add({metres ? metresText(*metres) : "?", place->name, addressText(place->location.get()),
                   style.own.contains(place->_id) ? "yes" : ""});
    }
    print(table, places.size(), terminal, style);
}

void printTasks(const QVTaskList& tasks, Terminal& terminal, const ListStyle& style) {
    Table table({{"no.", 4, true}, {"task", 44}, {"distance", 20, true}, {"state", 12}, {"rewards", 40}});
    std::size_t number = 0;
    for (const auto& task : beginningOf(tasks, style)) {
        table.add({std::to_string(++number), task->title.value_or(task->key.value_or("untitled")),
                   task->distanceText(false), std::string(json::rawValue(task->state)), rewardsText(*task)});
    }
    print(table, tasks.size(), terminal, style);
}

AnyCodable::List documentOf(const QVPlaceList& places, const platform::Coordinate& point) {
    AnyCodable::List list;
    for (const auto& place : places) {
        AnyCodable::Dictionary entry{{"place", json::readExactly(json::encode(*place))}};
        if (const std::optional<double> metres = distanceOf(*place, point)) {
            entry["distance"] = *metres;
        }
        list.emplace_back(std::move(entry));
    }
    return list;
}

AnyCodable::List documentOf(const QVTaskList& tasks) {
    AnyCodable::List list;
    for (const auto& task : tasks) {
        list.emplace_back(AnyCodable::Dictionary{{"distanceText", task->distanceText(false)},
                                                 {"task", json::readExactly(json::encode(*task))}});
    }
    return list;
}

AnyCodable::Dictionary documentOf(const platform::Coordinate& coordinate) {
    return {{"latitude", coordinate.latitude}, {"longitude", coordinate.longitude}};
}

} // namespace quorvane::tool
