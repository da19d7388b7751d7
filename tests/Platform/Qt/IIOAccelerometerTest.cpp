#include <gtest/gtest.h>

#include "Platform/Qt/IIOAccelerometer.h"
#include "Platform/Qt/IIODirectory.h"

namespace quorvane::platform::qt {
namespace {

using testing::IIODirectory;

class IIOAccelerometerTest : public ::testing::Test {
protected:
    IIODirectory devices;

    [[nodiscard]] bool isFound() const { return IIOAccelerometer::find(devices.path()).has_value(); }

    /// What the accelerometer reads, in metres per square second along what holds the device up.
    void expectReading(double x, double y, double z) const {
        const auto found = IIOAccelerometer::find(devices.path());
        ASSERT_TRUE(found.has_value());
        const auto reading = found->read();
        ASSERT_TRUE(reading.has_value());
        EXPECT_NEAR(reading->x * -9.80665, x, 1e-9);
        EXPECT_NEAR(reading->y * -9.80665, y, 1e-9);
        EXPECT_NEAR(reading->z * -9.80665, z, 1e-9);
    }
};

TEST_F(IIOAccelerometerTest, RawValuesAreScaledToMetresPerSquareSecondAndToldInGravities) {
    devices.write("iio:device0", {{"in_accel_x_raw", "-512"},
                                  {"in_accel_y_raw", "16384"},
                                  {"in_accel_z_raw", "7"},
                                  {"in_accel_scale", "0.000598550"}});

    expectReading(-512 * 0.00059855, 16384 * 0.00059855, 7 * 0.00059855);
}

TEST_F(IIOAccelerometerTest, AnOffsetIsAddedBeforeScaling) {
    devices.write("iio:device0", IIODirectory::accelerometer());
    devices.write("iio:device0", {{"in_accel_offset", "100"}});

    expectReading(1, 10.81, 1);
}

TEST_F(IIOAccelerometerTest, AnAxisMayHaveAScaleAndAnOffsetOfItsOwn) {
    devices.write("iio:device0", IIODirectory::accelerometer());
    devices.write("iio:device0", {{"in_accel_z_scale", "0.5"}, {"in_accel_z_offset", "-4"}});

    expectReading(0, 9.81, -2);
}

TEST_F(IIOAccelerometerTest, TheMountMatrixTurnsTheChipsAxesIntoTheDevices) {
    for (const char* name : {"in_accel_mount_matrix", "in_mount_matrix", "mount_matrix"}) {
        SCOPED_TRACE(name);
        devices.write("iio:device0", IIODirectory::accelerometer());
        devices.write("iio:device0", {{"in_accel_x_raw", "300"}, {name, "0, -1, 0; 1, 0, 0; 0, 0, 0.5"}});

        expectReading(-9.81, 3, 0);
        devices.removeDevice("iio:device0");
    }
}

TEST_F(IIOAccelerometerTest, AMountMatrixThatMakesNoSenseIsNone) {
    for (const char* matrix : {"", "1, 0, 0", "a, b, c; d, e, f; g, h, i", "1,0,0;0,1,0;0,0,nan"}) {
        SCOPED_TRACE(matrix);
        devices.write("iio:device0", IIODirectory::accelerometer());
        devices.write("iio:device0", {{"mount_matrix", matrix}});

        expectReading(0, 9.81, 0);
    }
}

TEST_F(IIOAccelerometerTest, OtherDevicesAreNoAccelerometers) {
    devices.write("iio:device0", {{"in_illuminance_raw", "7"}, {"in_illuminance_scale", "1"}});
    EXPECT_FALSE(isFound());

    devices.write("iio:device1", IIODirectory::accelerometer());

    EXPECT_TRUE(isFound());
}

TEST_F(IIOAccelerometerTest, ADeviceWithoutAScaleOrAnAxisIsNone) {
    for (const char* missing : {"in_accel_scale", "in_accel_x_raw", "in_accel_y_raw", "in_accel_z_raw"}) {
        SCOPED_TRACE(missing);
        auto files = IIODirectory::accelerometer();
        files.erase(missing);
        devices.write("iio:device0", files);

        EXPECT_FALSE(isFound());
        devices.removeDevice("iio:device0");
    }
}

TEST_F(IIOAccelerometerTest, AScaleThatMakesNoSenseIsNone) {
    for (const char* scale : {"", "0", "nan", "inf", "metres", "0.1x", "1 2"}) {
        SCOPED_TRACE(scale);
        devices.write("iio:device0", IIODirectory::accelerometer());
        devices.write("iio:device0", {{"in_accel_scale", scale}});

        EXPECT_FALSE(isFound());
    }
}

TEST_F(IIOAccelerometerTest, AMissingDirectoryHasNone) {
    EXPECT_FALSE(IIOAccelerometer::find(devices.path() + "/missing").has_value());
    EXPECT_FALSE(IIOAccelerometer::find("").has_value());
}

TEST_F(IIOAccelerometerTest, TheScreensHalfCountsBeforeAnyOtherAndTheKeyboardsLast) {
    const auto write = [&](const char* device, const char* x, const IIODirectory::Files& place) {
        devices.write(device, IIODirectory::accelerometer());
        devices.write(device, place);
        devices.write(device, {{"in_accel_x_raw", x}});
    };
    write("iio:device0", "100", {{"location", "base"}});
    expectReading(1, 9.81, 0);
    write("iio:device1", "200", {{"label", "accel-base"}});
    expectReading(1, 9.81, 0);
    write("iio:device2", "300", {});
    expectReading(3, 9.81, 0);
    write("iio:device3", "400", {{"location", "lid"}});
    expectReading(4, 9.81, 0);
    devices.removeDevice("iio:device3");
    write("iio:device4", "500", {{"label", "accel-display"}});
    expectReading(5, 9.81, 0);
}

TEST_F(IIOAccelerometerTest, AFileThatCannotBeReadNowIsNoSample) {
    devices.write("iio:device0", IIODirectory::accelerometer());
    const auto found = IIOAccelerometer::find(devices.path());
    ASSERT_TRUE(found.has_value());

    for (const char* text : {"", "nan", "busy", "1 2"}) {
        SCOPED_TRACE(text);
        devices.write("iio:device0", {{"in_accel_z_raw", text}});
        EXPECT_FALSE(found->read().has_value());
    }
    devices.removeDevice("iio:device0");
    EXPECT_FALSE(found->read().has_value());
}

} // namespace
} // namespace quorvane::platform::qt
