#include "sandbox/PlaceStore.h"

#include <utility>

#include "JSON/NumberText.h"
#include "sandbox/AreaSearch.h"

namespace quorvane::sandbox {
namespace {

constexpr double milesPerMetre = 0.6213712 / 1000;

/// The stored object with what depends on the request in front.
std::string taskAt(double metres, const std::string& state, const std::string& body) {
    return R"({"distance":)" + json::textOf(metres * milesPerMetre) + R"(,"state":")" + state + "\"," + body.substr(1);
}

template <class Stored>
void insertArea(Database& database, const std::string& table, const Stored& item) {
    database.prepare("INSERT INTO " + table + "_area VALUES (?, ?, ?, ?, ?)")
        .bind(item.number)
        .bind(item.coordinate.latitude)
        .bind(item.coordinate.latitude)
        .bind(item.coordinate.longitude)
        .bind(item.coordinate.longitude)
        .run();
}

std::vector<std::string> withoutDistance(Statement& rows) {
    std::vector<std::string> tasks;
    while (rows.step()) {
        tasks.push_back(taskAt(0, "generated", rows.text(0)));
    }
    return tasks;
}

} // namespace

void PlaceStore::replace(const std::vector<StoredPlace>& places, const std::vector<StoredTask>& tasks,
                         const std::string& origin) {
    Transaction transaction(database);
    database.execute("DELETE FROM places; DELETE FROM places_area; DELETE FROM tasks; DELETE FROM tasks_area");
    for (const StoredPlace& place : places) {
        database.prepare("INSERT INTO places VALUES (?, ?, ?, ?)")
            .bind(place.number)
            .bind(place.coordinate.latitude)
            .bind(place.coordinate.longitude)
            .bind(place.body)
            .run();
        insertArea(database, "places", place);
    }
    for (const StoredTask& task : tasks) {
        database.prepare("INSERT INTO tasks VALUES (?, ?, ?, ?, 'generated', ?, ?, ?)")
            .bind(task.number)
            .bind(task.coordinate.latitude)
            .bind(task.coordinate.longitude)
            .bind(task.body)
            .bind(task.campaign)
            .bind(task.placeID)
            .bind(task.placeKey)
            .run();
        insertArea(database, "tasks", task);
    }
    database.prepare("INSERT OR REPLACE INTO settings VALUES ('origin', ?)").bind(origin).run();
    transaction.commit();
}

std::string PlaceStore::origin() {
    const Transaction transaction(database);
    Statement row = database.prepare("SELECT value FROM settings WHERE name = 'origin'");
    return row.step() ? row.text(0) : std::string();
}

std::vector<std::string> PlaceStore::places(const Circle& circle) {
    const Transaction transaction(database);
    std::vector<std::string> bodies;
    for (auto& [number, place] :
         findWithin(database, "places", circle.center, circle.radius, circle.minimum.value_or(-1))) {
        bodies.push_back(std::move(place.body));
    }
    return bodies;
}

std::vector<std::string> PlaceStore::tasks(const Circle& circle) {
    const Transaction transaction(database);
    std::vector<std::string> bodies;
    for (const auto& [number, task] : findWithin(database, "tasks", circle.center, circle.radius,
                                                 circle.minimum.value_or(-1), "t.state = 'generated'")) {
        bodies.push_back(taskAt(task.distance, "generated", task.body));
    }
    return bodies;
}

std::vector<std::string> PlaceStore::tasksOfCampaign(const std::string& campaign) {
    const Transaction transaction(database);
    Statement rows = database.prepare("SELECT body FROM tasks WHERE state = 'generated' AND campaign = ? ORDER BY id");
    rows.bind(campaign);
    return withoutDistance(rows);
}

std::vector<std::string> PlaceStore::tasksOfPlace(const std::string& place) {
    const Transaction transaction(database);
    Statement rows = database.prepare(
        "SELECT body FROM tasks WHERE state = 'generated' AND (place_id = ?1 OR place_key = ?1) ORDER BY id");
    rows.bind(place);
    return withoutDistance(rows);
}

} // namespace quorvane::sandbox
