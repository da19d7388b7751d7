#include "Core/SharedService.h"
#include "support/SimulatedTest.h"

namespace quorvane {
namespace {

class Service : public SharedService<Service> {
public:
    int calls = 0;
};

class SharedServiceTest : public SimulatedTest {};

TEST_F(SharedServiceTest, EveryCallerGetsTheSameInstance) {
    Service::shared().calls = 3;

    EXPECT_EQ(Service::shared().calls, 3);
}

TEST_F(SharedServiceTest, AnotherPlatformBeginsWithANewInstanceWithoutADelegate) {
    const auto delegate = std::make_shared<quorvane::testing::RecordingDelegate>();
    Service::shared().calls = 3;
    Service::shared().delegate = delegate;

    phone.relaunch();

    EXPECT_EQ(Service::shared().calls, 0);
    EXPECT_EQ(Service::shared().delegate.lock(), nullptr);
}

TEST_F(SharedServiceTest, HoldsItsDelegateWeakly) {
    auto delegate = std::make_shared<quorvane::testing::RecordingDelegate>();
    Service::shared().delegate = delegate;

    delegate.reset();

    EXPECT_TRUE(Service::shared().delegate.expired());
}

using SharedServiceDeathTest = SharedServiceTest;

TEST_F(SharedServiceDeathTest, AskingForAnInstanceWithoutAPlatformStopsTheProcess) {
    EXPECT_DEATH(
        {
            platform::install(nullptr);
            Service::shared().calls = 1;
        },
        "a platform must be installed");
}

} // namespace
} // namespace quorvane
