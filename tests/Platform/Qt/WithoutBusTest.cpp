#include <cstdlib>

#include "Platform/Application.h"
#include "Platform/Qt/QtLocationTest.h"

namespace quorvane::platform::qt {
namespace {

using ::testing::ElementsAre;
using ::testing::HasSubstr;
using ::testing::StartsWith;

/// In a program of its own, in which there is no bus.
class WithoutBusTest : public QtLocationTest {
protected:
    WithoutBusTest() { launch({}); }
};

TEST_F(WithoutBusTest, PermissionIsDeniedAtOnceAndOneLineSaysSo) {
    EXPECT_EQ(manager->authorization(), LocationAuthorization::denied);
    manager->requestAuthorization(LocationManager::Permission::always);
    manager->requestLocation();

    EXPECT_TRUE(runUntilFailure());
    EXPECT_THAT(listener.told, ElementsAre("fail denied"));
    EXPECT_THAT(output, ElementsAre(HasSubstr("this system has no location service")));
}

TEST_F(WithoutBusTest, BackgroundTimeIsGrantedAndOneLineSaysThatSleepIsNotDelayed) {
    output.clear();
    for (int i = 0; i < 2; ++i) {
        const Application::BackgroundTask task = platform->application().beginBackgroundTask("sync", [] {});
        EXPECT_NE(task, 0U);
        EXPECT_TRUE(runUntil([this] { return !output.empty(); }));
        platform->application().endBackgroundTask(task);
    }

    platform->mainQueue().poll();
    EXPECT_THAT(output, ElementsAre(StartsWith("QuorvaneSDK: the system's sleep cannot be delayed for work in the "
                                               "background: ")));
}

} // namespace
} // namespace quorvane::platform::qt
