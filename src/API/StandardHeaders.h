#pragma once

#include "API/Router.h"

namespace quorvane {

/// The headers of every request, computed anew: what the service is told about the device and the library, and the
/// "Authorization" header with the stored access token, if there is one.
[[nodiscard]] Headers standardHeaders();

} // namespace quorvane
