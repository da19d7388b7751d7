#pragma once

#include <optional>

#include "Platform/HTTPTransport.h"
#include "Platform/Native/CurlAddress.h"

namespace quorvane::platform::native {

/// Why @p request cannot be sent as it is given: an unknown method, an address that is no absolute "http" or "https"
/// one, a header whose name is none or whose text would break its line. None when it can. @p address is its address.
[[nodiscard]] std::optional<TransportError> refusalOf(const HTTPRequest& request, const CurlAddress& address);

} // namespace quorvane::platform::native
