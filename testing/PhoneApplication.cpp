#include "testing/PhoneApplication.h"

#include <utility>

namespace quorvane::testing {

PhoneApplication::PhoneApplication(platform::MainQueue& theQueue, platform::Application& theOther,
                                   std::function<double()> theRemaining)
    : queue(theQueue), other(theOther), remaining(std::move(theRemaining)) {}

platform::Application::BackgroundTask PhoneApplication::beginBackgroundTask(const std::string& /*name*/,
                                                                            std::function<void()> expired) {
    if (remaining() <= 0) {
        return 0;
    }
    grants.emplace(++lastGrant, std::move(expired));
    return lastGrant;
}

void PhoneApplication::endBackgroundTask(BackgroundTask task) {
    grants.erase(task);
}

void PhoneApplication::expireAll() {
    for (const auto& [task, handler] : grants) {
        queue.post([this, expiredTask = task] {
            if (auto grant = grants.extract(expiredTask); !grant.empty() && grant.mapped()) {
                grant.mapped()();
            }
        });
    }
}

const AnyCodable::Dictionary& PhoneApplication::informationDictionary() const {
    return other.informationDictionary();
}

void PhoneApplication::standardOutput(std::string_view line) {
    other.standardOutput(line);
}

void PhoneApplication::onMemoryWarning(std::function<void()> handler) {
    other.onMemoryWarning(std::move(handler));
}

} // namespace quorvane::testing
