#pragma once

#include "sandbox/Message.h"
#include "sandbox/PlaceStore.h"
#include "sandbox/TokenStore.h"

namespace quorvane::sandbox {

/// Configuration, places and tasks, for holders of a valid access token. Safe from any thread.
class DataService {
public:
    DataService(PlaceStore& thePlaces, TokenStore& theTokens) : store(thePlaces), tokens(theTokens) {}

    /// GET /config
    Answer configuration(const Request& request);
    /// GET /locations/find
    Answer places(const Request& request);
    /// GET /generate/tasks
    Answer tasks(const Request& request);

private:
    /// Refuses with 401 a request without a valid access token.
    void authorize(const Request& request);

    PlaceStore& store;
    TokenStore& tokens;
};

} // namespace quorvane::sandbox
