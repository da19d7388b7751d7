#include "sandbox/PlaceStore.h"

#include <utility>

#include "sandbox/AreaSearch.h"

namespace quorvane::sandbox {
namespace {

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

constexpr auto taskColumns = "SELECT id, body, state FROM tasks ";

FoundTask taskIn(const Statement& row) {
    return {.number = row.integer(0), .body = row.text(1), .state = row.text(2)};
}

std::vector<FoundTask> tasksIn(Statement& rows) {
    std::vector<FoundTask> tasks;
    while (rows.step()) {
        tasks.push_back(taskIn(rows));
    }
    return tasks;
}

} // namespace

void PlaceStore::replace(const std::vector<StoredPlace>& places, const std::vector<StoredTask>& tasks,
                         const std::string& origin) {
    Transaction transaction(database);
    database.execute(
        "DELETE FROM places; DELETE FROM places_area; DELETE FROM tasks; DELETE FROM tasks_area; "
        "DELETE FROM positions; DELETE FROM claims; DELETE FROM responses; DELETE FROM photos");
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
        database.prepare("INSERT INTO tasks VALUES (?, ?, ?, ?, ?, ?, ?, ?, ?)")
            .bind(task.number)
            .bind(task.coordinate.latitude)
            .bind(task.coordinate.longitude)
            .bind(task.body)
            .bind(task.key)
            .bind(task.state)
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

PlaceStore::Traces PlaceStore::traces() {
    const Transaction transaction(database);
    Statement row = database.prepare(
        "SELECT (SELECT COUNT(*) FROM claims), (SELECT COUNT(*) FROM responses), (SELECT COUNT(*) FROM photos)");
    row.step();
    return {.claims = row.integer(0), .responses = row.integer(1), .photos = row.integer(2)};
}

std::vector<std::string> PlaceStore::allPlaces() {
    const Transaction transaction(database);
    Statement rows = database.prepare("SELECT body FROM places ORDER BY id");
    std::vector<std::string> bodies;
    while (rows.step()) {
        bodies.push_back(rows.text(0));
    }
    return bodies;
}

std::vector<FoundTask> PlaceStore::allTasks() {
    const Transaction transaction(database);
    Statement rows = database.prepare(std::string(taskColumns) + "ORDER BY id");
    return tasksIn(rows);
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

std::vector<FoundTask> PlaceStore::tasks(const Circle& circle) {
    const Transaction transaction(database);
    std::vector<FoundTask> tasks;
    for (auto& [number, task] : findWithin(database, "tasks", circle.center, circle.radius, circle.minimum.value_or(-1),
                                           "t.state = 'generated'")) {
        tasks.push_back(
            {.number = number, .metres = task.distance, .body = std::move(task.body), .state = "generated"});
    }
    return tasks;
}

std::vector<FoundTask> PlaceStore::tasksOfCampaign(const std::string& campaign) {
    const Transaction transaction(database);
    Statement rows =
        database.prepare(std::string(taskColumns) + "WHERE state = 'generated' AND campaign = ? ORDER BY id");
    rows.bind(campaign);
    return tasksIn(rows);
}

std::vector<FoundTask> PlaceStore::tasksOfPlace(const std::string& place) {
    const Transaction transaction(database);
    Statement rows = database.prepare(std::string(taskColumns) +
                                      "WHERE state = 'generated' AND (place_id = ?1 OR place_key = ?1) ORDER BY id");
    rows.bind(place);
    return tasksIn(rows);
}

std::optional<FoundTask> PlaceStore::task(const std::string& key) {
    const Transaction transaction(database);
    Statement row = database.prepare(std::string(taskColumns) + "WHERE key = ?");
    row.bind(key);
    return row.step() ? std::optional(taskIn(row)) : std::nullopt;
}

std::optional<FoundTask> PlaceStore::task(std::int64_t number) {
    const Transaction transaction(database);
    Statement row = database.prepare(std::string(taskColumns) + "WHERE id = ?");
    row.bind(number);
    return row.step() ? std::optional(taskIn(row)) : std::nullopt;
}

} // namespace quorvane::sandbox
