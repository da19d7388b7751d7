#pragma once

#include "Core/SharedService.h"

namespace quorvane {

/// Events of the service; offers no operation in this version.
class QVEventService : public SharedService<QVEventService> {};

} // namespace quorvane
