#pragma once

#include "Core/SharedService.h"

namespace quorvane {

/// Turns a location that is synced into events and a user.
class QVTrackingService : public SharedService<QVTrackingService> {};

} // namespace quorvane
