#include <string>
#include <utility>
#include <vector>

#include "Device/QVUtils.h"
#include "support/SimulatedTest.h"

namespace quorvane {
namespace {

class DeviceModelTest : public SimulatedTest {
protected:
    [[nodiscard]] std::string modelOf(const std::string& identifier) {
        phone->device().setHardwareIdentifier(identifier);
        return QVUtils::getDeviceModel();
    }
};

TEST_F(DeviceModelTest, EveryKnownHardwareHasItsMarketingName) {
    const std::vector<std::pair<std::string, std::string>> names{
        {"iPod5,1", "iPod touch (5th generation)"},
        {"iPod7,1", "iPod touch (6th generation)"},
        {"iPod9,1", "iPod touch (7th generation)"},
        {"iPhone3,1", "iPhone 4"},
        {"iPhone3,2", "iPhone 4"},
        {"iPhone3,3", "iPhone 4"},
        {"iPhone4,1", "iPhone 4s"},
        {"iPhone5,1", "iPhone 5"},
        {"iPhone5,2", "iPhone 5"},
        {"iPhone5,3", "iPhone 5c"},
        {"iPhone5,4", "iPhone 5c"},
        {"iPhone6,1", "iPhone 5s"},
        {"iPhone6,2", "iPhone 5s"},
        {"iPhone7,2", "iPhone 6"},
        {"iPhone7,1", "iPhone 6 Plus"},
        {"iPhone8,1", "iPhone 6s"},
        {"iPhone8,2", "iPhone 6s Plus"},
        {"iPhone8,4", "iPhone SE"},
        {"iPhone9,1", "iPhone 7"},
        {"iPhone9,3", "iPhone 7"},
        {"iPhone9,2", "iPhone 7 Plus"},
        {"iPhone9,4", "iPhone 7 Plus"},
        {"iPhone10,1", "iPhone 8"},
        {"iPhone10,4", "iPhone 8"},
        {"iPhone10,2", "iPhone 8 Plus"},
        {"iPhone10,5", "iPhone 8 Plus"},
        {"iPhone10,3", "iPhone X"},
        {"iPhone10,6", "iPhone X"},
        {"iPhone11,2", "iPhone XS"},
        {"iPhone11,4", "iPhone XS Max"},
        {"iPhone11,6", "iPhone XS Max"},
        {"iPhone11,8", "iPhone XR"},
        {"iPhone12,1", "iPhone 11"},
        {"iPhone12,3", "iPhone 11 Pro"},
        {"iPhone12,5", "iPhone 11 Pro Max"},
        {"iPhone12,8", "iPhone SE (2nd generation)"},
        {"iPad2,1", "iPad 2"},
        {"iPad2,2", "iPad 2"},
        {"iPad2,3", "iPad 2"},
        {"iPad2,4", "iPad 2"},
        {"iPad3,1", "iPad (3rd generation)"},
        {"iPad3,2", "iPad (3rd generation)"},
        {"iPad3,3", "iPad (3rd generation)"},
        {"iPad3,4", "iPad (4th generation)"},
        {"iPad3,5", "iPad (4th generation)"},
        {"iPad3,6", "iPad (4th generation)"},
        {"iPad6,11", "iPad (5th generation)"},
        {"iPad6,12", "iPad (5th generation)"},
        {"iPad7,5", "iPad (6th generation)"},
        {"iPad7,6", "iPad (6th generation)"},
        {"iPad7,11", "iPad (7th generation)"},
        {"iPad7,12", "iPad (7th generation)"},
        {"iPad4,1", "iPad Air"},
        {"iPad4,2", "iPad Air"},
        {"iPad4,3", "iPad Air"},
        {"iPad5,3", "iPad Air 2"},
        {"iPad5,4", "iPad Air 2"},
        {"iPad11,4", "iPad Air (3rd generation)"},
        {"iPad11,5", "iPad Air (3rd generation)"},
        {"iPad2,5", "iPad mini"},
        {"iPad2,6", "iPad mini"},
        {"iPad2,7", "iPad mini"},
        {"iPad4,4", "iPad mini 2"},
        {"iPad4,5", "iPad mini 2"},
        {"iPad4,6", "iPad mini 2"},
        {"iPad4,7", "iPad mini 3"},
        {"iPad4,8", "iPad mini 3"},
        {"iPad4,9", "iPad mini 3"},
        {"iPad5,1", "iPad mini 4"},
        {"iPad5,2", "iPad mini 4"},
        {"iPad11,1", "iPad mini (5th generation)"},
        {"iPad11,2", "iPad mini (5th generation)"},
        {"iPad6,3", "iPad Pro (9.7-inch)"},
        {"iPad6,4", "iPad Pro (9.7-inch)"},
        {"iPad7,3", "iPad Pro (10.5-inch)"},
        {"iPad7,4", "iPad Pro (10.5-inch)"},
        {"iPad8,1", "iPad Pro (11-inch)"},
        {"iPad8,2", "iPad Pro (11-inch)"},
        {"iPad8,3", "iPad Pro (11-inch)"},
        {"iPad8,4", "iPad Pro (11-inch)"},
        {"iPad8,9", "iPad Pro (11-inch) (2nd generation)"},
        {"iPad8,10", "iPad Pro (11-inch) (2nd generation)"},
        {"iPad6,7", "iPad Pro (12.9-inch)"},
        {"iPad6,8", "iPad Pro (12.9-inch)"},
        {"iPad7,1", "iPad Pro (12.9-inch) (2nd generation)"},
        {"iPad7,2", "iPad Pro (12.9-inch) (2nd generation)"},
        {"iPad8,5", "iPad Pro (12.9-inch) (3rd generation)"},
        {"iPad8,6", "iPad Pro (12.9-inch) (3rd generation)"},
        {"iPad8,7", "iPad Pro (12.9-inch) (3rd generation)"},
        {"iPad8,8", "iPad Pro (12.9-inch) (3rd generation)"},
        {"iPad8,11", "iPad Pro (12.9-inch) (4th generation)"},
        {"iPad8,12", "iPad Pro (12.9-inch) (4th generation)"},
        {"AppleTV5,3", "Apple TV"},
        {"AppleTV6,2", "Apple TV 4K"},
        {"AudioAccessory1,1", "HomePod"},
    };
    ASSERT_EQ(names.size(), 95U);

    for (const auto& [identifier, name] : names) {
        EXPECT_EQ(modelOf(identifier), name) << identifier;
    }
}

TEST_F(DeviceModelTest, UnknownHardwareIsReportedByItsIdentifier) {
    EXPECT_EQ(modelOf("iPhone17,1"), "iPhone17,1");
    EXPECT_EQ(modelOf("aarch64"), "aarch64");
    EXPECT_EQ(modelOf(""), "");
}

TEST_F(DeviceModelTest, LettersCaseMattersInAnIdentifier) {
    EXPECT_EQ(modelOf("iphone12,1"), "iphone12,1");
}

TEST_F(DeviceModelTest, ZeroBytesOfAnIdentifierAreSkipped) {
    EXPECT_EQ(modelOf(std::string("iPhone\0"
                                  "12,1\0\0",
                                  13)),
              "iPhone 11");
}

TEST_F(DeviceModelTest, ASimulatorIsNamedAfterTheModelThatItSimulates) {
    phone->device().setEnvironment("SIMULATOR_MODEL_IDENTIFIER", "iPhone3,1");

    EXPECT_EQ(modelOf("x86_64"), "Simulator iPhone 4");
    EXPECT_EQ(modelOf("i386"), "Simulator iPhone 4");
}

TEST_F(DeviceModelTest, ASimulatorOfUnknownHardwareIsNamedAfterTheIdentifier) {
    phone->device().setEnvironment("SIMULATOR_MODEL_IDENTIFIER", "iPhone17,1");

    EXPECT_EQ(modelOf("x86_64"), "Simulator iPhone17,1");
}

TEST_F(DeviceModelTest, ASimulatorThatDoesNotTellItsModelIsNamedAfterTheSystem) {
    EXPECT_EQ(modelOf("x86_64"), "Simulator iOS");
    EXPECT_EQ(modelOf("i386"), "Simulator iOS");
}

TEST_F(DeviceModelTest, ASimulatorThatSimulatesASimulatorIsNamedAfterTheIdentifier) {
    phone->device().setEnvironment("SIMULATOR_MODEL_IDENTIFIER", "x86_64");
    EXPECT_EQ(modelOf("x86_64"), "Simulator x86_64");

    phone->device().setEnvironment("SIMULATOR_MODEL_IDENTIFIER", "i386");
    EXPECT_EQ(modelOf("x86_64"), "Simulator i386");
}

TEST_F(DeviceModelTest, TheEnvironmentDoesNotMatterOnADevice) {
    phone->device().setEnvironment("SIMULATOR_MODEL_IDENTIFIER", "iPhone3,1");

    EXPECT_EQ(modelOf("iPhone12,1"), "iPhone 11");
}

} // namespace
} // namespace quorvane
