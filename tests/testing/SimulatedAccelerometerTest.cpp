#include "Platform/contract/AccelerometerContract.h"
#include "testing/SimulatedAccelerometer.h"
#include "testing/SimulatedPlatform.h"

namespace quorvane {
namespace platform::contract {
namespace {

class SimulatedAccelerometerRig : public AccelerometerRig {
public:
    Platform& platform() override { return *simulated; }
    Accelerometer& accelerometer() override { return device; }
    void remove() override { device.setAvailable(false); }
    void measure(std::optional<Acceleration> acceleration) override { device.setReading(acceleration); }
    bool runUntil(const std::function<bool()>& done) override {
        for (int passed = 0; !done() && passed < 1'000; ++passed) {
            pass(std::chrono::milliseconds(1));
        }
        return done();
    }
    void pass(std::chrono::nanoseconds time) override { simulated->advance(time); }

private:
    const std::shared_ptr<testing::SimulatedPlatform> simulated = testing::SimulatedPlatform::make();
    testing::SimulatedAccelerometer device{*simulated};
};

std::unique_ptr<AccelerometerRig> makeRig() {
    return std::make_unique<SimulatedAccelerometerRig>();
}

INSTANTIATE_TEST_SUITE_P(Simulated, AccelerometerContract, ::testing::Values(AccelerometerRigMaker(makeRig)));

} // namespace
} // namespace platform::contract

namespace testing {
namespace {

using namespace std::chrono_literals;
using platform::Acceleration;

class SimulatedAccelerometerTest : public ::testing::Test {
protected:
    const std::shared_ptr<SimulatedPlatform> simulated = SimulatedPlatform::make();
    SimulatedAccelerometer accelerometer{*simulated};
    std::vector<std::optional<double>> xs;
    std::unique_ptr<platform::MotionManager> manager = accelerometer.makeManager();

    void start() {
        manager->startAccelerometerUpdates(
            10ms, [this](const auto& sample) { xs.push_back(sample ? std::optional(sample->x) : std::nullopt); });
    }
};

TEST_F(SimulatedAccelerometerTest, NumbersAreFedOneASampleAndTheLastOneStays) {
    accelerometer.feed({Acceleration{0.1, 0, 0}, std::nullopt, Acceleration{0.3, 0, 0}});
    start();

    simulated->advance(50ms);

    EXPECT_EQ(xs, (std::vector<std::optional<double>>{0.1, std::nullopt, 0.3, 0.3, 0.3}));
    EXPECT_EQ(accelerometer.samplesTaken(), 5U);
}

TEST_F(SimulatedAccelerometerTest, FeedingNothingChangesNothing) {
    accelerometer.setReading(Acceleration{0.5, 0, 0});
    accelerometer.feed({});
    start();

    simulated->advance(10ms);

    EXPECT_EQ(xs, (std::vector<std::optional<double>>{0.5}));
}

TEST_F(SimulatedAccelerometerTest, AManagerThatIsGoneTakesNoSamples) {
    start();
    manager.reset();

    simulated->advance(1s);

    EXPECT_EQ(accelerometer.samplesTaken(), 0U);
}

} // namespace
} // namespace testing
} // namespace quorvane
