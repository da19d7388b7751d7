#include "Tracking/LocationHandlers.h"

#include <chrono>
#include <utility>

#include "Tracking/Descriptions.h"
#include "Tracking/OwnQueue.h"

namespace quorvane {
namespace {

constexpr std::chrono::seconds longestWait{20};

} // namespace

LocationHandlers::LocationHandlers(platform::MainQueue& theQueue, const TrackingState& theState,
                                   const TrackingLog& theLog, const TrackingObservation& theObservation)
    : queue(theQueue), state(theState), log(theLog), observation(theObservation) {}

void LocationHandlers::add(const Completion& completion) {
    onQueue(QVLocationManager::QUEUE_LABEL, [&] { handlers.push_back({completion}); });
    handlers.back().timeout =
        queue.postAfter(longestWait, lifetime.guard([this] { answer(QVStatus::ERROR_LOCATION, std::nullopt, true); }));
}

void LocationHandlers::call(QVStatus status, const std::optional<platform::Location>& location) {
    answer(status, location, false);
}

void LocationHandlers::answer(QVStatus status, const std::optional<platform::Location>& location, bool timedOut) {
    log.verbose([&] {
        return "Calling completion handlers | handlers.count = " + std::to_string(handlers.size()) +
               "; status = " + std::string(nameOf(status)) + "; location = " + descriptionOf(location);
    });
    // Without callers there is nothing to guard, which is how most fixes find it.
    if (handlers.empty()) {
        return;
    }
    std::vector<Handler> taken;
    onQueue(QVLocationManager::QUEUE_LABEL, [&] { taken.swap(handlers); });
    observation.tell([&] { return observed::Answer{status, taken.size(), timedOut}; });
    for (const Handler& handler : taken) {
        queue.cancel(handler.timeout);
    }
    for (const Handler& handler : taken) {
        handler.completion(status, location, state.isStopped());
    }
}

void LocationHandlers::cancelTimeouts() {
    if (handlers.empty()) {
        return;
    }
    onQueue(QVLocationManager::QUEUE_LABEL, [this] {
        for (Handler& handler : handlers) {
            queue.cancel(std::exchange(handler.timeout, 0));
        }
    });
}

} // namespace quorvane
