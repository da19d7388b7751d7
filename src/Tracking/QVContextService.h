#pragma once

#include "Core/SharedService.h"

namespace quorvane {

/// Where a user is in words; offers no operation in this version.
class QVContextService : public SharedService<QVContextService> {};

} // namespace quorvane
