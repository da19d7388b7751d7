#pragma once

#include <chrono>
#include <cstddef>
#include <functional>
#include <map>
#include <string>
#include <string_view>

#include "Platform/Application.h"
#include "Platform/MainQueue.h"

namespace quorvane::testing {

/// The application of a simulated phone: its time in the background runs out. What it prints, its information
/// dictionary and memory warnings are another application's. Main thread only, but for `standardOutput`.
class PhoneApplication : public platform::Application {
public:
    /// @p theQueue and @p theOther outlive it. @p theRemaining answers the seconds that are left now.
    PhoneApplication(platform::MainQueue& theQueue, platform::Application& theOther,
                     std::function<double()> theRemaining);

    [[nodiscard]] double backgroundTimeRemaining() const override { return remaining(); }
    BackgroundTask beginBackgroundTask(const std::string& name, std::function<void()> expired) override;
    void endBackgroundTask(BackgroundTask task) override;
    [[nodiscard]] const AnyCodable::Dictionary& informationDictionary() const override;
    void standardOutput(std::string_view line) override;
    void onMemoryWarning(std::function<void()> handler) override;

    [[nodiscard]] bool hasGrants() const { return !grants.empty(); }
    /// The time of all grants is over: their handlers are posted.
    void expireAll();

private:
    platform::MainQueue& queue;
    platform::Application& other;
    std::function<double()> remaining;
    /// The handlers of the open ones.
    std::map<BackgroundTask, std::function<void()>> grants;
    BackgroundTask lastGrant = 0;
};

} // namespace quorvane::testing
