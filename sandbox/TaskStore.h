#pragma once

#include <cstdint>
#include <map>
#include <optional>
#include <set>
#include <string>
#include <vector>

#include "Platform/Location.h"
#include "sandbox/Database.h"
#include "sandbox/Photo.h"

namespace quorvane::sandbox {

/// What one user has made of one task.
struct Claim {
    std::int64_t number = 0;
    std::int64_t task = 0;
    std::string user;
    bool isCompleted = false;
    /// The key of the question that is due; empty when there is none.
    std::string nextQuestion;
    std::int64_t score = 0;
    /// Milliseconds since 1970; 0 while it is not completed.
    std::int64_t completed = 0;
};

/// An answer as it was stored.
struct StoredResponse {
    /// What the user sent, for comparison with what the user sends again.
    std::string content;
    /// The JSON object that was answered, without the address of its photo.
    std::string body;
    /// The identifier of its photo, or empty.
    std::string photo;
};

struct NumberedResponse {
    std::int64_t number = 0;
    std::int64_t claim = 0;
    StoredResponse response;
};

/// Where users are, which tasks they have claimed and what they have answered. Not locked: whoever calls it holds a
/// `Transaction`.
class TaskStore {
public:
    explicit TaskStore(Database& theDatabase) : database(theDatabase) {}

    void setPosition(const std::string& user, const platform::Coordinate& coordinate);
    [[nodiscard]] std::optional<platform::Coordinate> position(const std::string& user);
    [[nodiscard]] std::map<std::string, platform::Coordinate> positions();

    /// The claims of one user, by the number of the task.
    [[nodiscard]] std::map<std::int64_t, Claim> claims(const std::string& user);
    [[nodiscard]] std::optional<Claim> claim(std::int64_t task, const std::string& user);
    /// Fills in the number of a new claim.
    void add(Claim& claim, std::int64_t now);
    void update(const Claim& claim);

    /// Everybody's, in the order in which they were made.
    [[nodiscard]] std::vector<Claim> claims();

    /// The keys of the questions that were answered.
    [[nodiscard]] std::set<std::string> answered(const Claim& claim);
    [[nodiscard]] std::optional<StoredResponse> response(const Claim& claim, const std::string& question);
    /// The number that the next response gets.
    [[nodiscard]] std::int64_t nextResponse();
    void add(const Claim& claim, std::int64_t number, const std::string& question, const StoredResponse& response);

    /// Everybody's with a greater number than @p number, at most @p most of them.
    [[nodiscard]] std::vector<NumberedResponse> responses(std::int64_t number, std::int64_t most);

    void add(const std::string& identifier, const Photo& photo);
    [[nodiscard]] std::optional<Photo> photo(const std::string& identifier);

private:
    Database& database;
};

} // namespace quorvane::sandbox
