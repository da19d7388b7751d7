#include "Cache/Configs.h"

#include "Platform/Platform.h"

namespace quorvane::QVCache {

platform::Date currentDate() {
    return platform::current().clock().now();
}

} // namespace quorvane::QVCache
