#pragma once

#include <optional>
#include <string>
#include <thread>

#include <gmock/gmock.h>

#include "Platform/Device.h"
#include "Platform/contract/Rig.h"

namespace quorvane::platform::contract {

class DeviceContract : public Contract {
protected:
    [[nodiscard]] Device& device() { return platform().device(); }
};

TEST_P(DeviceContract, TheIdentifierIsAnUpperCaseUUIDThatStaysTheSame) {
    const std::optional<std::string> identifier = device().identifierForVendor();
    ASSERT_TRUE(identifier.has_value());
    EXPECT_THAT(*identifier, ::testing::MatchesRegex("[0-9A-F]{8}-[0-9A-F]{4}-[0-9A-F]{4}-[0-9A-F]{4}-[0-9A-F]{12}"));
    EXPECT_EQ(device().identifierForVendor(), identifier);

    rig->relaunch();

    EXPECT_EQ(device().identifierForVendor(), identifier);
}

TEST_P(DeviceContract, TheSystemVersionBeginsWithADigit) {
    EXPECT_THAT(device().systemVersion(), ::testing::MatchesRegex("[0-9][ -~]*"));
}

TEST_P(DeviceContract, TheHardwareIdentifierIsPrintableText) {
    EXPECT_THAT(device().hardwareIdentifier(), ::testing::MatchesRegex("[!-~][ -~]*"));
}

TEST_P(DeviceContract, AVariableOfTheEnvironmentIsAnsweredAndAnAbsentOneIsNone) {
    rig->setEnvironment("QUORVANE_CONTRACT_VARIABLE", "iPhone12,1");
    rig->setEnvironment("QUORVANE_CONTRACT_EMPTY", "");

    EXPECT_EQ(device().environment("QUORVANE_CONTRACT_VARIABLE"), "iPhone12,1");
    EXPECT_EQ(device().environment("QUORVANE_CONTRACT_EMPTY"), "");
    EXPECT_EQ(device().environment("QUORVANE_CONTRACT_ABSENT"), std::nullopt);
}

TEST_P(DeviceContract, AnyThreadMayAsk) {
    std::optional<std::string> identifier;
    std::string version;

    std::thread([&] {
        identifier = device().identifierForVendor();
        version = device().systemVersion();
    }).join();

    EXPECT_EQ(identifier, device().identifierForVendor());
    EXPECT_EQ(version, device().systemVersion());
}

} // namespace quorvane::platform::contract
