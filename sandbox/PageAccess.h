#pragma once

#include <string>

#include "sandbox/Message.h"

namespace quorvane::sandbox {

/// Refuses with 403 a request that was not made for this machine under a name of its own: a page elsewhere can let its
/// own name lead to this machine.
void requireLocalHost(const Request& request);

/// Refuses with 403 besides whatever does not come from the service's own page.
void requireOwnPage(const Request& request);

/// A part of the page: nothing from elsewhere may run in it or show it.
[[nodiscard]] Answer pageAnswer(std::string body, std::string contentType);

} // namespace quorvane::sandbox
