#include "testing/SimulatedApplication.h"

#include <utility>

namespace quorvane::testing {

struct SimulatedApplication::Grant {
    RecordedBackgroundTask record;
    std::function<void()> handler;
};

SimulatedApplication::SimulatedApplication(platform::MainQueue& theQueue) : queue(theQueue) {}

double SimulatedApplication::backgroundTimeRemaining() const {
    return remaining;
}

platform::Application::BackgroundTask SimulatedApplication::beginBackgroundTask(const std::string& name,
                                                                                std::function<void()> expired) {
    if (refusing) {
        return 0;
    }
    const auto grant = std::make_shared<Grant>();
    grant->record.id = grants.size() + 1;
    grant->record.name = name;
    grant->handler = std::move(expired);
    grants.push_back(grant);
    return grant->record.id;
}

void SimulatedApplication::endBackgroundTask(BackgroundTask task) {
    if (task >= 1 && task <= grants.size()) {
        Grant& grant = *grants[task - 1];
        grant.record.open = false;
        grant.handler = nullptr;
    }
}

void SimulatedApplication::expire(BackgroundTask task) {
    if (task < 1 || task > grants.size() || !grants[task - 1]->record.open) {
        return;
    }
    queue.post([grant = grants[task - 1]] {
        if (grant->record.open) {
            grant->record.open = false;
            grant->record.expired = true;
            if (const auto handler = std::exchange(grant->handler, nullptr)) {
                handler();
            }
        }
    });
}

void SimulatedApplication::expireAll() {
    for (const std::shared_ptr<Grant>& grant : grants) {
        expire(grant->record.id);
    }
}

std::vector<SimulatedApplication::RecordedBackgroundTask> SimulatedApplication::backgroundTasks() const {
    std::vector<RecordedBackgroundTask> records;
    records.reserve(grants.size());
    for (const std::shared_ptr<Grant>& grant : grants) {
        records.push_back(grant->record);
    }
    return records;
}

int SimulatedApplication::openBackgroundTaskCount() const {
    int count = 0;
    for (const std::shared_ptr<Grant>& grant : grants) {
        count += grant->record.open ? 1 : 0;
    }
    return count;
}

const AnyCodable::Dictionary& SimulatedApplication::informationDictionary() const {
    return information;
}

void SimulatedApplication::setInformationDictionary(AnyCodable::Dictionary dictionary) {
    information = std::move(dictionary);
}

void SimulatedApplication::setBackgroundTimeRemaining(double seconds) {
    remaining = seconds;
}

void SimulatedApplication::refuseBackgroundTasks(bool refuse) {
    refusing = refuse;
}

void SimulatedApplication::standardOutput(std::string_view line) {
    const std::lock_guard lock(outputMutex);
    output.emplace_back(line);
}

std::vector<std::string> SimulatedApplication::outputLines() const {
    const std::lock_guard lock(outputMutex);
    return output;
}

void SimulatedApplication::clearOutput() {
    const std::lock_guard lock(outputMutex);
    output.clear();
}

void SimulatedApplication::onMemoryWarning(std::function<void()> handler) {
    memoryHandlers.push_back(std::move(handler));
}

void SimulatedApplication::warnOfMemory() {
    for (const std::function<void()>& handler : memoryHandlers) {
        queue.post(handler);
    }
}

} // namespace quorvane::testing
