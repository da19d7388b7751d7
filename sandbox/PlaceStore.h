#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <vector>

#include "Platform/Location.h"
#include "sandbox/Database.h"

namespace quorvane::sandbox {

/// A place or task as it is stored: its JSON object as text, without what depends on the request.
struct StoredPlace {
    std::int64_t number = 0;
    platform::Coordinate coordinate;
    std::string body;
};

struct StoredTask {
    std::int64_t number = 0;
    platform::Coordinate coordinate;
    /// Without "distance" and "state".
    std::string body;
    /// No two tasks have the same.
    std::string key;
    /// "generated", or "cancelled", which no search finds.
    std::string state = "generated";
    std::string campaign;
    std::string placeID;
    std::string placeKey;
};

/// A task with its distance from where one searched; 0 without a point to measure from.
struct FoundTask {
    std::int64_t number = 0;
    double metres = 0;
    std::string body;
    std::string state;
};

/// Where one searches: farther than `minimum` metres when it is given, and at most `radius` away.
struct Circle {
    platform::Coordinate center;
    double radius = 0;
    std::optional<double> minimum;
};

/// The places and tasks of the service. Safe from any thread. Lists are ordered by number.
class PlaceStore {
public:
    explicit PlaceStore(Database& theDatabase) : database(theDatabase) {}

    /// Forgets every place and task, and what users made of them, and stores these. @p origin says what they were made
    /// from.
    void replace(const std::vector<StoredPlace>& places, const std::vector<StoredTask>& tasks,
                 const std::string& origin);
    /// What the stored places were made from; empty when there are none yet.
    [[nodiscard]] std::string origin();

    /// How much of what users made of the tasks is stored.
    struct Traces {
        std::int64_t claims = 0;
        std::int64_t responses = 0;
        std::int64_t photos = 0;
    };
    [[nodiscard]] Traces traces();

    /// Every place and every task, in any state.
    [[nodiscard]] std::vector<std::string> allPlaces();
    [[nodiscard]] std::vector<FoundTask> allTasks();

    /// JSON objects.
    [[nodiscard]] std::vector<std::string> places(const Circle& circle);
    /// Tasks in the state "generated".
    [[nodiscard]] std::vector<FoundTask> tasks(const Circle& circle);
    [[nodiscard]] std::vector<FoundTask> tasksOfCampaign(const std::string& campaign);
    /// @p place is the identifier or the key of the place.
    [[nodiscard]] std::vector<FoundTask> tasksOfPlace(const std::string& place);
    /// In any state.
    [[nodiscard]] std::optional<FoundTask> task(const std::string& key);
    [[nodiscard]] std::optional<FoundTask> task(std::int64_t number);

private:
    Database& database;
};

} // namespace quorvane::sandbox
