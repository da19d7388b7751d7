#pragma once

#include "Core/SharedService.h"

namespace quorvane {

/// Routes to a destination; offers no operation in this version.
class QVRouteService : public SharedService<QVRouteService> {};

} // namespace quorvane
