#include "sandbox/TaskStore.h"

#include <utility>

namespace quorvane::sandbox {
namespace {

constexpr auto claimColumns = "SELECT number, task, user, state, next, score, completed FROM claims ";

Claim claimIn(const Statement& row) {
    return {.number = row.integer(0),
            .task = row.integer(1),
            .user = row.text(2),
            .isCompleted = row.text(3) == "completed",
            .nextQuestion = row.text(4),
            .score = row.integer(5),
            .completed = row.integer(6)};
}

const char* stateOf(const Claim& claim) {
    return claim.isCompleted ? "completed" : "running";
}

} // namespace

void TaskStore::setPosition(const std::string& user, const platform::Coordinate& coordinate) {
    database.prepare("INSERT OR REPLACE INTO positions VALUES (?, ?, ?)")
        .bind(user)
        .bind(coordinate.latitude)
        .bind(coordinate.longitude)
        .run();
}

std::optional<platform::Coordinate> TaskStore::position(const std::string& user) {
    Statement row = database.prepare("SELECT latitude, longitude FROM positions WHERE user = ?");
    row.bind(user);
    return row.step() ? std::optional(platform::Coordinate{row.real(0), row.real(1)}) : std::nullopt;
}

std::map<std::string, platform::Coordinate> TaskStore::positions() {
    Statement rows = database.prepare("SELECT user, latitude, longitude FROM positions");
    std::map<std::string, platform::Coordinate> all;
    while (rows.step()) {
        all.emplace(rows.text(0), platform::Coordinate{rows.real(1), rows.real(2)});
    }
    return all;
}

std::vector<Claim> TaskStore::claims() {
    Statement rows = database.prepare(std::string(claimColumns) + "ORDER BY number");
    std::vector<Claim> all;
    while (rows.step()) {
        all.push_back(claimIn(rows));
    }
    return all;
}

std::map<std::int64_t, Claim> TaskStore::claims(const std::string& user) {
    Statement rows = database.prepare(std::string(claimColumns) + "WHERE user = ?");
    rows.bind(user);
    std::map<std::int64_t, Claim> all;
    while (rows.step()) {
        Claim claim = claimIn(rows);
        all.emplace(claim.task, std::move(claim));
    }
    return all;
}

std::optional<Claim> TaskStore::claim(std::int64_t task, const std::string& user) {
    Statement row = database.prepare(std::string(claimColumns) + "WHERE task = ? AND user = ?");
    row.bind(task).bind(user);
    return row.step() ? std::optional(claimIn(row)) : std::nullopt;
}

void TaskStore::add(Claim& claim, std::int64_t now) {
    Statement row = database.prepare(
        "INSERT INTO claims (task, user, state, next, score, claimed, completed) VALUES (?, ?, ?, ?, ?, ?, ?) "
        "RETURNING number");
    row.bind(claim.task)
        .bind(claim.user)
        .bind(stateOf(claim))
        .bind(claim.nextQuestion)
        .bind(claim.score)
        .bind(now)
        .bind(claim.completed);
    row.step();
    claim.number = row.integer(0);
    row.run();
}

void TaskStore::update(const Claim& claim) {
    database.prepare("UPDATE claims SET state = ?, next = ?, score = ?, completed = ? WHERE number = ?")
        .bind(stateOf(claim))
        .bind(claim.nextQuestion)
        .bind(claim.score)
        .bind(claim.completed)
        .bind(claim.number)
        .run();
}

std::set<std::string> TaskStore::answered(const Claim& claim) {
    Statement rows = database.prepare("SELECT question FROM responses WHERE claim = ?");
    rows.bind(claim.number);
    std::set<std::string> keys;
    while (rows.step()) {
        keys.insert(rows.text(0));
    }
    return keys;
}

std::optional<StoredResponse> TaskStore::response(const Claim& claim, const std::string& question) {
    Statement row = database.prepare("SELECT content, body, photo FROM responses WHERE claim = ? AND question = ?");
    row.bind(claim.number).bind(question);
    return row.step() ? std::optional(StoredResponse{row.text(0), row.text(1), row.text(2)}) : std::nullopt;
}

std::int64_t TaskStore::nextResponse() {
    Statement row = database.prepare("SELECT coalesce(max(number), 0) + 1 FROM responses");
    row.step();
    return row.integer(0);
}

void TaskStore::add(const Claim& claim, std::int64_t number, const std::string& question,
                    const StoredResponse& response) {
    database.prepare("INSERT INTO responses VALUES (?, ?, ?, ?, ?, ?)")
        .bind(number)
        .bind(claim.number)
        .bind(question)
        .bind(response.content)
        .bind(response.body)
        .bind(response.photo)
        .run();
}

std::vector<NumberedResponse> TaskStore::responses(std::int64_t number, std::int64_t most) {
    Statement rows = database.prepare(
        "SELECT number, claim, content, body, photo FROM responses WHERE number > ? ORDER BY number LIMIT ?");
    rows.bind(number).bind(most);
    std::vector<NumberedResponse> all;
    while (rows.step()) {
        all.push_back({rows.integer(0), rows.integer(1), {rows.text(2), rows.text(3), rows.text(4)}});
    }
    return all;
}

void TaskStore::add(const std::string& identifier, const Photo& photo) {
    database.prepare("INSERT INTO photos VALUES (?, ?, ?)")
        .bind(identifier)
        .bind(photo.type)
        .bindBytes(photo.bytes)
        .run();
}

std::optional<Photo> TaskStore::photo(const std::string& identifier) {
    Statement row = database.prepare("SELECT type, bytes FROM photos WHERE id = ?");
    row.bind(identifier);
    return row.step() ? std::optional(Photo{.type = row.text(0), .bytes = row.bytes(1)}) : std::nullopt;
}

} // namespace quorvane::sandbox
