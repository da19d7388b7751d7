#pragma once

#include <cstddef>
#include <cstdint>
#include <string>
#include <vector>

#include "sandbox/Database.h"
#include "sandbox/Fault.h"
#include "sandbox/Message.h"
#include "sandbox/PlaceStore.h"
#include "sandbox/RequestLog.h"
#include "sandbox/Secrets.h"
#include "sandbox/TaskStore.h"

namespace quorvane::sandbox {

/// The page for a developer's browser and what it asks for. It needs no token, but is for this machine only, and only
/// the page itself may change anything. Safe from any thread.
class PageService {
public:
    PageService(Database& theDatabase, PlaceStore& thePlaces, RequestLog& theLog, FaultList& theFaults)
        : database(theDatabase), places(thePlaces), tasks(theDatabase), log(theLog), faults(theFaults) {}

    /// GET /
    Answer document(const Request& request);
    /// GET /sandbox/page/NAME: what the document consists of.
    Answer file(const Request& request);
    /// GET /sandbox/map: every place and task.
    Answer map(const Request& request);
    /// GET /sandbox/activity?requests=N&responses=N: what happened after those with these numbers, and what holds now.
    Answer activity(const Request& request);
    /// GET /sandbox/requests/N: one request with its headers and the beginning of its body.
    Answer request(const Request& request);
    /// GET /sandbox/photos/IDENTIFIER
    Answer photo(const Request& request);
    /// POST /sandbox/faults, {"fault": TEXT}
    Answer addFault(const Request& request);
    /// DELETE /sandbox/faults/N
    Answer removeFault(const Request& request);

private:
    [[nodiscard]] AnyCodable::List requestsAfter(std::size_t number) const;
    [[nodiscard]] AnyCodable::List responsesAfter(std::int64_t number);
    [[nodiscard]] AnyCodable::List listOf(const std::vector<Claim>& claims);
    [[nodiscard]] AnyCodable::List rewardsOf(const Claim& claim);
    [[nodiscard]] AnyCodable::List users();
    [[nodiscard]] AnyCodable::List faultList() const;

    Database& database;
    PlaceStore& places;
    TaskStore tasks;
    RequestLog& log;
    FaultList& faults;
    /// Tells a page that it sees another run of the program than before.
    std::string run = randomToken();
};

} // namespace quorvane::sandbox
