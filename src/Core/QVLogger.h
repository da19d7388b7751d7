#pragma once

#include <chrono>
#include <concepts>
#include <functional>
#include <memory>
#include <string>
#include <utility>

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

    /// As above, with a message that @p make makes on the main queue, and only where the level admits it: for lines
    /// that are expensive and seldom wanted.
    template <std::invocable Make>
    void log(QVLogLevel level, Make make) {
        post(lifetime.guard([this, level, make = std::move(make)] {
            if (admits(level)) {
                write(make());
            }
        }));
    }

private:
    void post(std::function<void()> work);
    [[nodiscard]] static bool admits(QVLogLevel level);
    void write(const std::string& message);

    platform::Platform& platform;
    platform::Lifetime lifetime;
};

/// A moment in local time as "yyyy-MM-dd hh:mm:ss" and the long form of the offset from GMT ("GMT+02:00", "GMT" at
/// zero). The hours run from 12 over 01 to 11, without a marker for the half of the day: hosts parse it as it is.
[[nodiscard]] std::string logTimestamp(platform::Date moment, std::chrono::seconds offset);

} // namespace quorvane
