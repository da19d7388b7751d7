#pragma once

#include <cstddef>
#include <cstdint>
#include <string>

#include "Tasks/QVTask.h"
#include "Tasks/QVTaskResponse.h"
#include "sandbox/Message.h"
#include "sandbox/PlaceStore.h"
#include "sandbox/TaskStore.h"
#include "sandbox/TokenStore.h"

namespace quorvane::sandbox {

/// Claims of tasks and answers to their questions, for holders of a valid access token. Safe from any thread.
class TaskService {
public:
    /// Bytes of a response's body: room for a photo in base64.
    static constexpr std::size_t longestResponse = std::size_t{32} << 20U;

    TaskService(Database& theDatabase, PlaceStore& thePlaces, TokenStore& theTokens, TokenStore::Now theNow);

    /// POST /tasks
    Answer claim(const Request& request);
    /// POST /tasks/KEY/responses
    Answer respond(const Request& request);
    /// GET /photos/IDENTIFIER, which needs no token: the identifier cannot be guessed.
    Answer photo(const std::string& identifier);

private:
    [[nodiscard]] std::int64_t now() const;
    /// Refuses a task that @p user may not take on.
    void checkEligibility(const FoundTask& task, const QVTask& model, const std::string& user) const;
    /// Metres from where the user searched last; refuses what is too far away.
    [[nodiscard]] double distanceFor(const QVTask& model, const std::string& user);
    /// A claim without a question that is due is completed.
    void finishIfDone(Claim& claim) const;
    /// Stores the answer, moves the claim on, and answers the response as it is from now on.
    StoredResponse take(const QVTask& task, QVTaskResponse response, Claim claim, std::string content,
                        const std::string& photo);

    Database& database;
    PlaceStore& places;
    TokenStore& tokens;
    TaskStore store;
    TokenStore::Now clock;
};

} // namespace quorvane::sandbox
