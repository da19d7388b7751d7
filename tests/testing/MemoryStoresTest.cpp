#include <string>
#include <system_error>
#include <vector>

#include <gtest/gtest.h>

#include "testing/SimulatedPlatform.h"

namespace quorvane::testing {
namespace {

using namespace std::chrono_literals;

class MemoryPreferencesTest : public ::testing::Test {
protected:
    MemoryPreferences& store() { return simulated->preferences(); }

    std::shared_ptr<SimulatedPlatform> simulated = SimulatedPlatform::make();
};

TEST_F(MemoryPreferencesTest, ARefusedWriteLastsForThisLaunchOnlyAndIsToldOnce) {
    store().setString("kept", "old");
    store().setString("removed", "old");

    store().refuseWrites(true);
    store().setString("kept", "new");
    store().setInteger("added", 1);
    store().remove("removed");

    EXPECT_EQ(store().string("kept"), "new");
    EXPECT_EQ(store().integer("added"), 1);
    EXPECT_EQ(store().string("removed"), std::nullopt);
    EXPECT_EQ(simulated->application().outputLines().size(), 1U);
    const auto next = SimulatedPlatform::make(simulated->nextLaunch());
    EXPECT_EQ(next->preferences().string("kept"), "old");
    EXPECT_EQ(next->preferences().integer("added"), std::nullopt);
    EXPECT_EQ(next->preferences().string("removed"), "old");
}

TEST_F(MemoryPreferencesTest, AWriteAfterTheFaultReachesTheNextLaunch) {
    store().refuseWrites(true);
    store().setString("k", "lost");
    store().refuseWrites(false);

    store().setString("k", "stored");

    EXPECT_EQ(SimulatedPlatform::make(simulated->nextLaunch())->preferences().string("k"), "stored");
}

TEST_F(MemoryPreferencesTest, KeysAreListedAsThisLaunchSeesThem) {
    store().setString("b", "");
    store().setString("a", "");
    store().refuseWrites(true);
    store().remove("a");
    store().setBoolean("c", false);

    EXPECT_EQ(store().keys(), (std::vector<std::string>{"b", "c"}));
}

TEST_F(MemoryPreferencesTest, SynchronizingIsCounted) {
    store().synchronize();
    store().synchronize();

    EXPECT_EQ(store().synchronizeCount(), 2);
}

class MemoryFileManagerTest : public ::testing::Test {
protected:
    void SetUp() override {
        ASSERT_FALSE(files().createDirectory(directory));
        ASSERT_FALSE(files().replace(directory + "/a", "old"));
    }

    MemoryFileManager& files() { return simulated->files(); }

    const std::string directory = "/simulated/caches/places";
    std::shared_ptr<SimulatedPlatform> simulated = SimulatedPlatform::make();
    std::error_code error;
};

TEST_F(MemoryFileManagerTest, AFullDiskRefusesWhatIsNewAndKeepsWhatIsOld) {
    files().setDiskFull(true);

    EXPECT_EQ(files().replace(directory + "/a", "new"), std::errc::no_space_on_device);
    EXPECT_EQ(files().replace(directory + "/b", "new"), std::errc::no_space_on_device);
    EXPECT_EQ(files().createDirectory(directory + "/c"), std::errc::no_space_on_device);
    EXPECT_FALSE(files().createDirectory(directory));
    EXPECT_EQ(files().read(directory + "/a", error), "old");
    EXPECT_EQ(files().list(directory, error), std::vector<std::string>{"a"});
    EXPECT_FALSE(files().remove(directory + "/a"));

    files().setDiskFull(false);
    EXPECT_FALSE(files().replace(directory + "/b", "new"));
}

TEST_F(MemoryFileManagerTest, AnUnreadablePathIsThereButCannotBeRead) {
    files().setUnreadable(directory + "/a", true);
    files().setUnreadable(directory + "/", true);

    EXPECT_EQ(files().read(directory + "/a", error), std::nullopt);
    EXPECT_EQ(error, std::errc::permission_denied);
    EXPECT_EQ(files().list(directory, error), std::nullopt);
    EXPECT_EQ(error, std::errc::permission_denied);
    EXPECT_TRUE(files().exists(directory + "/a"));

    files().setUnreadable(directory + "/a", false);
    EXPECT_EQ(files().read(directory + "/a", error), "old");
}

TEST_F(MemoryFileManagerTest, FilesAndTheirDirectoriesAreDatedByTheVirtualClock) {
    simulated->advance(1h);
    ASSERT_FALSE(files().replace(directory + "/b", ""));

    EXPECT_EQ(files().modificationDate(directory + "/a", error), SimulatedClock::start);
    EXPECT_EQ(files().modificationDate(directory + "/b", error), SimulatedClock::start + 1h);
    EXPECT_EQ(files().modificationDate(directory, error), SimulatedClock::start + 1h);
}

TEST_F(MemoryFileManagerTest, ProtectionIsRecorded) {
    EXPECT_FALSE(files().protect(directory, platform::FileProtection::ownerOnly));

    EXPECT_EQ(files().contents()->entries.at(directory).protection, platform::FileProtection::ownerOnly);
    EXPECT_EQ(files().contents()->entries.at(directory + "/a").protection, std::nullopt);
}

TEST_F(MemoryFileManagerTest, TheRootCannotBeRemoved) {
    EXPECT_EQ(files().remove("/"), std::errc::operation_not_permitted);
    EXPECT_EQ(files().list("/", error), std::vector<std::string>{"simulated"});
}

TEST_F(MemoryFileManagerTest, ARelativePathIsNoPath) {
    EXPECT_EQ(files().createDirectory("places"), std::errc::invalid_argument);
    EXPECT_EQ(files().replace("places/a", ""), std::errc::invalid_argument);
}

} // namespace
} // namespace quorvane::testing
