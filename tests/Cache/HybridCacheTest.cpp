#include "Cache/CacheTest.h"
#include "Cache/HybridCache.h"

namespace quorvane {
namespace {

using namespace std::chrono_literals;

class HybridCacheTest : public CacheTest {
protected:
    /// Another cache over the same directory, whose memory is empty.
    [[nodiscard]] std::shared_ptr<Hybrid> another() { return Hybrid::make(makeMemory(), makeDisk()); }

    [[nodiscard]] std::string pathOf(const std::string& key) { return hybrid->disk->makeFilePath(key); }

    std::shared_ptr<Hybrid> hybrid = another();
};

TEST_F(HybridCacheTest, AnAddReachesMemoryAndDisk) {
    hybrid->add("one", "k");

    EXPECT_EQ(hybrid->memory->value("k"), "one");
    EXPECT_EQ(hybrid->disk->value("k"), "one");
    EXPECT_EQ(hybrid->value("k"), "one");
}

TEST_F(HybridCacheTest, WhatIsInMemoryIsNotReadFromDisk) {
    hybrid->add("one", "k");
    ASSERT_FALSE(files().remove(pathOf("k")));

    EXPECT_EQ(hybrid->value("k"), "one");
    EXPECT_EQ(hybrid->entry("k")->filePath, std::nullopt);
}

TEST_F(HybridCacheTest, AValueFoundOnlyOnDiskIsReturnedAndCopiedIntoMemory) {
    another()->add("one", "k");

    const auto entry = hybrid->entry("k");
    EXPECT_EQ(entry->value, "one");
    EXPECT_EQ(entry->filePath, pathOf("k"));

    ASSERT_FALSE(files().remove(pathOf("k")));
    EXPECT_EQ(hybrid->value("k"), "one") << "the second read is served by memory";
}

TEST_F(HybridCacheTest, ACopyFromDiskLivesForTwelveHoursMoreWhateverTheFilesExpiry) {
    another()->add("one", "k");
    phone->advance(100h);

    const auto entry = hybrid->entry("k");

    EXPECT_EQ(entry->expiry, time() - 100h + lifetime) << "the disk's entry has the file's expiry";
    EXPECT_EQ(hybrid->memory->entry("k")->expiry, time() + lifetime);
}

TEST_F(HybridCacheTest, AMissOnBothIsTheDisksErrorAndNotMemorys) {
    EXPECT_EQ(failureOf([&] { static_cast<void>(hybrid->entry("k")); }), noSuchFile);
    EXPECT_EQ(failureOf([&] { static_cast<void>(hybrid->value("k")); }), noSuchFile);
}

TEST_F(HybridCacheTest, AnEntryThatExpiredInMemoryIsReadFromDiskAgain) {
    hybrid->add("one", "k");

    phone->advance(lifetime);

    EXPECT_EQ(hybrid->entry("k")->filePath, pathOf("k"));
    EXPECT_EQ(hybrid->entry("k")->filePath, std::nullopt);
}

TEST_F(HybridCacheTest, AFileThatCannotBeDecodedIsTheDecodersError) {
    ASSERT_FALSE(files().replace(pathOf("k"), R"({"object":7})"));

    EXPECT_THROW(static_cast<void>(hybrid->entry("k")), json::DecodingError);
    EXPECT_EQ(hybrid->memory->find("k"), nullptr);
}

TEST_F(HybridCacheTest, AnAddWhoseDiskStepFailsLeavesTheValueInMemory) {
    files().setDiskFull(true);

    EXPECT_EQ(failureOf([&] { hybrid->add("one", "k"); }), noSuchFile);

    EXPECT_EQ(hybrid->value("k"), "one");
    EXPECT_EQ(listed(directory), std::vector<std::string>());
}

TEST_F(HybridCacheTest, AllIsWhatIsInMemory) {
    another()->add("on disk", "d");
    hybrid->add("one", "a");
    hybrid->add("two", "b");

    const auto entries = hybrid->all();

    ASSERT_EQ(entries.size(), 2U);
    EXPECT_EQ(entries[0]->value, "one");
    EXPECT_EQ(entries[1]->value, "two");
}

TEST_F(HybridCacheTest, AllOfAnEmptyMemoryIsAnEmptyListWithoutTheDisk) {
    files().setUnreadable(directory, true);

    EXPECT_TRUE(hybrid->all().empty());
}

TEST_F(HybridCacheTest, AllIsAnEmptyListAfterARestartAlthoughTheFilesAreThere) {
    hybrid->add("one", "a");
    hybrid.reset();

    phone.relaunch();

    EXPECT_TRUE(another()->all().empty());
    EXPECT_EQ(listed(directory).size(), 1U);
}

TEST_F(HybridCacheTest, AllAfterAnExpiryLooksForTheListedNamesAsKeysAndFails) {
    hybrid->add("one", "a");
    phone->advance(lifetime);

    EXPECT_EQ(failureOf([&] { static_cast<void>(hybrid->all()); }), noSuchFile);
}

TEST_F(HybridCacheTest, AllAfterAnEvictionLooksForTheListedNamesAsKeysAndFails) {
    hybrid->add("one", "a");
    hybrid->add("two", "b");
    hybrid->memory->wrapped->removeObject(std::string("a"));

    EXPECT_EQ(failureOf([&] { static_cast<void>(hybrid->all()); }), noSuchFile);

    EXPECT_EQ(hybrid->all().size(), 1U) << "the key was dropped, what is left is in memory";
}

TEST_F(HybridCacheTest, AllAfterAnExpirySucceedsForAnEmptyDirectory) {
    hybrid->add("one", "a");
    ASSERT_FALSE(files().remove(pathOf("a")));
    phone->advance(lifetime);

    EXPECT_TRUE(hybrid->all().empty());
}

TEST_F(HybridCacheTest, AllAfterAnExpiryRaisesThatTheDirectoryCannotBeListed) {
    hybrid->add("one", "a");
    phone->advance(lifetime);
    files().setUnreadable(directory, true);

    EXPECT_EQ(failureOf([&] { static_cast<void>(hybrid->all()); }), "Permission denied");
}

TEST_F(HybridCacheTest, EntriesThatAllFindsOnDiskAreNotCopiedIntoMemory) {
    // The first listed name is the key of the second file, so that it is found before the second name is not.
    hybrid->add("one", "a");
    const std::string name = Disk::makeFileName("a");
    ASSERT_LT(name, Disk::makeFileName(name));
    ASSERT_FALSE(files().replace(pathOf(name), R"({"object":"found"})"));
    phone->advance(lifetime);

    EXPECT_EQ(failureOf([&] { static_cast<void>(hybrid->all()); }), noSuchFile);

    EXPECT_EQ(hybrid->memory->find(name), nullptr);
    EXPECT_EQ(hybrid->memory->wrapped->count(), 0U);
}

TEST_F(HybridCacheTest, TheStoreDoesNotKeepTheCacheAlive) {
    const std::shared_ptr<Disk> disk = hybrid->disk;
    const std::weak_ptr<Hybrid> weak = hybrid;

    hybrid.reset();

    EXPECT_TRUE(weak.expired());
    disk->onRemove("/any/path");
}

} // namespace
} // namespace quorvane
