#pragma once

#include "Core/SharedService.h"

namespace quorvane {

/// Addresses for a typed query; offers no operation in this version.
class QVGeocodeService : public SharedService<QVGeocodeService> {};

} // namespace quorvane
