#include "testing/SimulatedAccelerometer.h"

#include <deque>
#include <utility>

#include "Platform/Platform.h"
#include "Platform/Support/SampledMotionManager.h"

namespace quorvane::testing {

struct SimulatedAccelerometer::State {
    bool available = true;
    /// Never empty; the last one stays.
    std::deque<Reading> readings{platform::Acceleration{0, -1, 0}};
    std::size_t samplesTaken = 0;

    Reading next() {
        ++samplesTaken;
        Reading reading = readings.front();
        if (readings.size() > 1) {
            readings.pop_front();
        }
        return reading;
    }
};

SimulatedAccelerometer::SimulatedAccelerometer(platform::Platform& thePlatform)
    : simulated(thePlatform), state(std::make_shared<State>()) {}

void SimulatedAccelerometer::setAvailable(bool available) {
    state->available = available;
}

void SimulatedAccelerometer::setReading(Reading reading) {
    state->readings.assign(1, reading);
}

void SimulatedAccelerometer::feed(const std::vector<Reading>& readings) {
    if (!readings.empty()) {
        state->readings.assign(readings.begin(), readings.end());
    }
}

std::size_t SimulatedAccelerometer::samplesTaken() const {
    return state->samplesTaken;
}

std::unique_ptr<platform::MotionManager> SimulatedAccelerometer::makeManager() {
    platform::SampledMotionManager::Sample sample;
    if (state->available) {
        sample = [kept = state](const platform::MotionManager::Handler& answer) { answer(kept->next()); };
    }
    return std::make_unique<platform::SampledMotionManager>(simulated.clock(), simulated.mainQueue(),
                                                            std::move(sample));
}

} // namespace quorvane::testing
