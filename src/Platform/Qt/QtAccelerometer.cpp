#include "Platform/Qt/QtAccelerometer.h"

#include <QAccelerometer>
#include <utility>

#include "Platform/MainQueue.h"
#include "Platform/SerialQueue.h"
#include "Platform/Support/SampledMotionManager.h"

namespace quorvane::platform::qt {
namespace {

/// Reads on a thread of its own: a slow device must not hold up the screen.
class KernelSampler {
public:
    KernelSampler(IIOAccelerometer theAccelerometer, MainQueue& theMainQueue)
        : accelerometer(std::move(theAccelerometer)), mainQueue(theMainQueue) {}

    void sample(MotionManager::Handler answer) {
        reading.async([device = accelerometer, &main = mainQueue, answer = std::move(answer)] {
            main.post([answer, sample = device.read()] { answer(sample); });
        });
    }

private:
    const IIOAccelerometer accelerometer;
    MainQueue& mainQueue;
    /// Ends before the main queue does: its owner's owner is destroyed before the platform.
    SerialQueue reading{"qv-accelerometer"};
};

SampledMotionManager::Sample samplesOf(const IIOAccelerometer& accelerometer, MainQueue& mainQueue) {
    return [sampler = std::make_shared<KernelSampler>(accelerometer, mainQueue)](MotionManager::Handler answer) {
        sampler->sample(std::move(answer));
    };
}

SampledMotionManager::Sample samplesOf(std::shared_ptr<QAccelerometer> sensor) {
    return [sensor = std::move(sensor)](const MotionManager::Handler& answer) {
        sensor->start();
        const QAccelerometerReading* const reading = sensor->reading();
        if (reading == nullptr || reading->timestamp() == 0) {
            answer(std::nullopt);
            return;
        }
        // Qt tells what holds the device up, which at rest is the opposite of gravity.
        answer(Acceleration{reading->x() / -standardGravity, reading->y() / -standardGravity,
                            reading->z() / -standardGravity});
    };
}

/// None when Qt has no accelerometer that measures anything.
std::shared_ptr<QAccelerometer> realSensor() {
    auto sensor = std::make_shared<QAccelerometer>();
    if (!sensor->connectToBackend() || !QtAccelerometer::isReal(sensor->identifier().toStdString())) {
        return nullptr;
    }
    return sensor;
}

} // namespace

QtAccelerometer::QtAccelerometer(Clock& theClock, MainQueue& theQueue, std::string theDirectory)
    : clock(theClock), queue(theQueue), directory(std::move(theDirectory)) {}

std::unique_ptr<MotionManager> QtAccelerometer::makeManager() {
    SampledMotionManager::Sample sample;
    if (const auto inKernel = IIOAccelerometer::find(directory)) {
        sample = samplesOf(*inKernel, queue);
    } else if (const auto sensor = realSensor()) {
        sample = samplesOf(sensor);
    }
    return std::make_unique<SampledMotionManager>(clock, queue, std::move(sample));
}

bool QtAccelerometer::isReal(const std::string& identifier) {
    return !identifier.empty() && !identifier.starts_with("dummy.");
}

} // namespace quorvane::platform::qt
