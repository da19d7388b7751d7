#pragma once

#include <string>
#include <vector>

#include "Platform/Location.h"
#include "testing/ScriptedTransport.h"

namespace quorvane::tool {

/// A place as its JSON text, its name, and where it is.
struct KnownPlace {
    std::string text;
    std::string name;
    platform::Coordinate coordinate;
};
using KnownPlaces = std::vector<KnownPlace>;

/// The places in a file of the form that a search prints with --json. Throws a `Failure`.
[[nodiscard]] KnownPlaces knownPlacesIn(const std::string& path);

/// Lets @p transport answer as a service that signs everybody in, for longer than any recording lasts, and knows
/// @p places, which outlive it: those within the radius of a search, nearest first. Everything else is not found.
void serve(testing::ScriptedTransport& transport, const KnownPlaces& places);

} // namespace quorvane::tool
