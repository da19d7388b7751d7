#include "API/StandardHeaders.h"
#include "support/APITest.h"

namespace quorvane {
namespace {

class StandardHeadersTest : public APITest {};

TEST_F(StandardHeadersTest, TellTheDeviceAndTheLibrary) {
    phone->device().setHardwareIdentifier("iPhone12,1");
    phone->device().setSystemVersion("16.4.1");

    const Headers expected{
        {"Accept", "application/json"},      {"Content-Type", "application/json"},
        {"X-Quorvane-Device-Make", "Apple"}, {"X-Quorvane-Device-Model", "iPhone 11"},
        {"X-Quorvane-Device-OS", "16.4.1"},  {"X-Quorvane-Device-Type", "iOS"},
        {"X-Quorvane-SDK-Version", "0.0.2"},
    };
    EXPECT_EQ(standardHeaders(), expected);
    EXPECT_EQ(api().getHeaders(), expected);
}

TEST_F(StandardHeadersTest, CarryTheAccessTokenAsItIsStored) {
    store("quorvane_access_token", "Bearer abc");

    const Headers::value_type expected("Authorization", "Bearer abc");
    EXPECT_EQ(standardHeaders().back(), expected);
    EXPECT_EQ(standardHeaders().size(), 8U);
}

TEST_F(StandardHeadersTest, AreComputedAnewEachTime) {
    store("quorvane_access_token", "Bearer one");
    (void)standardHeaders();

    store("quorvane_access_token", "two, without a scheme");

    EXPECT_EQ(standardHeaders().back().second, "two, without a scheme");
}

} // namespace
} // namespace quorvane
