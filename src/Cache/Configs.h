#pragma once

#include <chrono>
#include <cstdint>
#include <functional>
#include <optional>
#include <string>

#include "Platform/Clock.h"
#include "Platform/FileManager.h"

namespace quorvane::QVCache {

/// Tells the date that expiry is reckoned from.
using DateProvider = std::function<platform::Date()>;

/// How long an entry lives: twelve hours, whatever a configuration says.
inline constexpr std::chrono::seconds entryLifetime{43'200};

/// Wall time of the platform in use.
[[nodiscard]] platform::Date currentDate();

/// The memory level's configuration. Only the date provider has an effect: the limits are 100 objects and a cost of
/// 100, and the lifetime is twelve hours.
struct MemoryConfig {
    std::uint64_t countLimit = 100;
    DateProvider dateProvider = currentDate;
    /// Seconds.
    double entryLifetime = 43'200;
    std::uint64_t totalCostLimit = 100;
};

/// The disk level's configuration. The lifetime is twelve hours, and no size is capped, whatever stands here.
struct DiskConfig {
    DateProvider dateProvider = currentDate;
    /// Seconds.
    double entryLifetime = 43'200;
    /// Absolute path of the parent directory; none: the caches directory.
    std::optional<std::string> directory;
    /// Bytes.
    std::uint64_t maxSize = 0;
    /// The store's own directory below it.
    std::string name;
    std::optional<platform::FileProtection> protectionType;
};

} // namespace quorvane::QVCache
