#pragma once

#include <cstddef>
#include <string_view>

#include <httplib.h>

#include "sandbox/Message.h"

namespace quorvane::sandbox {

constexpr std::size_t longestHead = std::size_t{32} << 10U;

/// The size of the body that follows a head. Throws a `Refusal` when the request cannot be carried out. @p head is the
/// head as it arrived, @p request what the parser took it for.
[[nodiscard]] std::size_t bodySizeOf(std::string_view head, const httplib::Request& request, std::size_t longestBody);

/// Takes from a request what this service does not do (ranges, compressed answers), so that it is answered plainly.
void simplify(httplib::Request& request);

} // namespace quorvane::sandbox
