#include "Cache/MemoryWarning.h"

#include <utility>

#include "Platform/Application.h"
#include "Platform/MainQueue.h"
#include "Platform/Platform.h"

namespace quorvane::QVCache {

void onMemoryWarning(std::function<void()> handler) {
    platform::Platform& platform = platform::current();
    if (platform.mainQueue().isMainThread()) {
        platform.application().onMemoryWarning(std::move(handler));
    } else {
        // The queue drops its work before the platform goes.
        platform.mainQueue().post([&platform, handler = std::move(handler)]() mutable {
            platform.application().onMemoryWarning(std::move(handler));
        });
    }
}

} // namespace quorvane::QVCache
