#pragma once

#include <functional>
#include <memory>
#include <mutex>
#include <string>
#include <string_view>
#include <vector>

#include "Platform/Application.h"
#include "Platform/MainQueue.h"

namespace quorvane::testing {

/// An application whose system does what the test says. It starts in the foreground, with an empty information
/// dictionary, and records its background tasks and the lines it prints.
class SimulatedApplication : public platform::Application {
public:
    struct RecordedBackgroundTask {
        BackgroundTask id = 0;
        std::string name;
        /// Begun and neither ended by the application nor expired.
        bool open = true;
        bool expired = false;
    };

    /// @p queue outlives the application.
    explicit SimulatedApplication(platform::MainQueue& queue);

    [[nodiscard]] double backgroundTimeRemaining() const override;
    BackgroundTask beginBackgroundTask(const std::string& name, std::function<void()> expired) override;
    void endBackgroundTask(BackgroundTask task) override;
    [[nodiscard]] const AnyCodable::Dictionary& informationDictionary() const override;
    void standardOutput(std::string_view line) override;
    void onMemoryWarning(std::function<void()> handler) override;

    /// Seconds; `foreground` while nothing limits the application. It does not run down by itself.
    void setBackgroundTimeRemaining(double seconds);

    /// While on, `beginBackgroundTask` answers 0 and records nothing.
    void refuseBackgroundTasks(bool refuse);

    /// Every grant so far, ended ones included, in the order in which they were begun.
    [[nodiscard]] std::vector<RecordedBackgroundTask> backgroundTasks() const;
    [[nodiscard]] int openBackgroundTaskCount() const;

    /// The time of an open grant is over: its handler is posted to the main queue. Any other @p task is ignored.
    void expire(BackgroundTask task);
    /// The time of every open grant is over.
    void expireAll();

    void setInformationDictionary(AnyCodable::Dictionary dictionary);

    /// The lines printed so far, without their line breaks.
    [[nodiscard]] std::vector<std::string> outputLines() const;
    void clearOutput();

    /// The system runs short of memory: the handlers are posted to the main queue.
    void warnOfMemory();

private:
    struct Grant;

    platform::MainQueue& queue;
    double remaining = foreground;
    bool refusing = false;
    std::vector<std::shared_ptr<Grant>> grants;
    AnyCodable::Dictionary information;
    std::vector<std::function<void()>> memoryHandlers;
    mutable std::mutex outputMutex;
    std::vector<std::string> output;
};

} // namespace quorvane::testing
