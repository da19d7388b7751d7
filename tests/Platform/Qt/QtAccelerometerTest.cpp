#include <thread>

#include "Platform/Qt/IIODirectory.h"
#include "Platform/Qt/QtAccelerometer.h"
#include "Platform/Qt/QtPlatform.h"
#include "Platform/contract/AccelerometerContract.h"
#include "support/ScratchDirectory.h"

namespace quorvane::platform {
namespace contract {
namespace {

class QtAccelerometerRig : public AccelerometerRig {
public:
    Platform& platform() override { return *qtPlatform; }
    Accelerometer& accelerometer() override { return device; }
    void remove() override { devices.removeDevice("iio:device0"); }
    void measure(std::optional<Acceleration> acceleration) override {
        const auto raw = [](double gravities) { return std::to_string(static_cast<int>(gravities * -10'000)); };
        // Each file at once: a sample may be under way.
        replace("in_accel_x_raw", acceleration ? raw(acceleration->x) : "");
        replace("in_accel_y_raw", acceleration ? raw(acceleration->y) : "");
        replace("in_accel_z_raw", acceleration ? raw(acceleration->z) : "");
    }
    bool runUntil(const std::function<bool()>& done) override {
        return qtPlatform->mainQueue().runUntil(done, std::chrono::seconds(60));
    }
    void pass(std::chrono::nanoseconds time) override {
        qtPlatform->mainQueue().runUntil([] { return false; }, time);
    }

private:
    void replace(const std::string& name, const std::string& text) {
        const std::string folder = devices.path() + "/iio:device0/";
        devices.write("iio:device0", {{"new", text}});
        std::filesystem::rename(folder + "new", folder + name);
    }
    static std::shared_ptr<QtPlatform> make(const std::string& home) {
        QtOptions options;
        options.native.home = home;
        return QtPlatform::make(std::move(options));
    }
    static testing::IIODirectory& withAccelerometer(testing::IIODirectory& devices) {
        auto files = testing::IIODirectory::accelerometer();
        files["in_accel_scale"] = "0.000980665";
        devices.write("iio:device0", files);
        return devices;
    }

    testing::ScratchDirectory home;
    testing::IIODirectory devices;
    const std::shared_ptr<QtPlatform> qtPlatform = make(home.path());
    qt::QtAccelerometer device{qtPlatform->clock(), qtPlatform->mainQueue(), withAccelerometer(devices).path()};
};

std::unique_ptr<AccelerometerRig> makeRig() {
    return std::make_unique<QtAccelerometerRig>();
}

INSTANTIATE_TEST_SUITE_P(Qt, AccelerometerContract, ::testing::Values(AccelerometerRigMaker(makeRig)));

} // namespace
} // namespace contract

namespace qt {
namespace {

TEST(QtAccelerometerTest, AStandInThatReportsADeviceAtRestIsNoAccelerometer) {
    EXPECT_FALSE(QtAccelerometer::isReal("dummy.accelerometer"));
    EXPECT_FALSE(QtAccelerometer::isReal(""));
    EXPECT_TRUE(QtAccelerometer::isReal("android.accelerometer"));
}

} // namespace
} // namespace qt
} // namespace quorvane::platform
