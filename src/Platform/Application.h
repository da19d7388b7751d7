#pragma once

#include <chrono>
#include <cstdint>
#include <functional>
#include <limits>
#include <string>
#include <string_view>
#include <vector>

#include "JSON/AnyCodable.h"

namespace quorvane::platform {

/// The running application. Main thread only, but for `standardOutput`, which is safe from any thread.
class Application {
public:
    /// Names a grant of background time; 0 names none.
    using BackgroundTask = std::uint64_t;

    Application() = default;
    Application(const Application&) = delete;
    Application& operator=(const Application&) = delete;
    virtual ~Application() = default;

    /// Seconds that the application may still run in the background; `foreground` while nothing limits it.
    [[nodiscard]] virtual double backgroundTimeRemaining() const = 0;
    static constexpr double foreground = (std::numeric_limits<double>::max)();

    /// Asks for time in the background. @p expired is called at most once, on the main queue, when the time is over
    /// before `endBackgroundTask`. Answers 0 when the platform refuses.
    virtual BackgroundTask beginBackgroundTask(const std::string& name, std::function<void()> expired) = 0;

    /// Ends a grant. One that has ended, or 0, is ignored.
    virtual void endBackgroundTask(BackgroundTask task) = 0;

    /// The application's information dictionary ("UIBackgroundModes" and others).
    [[nodiscard]] virtual const AnyCodable::Dictionary& informationDictionary() const = 0;

    /// Writes @p line and a line break where the application's output goes. Never throws.
    virtual void standardOutput(std::string_view line) = 0;

    /// Calls @p handler on the main queue each time the system runs short of memory, as long as the application lives.
    virtual void onMemoryWarning(std::function<void()> handler) = 0;
};

} // namespace quorvane::platform
