#pragma once

#include <set>
#include <string>

#include "Search/QVSearchService.h"

namespace quorvane::tool {

class Session;

/// Stores places of the host's own, each with an identifier. Throws a `Failure` when one cannot be stored.
void storePlaces(Session& session, const QVPlaceList& places);

[[nodiscard]] std::set<std::string> identifiersOf(const QVPlaceList& places);

} // namespace quorvane::tool
