#pragma once

#include "JSON/AnyCodable.h"
#include "Platform/Location.h"

namespace quorvane::tool {

class Stage;

/// Stores two places of the host's own around a point and finds them again among those of the service. Answers what
/// was found there. Throws a `Failure` when they are not among it.
AnyCodable::List storeAndFindPlaces(Stage& stage, const platform::Coordinate& near);

} // namespace quorvane::tool
