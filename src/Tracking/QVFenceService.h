#pragma once

#include "Core/SharedService.h"

namespace quorvane {

/// Geofences of the service; offers no operation in this version.
class QVFenceService : public SharedService<QVFenceService> {};

} // namespace quorvane
