#pragma once

#include "Core/SharedService.h"

namespace quorvane {

/// The local store of the host's own places.
class QVPlaceService : public SharedService<QVPlaceService> {};

} // namespace quorvane
