#pragma once

#include "sandbox/Message.h"
#include "sandbox/PlaceStore.h"
#include "sandbox/TaskStore.h"
#include "sandbox/TokenStore.h"

namespace quorvane::sandbox {

/// Configuration, places and tasks, for holders of a valid access token. Safe from any thread.
class DataService {
public:
    DataService(Database& theDatabase, PlaceStore& thePlaces, TokenStore& theTokens)
        : database(theDatabase), store(thePlaces), claims(theDatabase), tokens(theTokens) {}

    /// GET /config
    Answer configuration(const Request& request);
    /// GET /locations/find
    Answer places(const Request& request);
    /// GET /generate/tasks
    Answer tasks(const Request& request);

private:
    /// Where the user of a search is from now on.
    void notePosition(const std::string& user, const Circle& circle);

    Database& database;
    PlaceStore& store;
    TaskStore claims;
    TokenStore& tokens;
};

} // namespace quorvane::sandbox
