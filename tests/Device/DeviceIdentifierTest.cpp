#include "Device/QVUtils.h"
#include "support/SimulatedTest.h"

namespace quorvane {
namespace {

class DeviceIdentifierTest : public SimulatedTest {};

TEST_F(DeviceIdentifierTest, IsTheIdentifierForVendor) {
    phone->device().setIdentifierForVendor("0F8FAD5B-D9CB-469F-A165-70867728950E");

    EXPECT_EQ(QVUtils::getDeviceId(), "0F8FAD5B-D9CB-469F-A165-70867728950E");
}

TEST_F(DeviceIdentifierTest, IsEmptyWhenThePlatformWithholdsIt) {
    phone->device().setIdentifierForVendor(std::nullopt);

    EXPECT_EQ(QVUtils::getDeviceId(), "");
}

TEST_F(DeviceIdentifierTest, AskingForItStoresNothing) {
    phone->device().setIdentifierForVendor(std::nullopt);

    (void)QVUtils::getDeviceId();
    (void)QVUtils::getDeviceModel();

    EXPECT_TRUE(preferences().keys().empty());
}

} // namespace
} // namespace quorvane
