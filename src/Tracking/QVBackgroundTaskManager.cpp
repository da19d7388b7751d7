#include "Tracking/QVBackgroundTaskManager.h"

#include <algorithm>
#include <chrono>
#include <memory>
#include <string>

#include "Core/QVLogger.h"
#include "JSON/NumberText.h"
#include "Platform/MainQueue.h"
#include "Tracking/OwnQueue.h"
#include "Tracking/TrackingObserver.h"

namespace quorvane {
namespace {

using GrantChange = observed::BackgroundGrant::Change;

/// What stands for the foreground, where nothing limits the time.
constexpr double foregroundSeconds = 180;
constexpr double longestGrant = 170;
/// What of the time that is left stays unused.
constexpr double reserve = 10;
constexpr double shortestGrant = 10;

} // namespace

QVBackgroundTaskManager::QVBackgroundTaskManager(platform::Platform& thePlatform)
    : platform(thePlatform), logger(QVLogger::shared()), observation(TrackingObservation::shared()) {}

QVBackgroundTaskManager::~QVBackgroundTaskManager() {
    for (const Identifier task : tasks) {
        platform.application().endBackgroundTask(task);
    }
}

void QVBackgroundTaskManager::startBackgroundTask() {
    platform::Application& application = platform.application();
    double remaining = application.backgroundTimeRemaining();
    if (remaining == platform::Application::foreground) {
        remaining = foregroundSeconds;
    }
    const double duration = remaining > longestGrant ? longestGrant : remaining - reserve;
    if (duration < shortestGrant) {
        logger.log(QVLogLevel::WARNING, "Background time expiring | duration = " + json::textOf(duration));
        observation.tell([&] { return observed::BackgroundGrant{GrantChange::expiring, 0, duration}; });
        return;
    }

    // The handler is made before the grant has its name.
    const auto name = std::make_shared<Identifier>(0);
    const Identifier task = application.beginBackgroundTask(std::string(BACKGROUND_TASK_NAME),
                                                            lifetime.guard([this, name] { expire(*name); }));
    if (task == 0) {
        return;
    }
    *name = task;
    const auto time = std::chrono::duration_cast<std::chrono::nanoseconds>(std::chrono::duration<double>(duration));
    platform.mainQueue().postAfter(time, lifetime.guard([this, task] { endBackgroundTask(task); }));
    onQueue(QUEUE_LABEL, [&] {
        tasks.push_back(task);
        logger.log(QVLogLevel::WARNING, "Started background task | tid = " + std::to_string(task));
    });
    observation.tell([&] { return observed::BackgroundGrant{GrantChange::begun, task, duration}; });
}

void QVBackgroundTaskManager::expire(Identifier task) {
    // The words in parentheses are the line as it has always been: no number takes their place.
    logger.log(QVLogLevel::WARNING, "Expiring background task | tid = (identifier.rawValue)");
    observation.tell([&] { return observed::BackgroundGrant{GrantChange::expired, task, 0}; });
    endBackgroundTask(task);
}

void QVBackgroundTaskManager::endBackgroundTask(Identifier task) {
    onQueue(QUEUE_LABEL, [&] {
        logger.log(QVLogLevel::WARNING, "Ending background task | tid = " + std::to_string(task));
        platform.application().endBackgroundTask(task);
        if (const auto found = std::find(tasks.begin(), tasks.end(), task); found != tasks.end()) {
            tasks.erase(found);
            observation.tell([&] { return observed::BackgroundGrant{GrantChange::ended, task, 0}; });
        }
    });
}

void QVBackgroundTaskManager::endBackgroundTasks() {
    onQueue(QUEUE_LABEL, [&] {
        logger.log(QVLogLevel::WARNING, "Ending background tasks | count = " + std::to_string(tasks.size()));
        for (const Identifier task : tasks) {
            platform.application().endBackgroundTask(task);
            observation.tell([&] { return observed::BackgroundGrant{GrantChange::ended, task, 0}; });
        }
        tasks.clear();
    });
}

} // namespace quorvane
