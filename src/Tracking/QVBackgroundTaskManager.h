#pragma once

#include <string_view>
#include <vector>

#include "Platform/Application.h"
#include "Platform/Lifetime.h"
#include "Platform/Platform.h"
#include "Platform/Registry.h"

namespace quorvane {

class QVLogger;
class TrackingObservation;

/// Keeps the application awake in the background long enough to receive a fix and send it. Main thread only.
class QVBackgroundTaskManager {
public:
    /// The label of the serial queues that the list of grants is touched on: a new one for each call, so that it is the
    /// main thread and not the queues that keeps the calls in order.
    static constexpr std::string_view QUEUE_LABEL = "qv-background-task-manager";
    static constexpr std::string_view BACKGROUND_TASK_NAME = "qv-bg-task";

    using Identifier = platform::Application::BackgroundTask;

    explicit QVBackgroundTaskManager(platform::Platform& platform);
    QVBackgroundTaskManager(const QVBackgroundTaskManager&) = delete;
    QVBackgroundTaskManager& operator=(const QVBackgroundTaskManager&) = delete;
    /// Gives back to the platform what it still holds: it may outlive being the one in use.
    ~QVBackgroundTaskManager();

    [[nodiscard]] static QVBackgroundTaskManager& shared() { return platform::shared<QVBackgroundTaskManager>(); }

    /// Begins a grant of at most 170 seconds, or of what is left but for 10 seconds; none where that is less than 10
    /// seconds, or where the platform refuses. It ends when its time is over or the platform says so.
    void startBackgroundTask();

    /// Ends a grant. For one that has ended already the platform is told again, which it ignores.
    void endBackgroundTask(Identifier task);

    /// Ends all grants, in the order in which they were begun.
    void endBackgroundTasks();

    /// The grants that have not ended, in the order in which they were begun.
    [[nodiscard]] const std::vector<Identifier>& backgroundTaskIds() const { return tasks; }

private:
    void expire(Identifier task);

    platform::Platform& platform;
    QVLogger& logger;
    const TrackingObservation& observation;
    std::vector<Identifier> tasks;
    platform::Lifetime lifetime;
};

} // namespace quorvane
