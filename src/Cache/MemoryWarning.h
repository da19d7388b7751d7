#pragma once

#include <functional>

namespace quorvane::QVCache {

/// Has the platform in use call @p handler on the main queue each time the system runs short of memory, for as long as
/// that platform lives. Any thread.
void onMemoryWarning(std::function<void()> handler);

} // namespace quorvane::QVCache
