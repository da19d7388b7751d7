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
    std::string campaign;
    std::string placeID;
    std::string placeKey;
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

    /// Forgets every place and task and stores these. @p origin says what they were made from.
    void replace(const std::vector<StoredPlace>& places, const std::vector<StoredTask>& tasks,
                 const std::string& origin);
    /// What the stored places were made from; empty when there are none yet.
    [[nodiscard]] std::string origin();

    /// JSON objects.
    [[nodiscard]] std::vector<std::string> places(const Circle& circle);
    /// JSON objects of tasks in the state "generated", with their distance in miles.
    [[nodiscard]] std::vector<std::string> tasks(const Circle& circle);
    /// Without a point to measure from, the distance is 0.
    [[nodiscard]] std::vector<std::string> tasksOfCampaign(const std::string& campaign);
    /// @p place is the identifier or the key of the place.
    [[nodiscard]] std::vector<std::string> tasksOfPlace(const std::string& place);

private:
    Database& database;
};

} // namespace quorvane::sandbox
