#pragma once

#include <optional>

#include "Platform/HTTPTransport.h"

namespace quorvane::platform::native {

/// Why @p request cannot be sent as it is given: an unknown method, an address that is no absolute "http" or "https"
/// one, a header whose name is none or whose text would break its line. None when it can.
[[nodiscard]] std::optional<TransportError> refusalOf(const HTTPRequest& request);

} // namespace quorvane::platform::native
