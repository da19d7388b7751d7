#pragma once

#include "JSON/AnyCodable.h"
#include "tools/Options.h"

namespace quorvane::tool {

class Account;
class Ride;
class Terminal;

/// Lets a simulated phone go along the ride once with each preset, on the virtual clock and against the service of
/// @p options, and tells what tracking did and why some of it did less. A list with an object for each preset. Throws
/// a `Failure`.
AnyCodable::List trackRide(const Ride& ride, const GlobalOptions& options, Account& account, Terminal& terminal);

} // namespace quorvane::tool
