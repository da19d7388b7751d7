#pragma once

#include <string>
#include <vector>

#include "JSON/AnyCodable.h"
#include "sandbox/RequestRecord.h"
#include "tools/Options.h"

namespace quorvane::tool {

class Account;
class Ride;
class Terminal;
struct TrackedPreset;

/// What came of tracking, for the summary and as JSON.
struct Tracked {
    /// "82 locations sent while tracking, 91 events found".
    std::string summary;
    /// An object for each preset.
    AnyCodable::List documents;
};

/// Throws a `Failure` unless each sync is a search that reached the service, and each request of the phone is among
/// those that have @p arrived there, with nothing beside them.
void requireRequests(const TrackedPreset& preset, const std::vector<sandbox::RequestRecord>& arrived);

/// Lets a simulated phone go along the ride once with each preset, on the virtual clock and against the service of
/// @p options, and tells what tracking did and why some of it did less. Throws a `Failure`.
Tracked trackRide(const Ride& ride, const GlobalOptions& options, Account& account, Terminal& terminal);

} // namespace quorvane::tool
