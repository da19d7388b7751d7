#pragma once

#include <chrono>
#include <memory>
#include <string>

#include "Core/Enumerations.h"
#include "Core/SharedService.h"
#include "Platform/Clock.h"
#include "Platform/Lifetime.h"
#include "Platform/Platform.h"

namespace quorvane {

/// The library's one log. Lines go to the platform's standard output and to the delegate.
class QVLogger : public SharedService<QVLogger> {
public:
    explicit QVLogger(platform::Platform& platform);

    /// Logs @p message if the stored level admits @p level, and returns at once. Safe from any thread: filtering,
    /// printing and the delegate's call happen later, on the main queue, in the order of the calls. The stored level
    /// counts as it is then.
    void log(QVLogLevel level, std::string message);

private:
    void write(QVLogLevel level, const std::string& message);

    platform::Platform& platform;
    platform::Lifetime lifetime;
};

/// A moment in local time as "yyyy-MM-dd hh:mm:ss" and the long form of the offset from GMT ("GMT+02:00", "GMT" at
/// zero). The hours run from 12 over 01 to 11, without a marker for the half of the day: hosts parse it as it is.
[[nodiscard]] std::string logTimestamp(platform::Date moment, std::chrono::seconds offset);

} // namespace quorvane
