#include <string>
#include <vector>

#include <gtest/gtest.h>

#include "Platform/Registry.h"
#include "testing/DateText.h"
#include "testing/InstalledPlatform.h"

namespace quorvane::testing {
namespace {

using namespace std::chrono_literals;
using platform::Date;

class SimulatedApplicationTest : public ::testing::Test {
protected:
    SimulatedApplication& application() { return simulated->application(); }

    std::shared_ptr<SimulatedPlatform> simulated = SimulatedPlatform::make();
};

TEST_F(SimulatedApplicationTest, AnExpiredGrantCallsItsHandlerOnceOnTheMainQueue) {
    int expired = 0;
    const auto task = application().beginBackgroundTask("sync", [&] { ++expired; });

    application().expire(task);
    application().expireAll();
    EXPECT_EQ(expired, 0);
    simulated->runUntilIdle();

    EXPECT_EQ(expired, 1);
    EXPECT_TRUE(application().backgroundTasks().at(0).expired);
    EXPECT_EQ(application().openBackgroundTaskCount(), 0);
}

TEST_F(SimulatedApplicationTest, AGrantThatEndsBeforeItsExpiryIsHandledCallsNothing) {
    int expired = 0;
    const auto task = application().beginBackgroundTask("sync", [&] { ++expired; });

    application().expire(task);
    application().endBackgroundTask(task);
    simulated->runUntilIdle();

    EXPECT_EQ(expired, 0);
    EXPECT_FALSE(application().backgroundTasks().at(0).expired);
}

TEST_F(SimulatedApplicationTest, ARefusedGrantIsZeroAndNotRecorded) {
    application().refuseBackgroundTasks(true);

    EXPECT_EQ(application().beginBackgroundTask("sync", [] {}), 0U);

    EXPECT_TRUE(application().backgroundTasks().empty());
}

TEST_F(SimulatedApplicationTest, GrantsAreRecordedByName) {
    application().beginBackgroundTask("first", [] {});
    application().endBackgroundTask(application().beginBackgroundTask("second", [] {}));

    ASSERT_EQ(application().backgroundTasks().size(), 2U);
    EXPECT_EQ(application().backgroundTasks()[0].name, "first");
    EXPECT_TRUE(application().backgroundTasks()[0].open);
    EXPECT_EQ(application().backgroundTasks()[1].name, "second");
    EXPECT_FALSE(application().backgroundTasks()[1].open);
}

TEST_F(SimulatedApplicationTest, BackgroundTimeIsWhatWasSet) {
    application().setBackgroundTimeRemaining(27.5);

    EXPECT_EQ(application().backgroundTimeRemaining(), 27.5);
}

TEST_F(SimulatedApplicationTest, AMemoryWarningReachesEveryHandlerEachTime) {
    int first = 0;
    int second = 0;
    application().onMemoryWarning([&] { ++first; });
    application().onMemoryWarning([&] { ++second; });

    application().warnOfMemory();
    application().warnOfMemory();
    EXPECT_EQ(first, 0);
    simulated->runUntilIdle();

    EXPECT_EQ(first, 2);
    EXPECT_EQ(second, 2);
}

TEST_F(SimulatedApplicationTest, OutputIsRecordedUntilItIsCleared) {
    application().standardOutput("one");
    EXPECT_EQ(application().outputLines(), std::vector<std::string>{"one"});

    application().clearOutput();
    EXPECT_TRUE(application().outputLines().empty());
}

TEST(SimulatedRandomTest, TheFirstBytesOfASeedAreTheGeneratorsOutputsLowestByteFirst) {
    SimulatedRandom random(0);

    // The first output for seed 0 is E220A8397B1DCDAF, the second 6E789E6AA1B965F4.
    EXPECT_EQ(random.bytes(3), (std::vector<std::uint8_t>{0xAF, 0xCD, 0x1D}));
    EXPECT_EQ(random.bytes(8), (std::vector<std::uint8_t>{0xF4, 0x65, 0xB9, 0xA1, 0x6A, 0x9E, 0x78, 0x6E}));
}

TEST(SimulatedDeviceTest, EverythingCanBeSetAndWithheld) {
    SimulatedDevice device;
    EXPECT_EQ(device.identifierForVendor(), SimulatedDevice::defaultIdentifier);

    device.setIdentifierForVendor(std::nullopt);
    device.setSystemVersion("17.1");
    device.setHardwareIdentifier("iPhone12,1");
    device.setEnvironment("A", "1");
    device.setEnvironment("B", "2");
    device.setEnvironment("B", std::nullopt);

    EXPECT_EQ(device.identifierForVendor(), std::nullopt);
    EXPECT_EQ(device.systemVersion(), "17.1");
    EXPECT_EQ(device.hardwareIdentifier(), "iPhone12,1");
    EXPECT_EQ(device.environment("A"), "1");
    EXPECT_EQ(device.environment("B"), std::nullopt);
}

TEST(DateTextTest, MillisecondsStandOnlyWhereTheyAreNeeded) {
    EXPECT_EQ(dateText(SimulatedClock::start), "2026-03-01T12:00:00Z");
    EXPECT_EQ(dateText(SimulatedClock::start + 1250us), "2026-03-01T12:00:00.001Z");
    EXPECT_EQ(dateText(Date() - 1ms), "1969-12-31T23:59:59.999Z");
}

/// A shared object that counts how many of it live.
struct Counted {
    explicit Counted(platform::Platform& thePlatform) : platform(&thePlatform) { ++alive; }
    Counted(const Counted&) = delete;
    Counted& operator=(const Counted&) = delete;
    ~Counted() { --alive; }
    platform::Platform* platform;
    static inline int alive = 0;
};

TEST(InstalledPlatformTest, ThePlatformIsInUseForItsLifetimeOnly) {
    {
        const InstalledPlatform installed;

        EXPECT_EQ(&platform::current(), &*installed);
        EXPECT_EQ(platform::shared<Counted>().platform, &*installed);
        EXPECT_EQ(Counted::alive, 1);
    }
    EXPECT_FALSE(platform::isInstalled());
    EXPECT_EQ(Counted::alive, 0);
}

TEST(InstalledPlatformTest, ARelaunchKeepsWhatWasStoredAndNothingElse) {
    InstalledPlatform installed;
    installed->preferences().setString("k", "stored");
    static_cast<void>(platform::shared<Counted>());
    bool ran = false;
    installed->mainQueue().post([&] { ran = true; });

    installed.relaunch();
    installed->advance(1s);

    EXPECT_EQ(platform::current().preferences().string("k"), "stored");
    EXPECT_EQ(Counted::alive, 0);
    EXPECT_FALSE(ran);
}

} // namespace
} // namespace quorvane::testing
