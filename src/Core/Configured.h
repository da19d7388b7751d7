#pragma once

namespace quorvane {

/// Whether the library is configured: an access key is stored, in this run or an earlier one. An empty key counts.
[[nodiscard]] bool isConfigured();

} // namespace quorvane
