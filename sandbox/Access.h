#pragma once

#include "sandbox/Message.h"
#include "sandbox/TokenStore.h"

namespace quorvane::sandbox {

/// Whoever the access token of a request belongs to. Refuses with 401 a request without a valid one.
[[nodiscard]] Grant authorize(const Request& request, TokenStore& tokens);

} // namespace quorvane::sandbox
