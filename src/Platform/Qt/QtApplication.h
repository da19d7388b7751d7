#pragma once

#include <map>

#include "Platform/Application.h"
#include "Platform/Lifetime.h"
#include "Platform/Qt/SleepInhibitor.h"

namespace quorvane::platform {
class MainQueue;
}

namespace quorvane::platform::qt {

/// The native application, whose background tasks delay the system's sleep. Nothing limits their time, until the system
/// is about to sleep: then all of them expire.
class QtApplication final : public Application {
public:
    /// Both outlive it.
    QtApplication(Application& theNative, MainQueue& theQueue);
    ~QtApplication() override;

    [[nodiscard]] double backgroundTimeRemaining() const override { return native.backgroundTimeRemaining(); }
    BackgroundTask beginBackgroundTask(const std::string& name, std::function<void()> expired) override;
    void endBackgroundTask(BackgroundTask task) override;
    [[nodiscard]] const AnyCodable::Dictionary& informationDictionary() const override {
        return native.informationDictionary();
    }
    void standardOutput(std::string_view line) override { native.standardOutput(line); }
    void onMemoryWarning(std::function<void()> handler) override { native.onMemoryWarning(std::move(handler)); }

private:
    void expireAll();

    Application& native;
    MainQueue& queue;
    /// What is open, and who hears of its end.
    std::map<BackgroundTask, std::function<void()>> tasks;
    SleepInhibitor inhibitor;
    Lifetime lifetime;
};

} // namespace quorvane::platform::qt
