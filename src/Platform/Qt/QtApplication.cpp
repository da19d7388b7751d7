#include "Platform/Qt/QtApplication.h"

#include <utility>
#include <vector>

#include "Platform/MainQueue.h"

namespace quorvane::platform::qt {

QtApplication::QtApplication(Application& theNative, MainQueue& theQueue)
    : native(theNative),
      queue(theQueue),
      inhibitor([this] { expireAll(); }, [this](std::string_view line) { native.standardOutput(line); }) {}

QtApplication::~QtApplication() = default;

Application::BackgroundTask QtApplication::beginBackgroundTask(const std::string& name, std::function<void()> expired) {
    // The native application names the grants, and refuses none.
    const BackgroundTask task = native.beginBackgroundTask(name, {});
    tasks.emplace(task, std::move(expired));
    inhibitor.hold(name);
    return task;
}

void QtApplication::endBackgroundTask(BackgroundTask task) {
    tasks.erase(task);
    native.endBackgroundTask(task);
    if (tasks.empty()) {
        inhibitor.release();
    }
}

void QtApplication::expireAll() {
    for (auto& [task, expired] : tasks) {
        if (std::function<void()> handler = std::exchange(expired, nullptr)) {
            queue.post(lifetime.guard([this, name = task, handler = std::move(handler)] {
                if (tasks.count(name) > 0) {
                    handler();
                }
            }));
        }
    }
}

} // namespace quorvane::platform::qt
