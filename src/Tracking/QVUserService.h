#pragma once

#include "Core/SharedService.h"

namespace quorvane {

/// Users of the service; offers no operation in this version.
class QVUserService : public SharedService<QVUserService> {};

} // namespace quorvane
