#include "Cache/CacheTest.h"
#include "Cache/MemoryCache.h"

namespace quorvane {
namespace {

using namespace std::chrono_literals;

class MemoryCacheTest : public CacheTest {
protected:
    std::shared_ptr<Memory> memory = makeMemory();
};

TEST_F(MemoryCacheTest, WhatIsAddedIsFoundWithTwelveHoursToLiveAndNoFile) {
    memory->add("one", "k");

    const auto entry = memory->entry("k");
    EXPECT_EQ(entry->key, "k");
    EXPECT_EQ(entry->value, "one");
    EXPECT_EQ(entry->expiry, time() + lifetime);
    EXPECT_EQ(entry->filePath, std::nullopt);
    EXPECT_EQ(memory->value("k"), "one");
}

TEST_F(MemoryCacheTest, AKeyThatWasNeverAddedIsNotFound) {
    try {
        static_cast<void>(memory->entry("k"));
        FAIL() << "an entry was found";
    } catch (const QVStorageException& error) {
        EXPECT_EQ(error.error, QVStorageError::NOT_FOUND);
    }
    EXPECT_EQ(failureOf([&] { static_cast<void>(memory->value("k")); }), "NOT_FOUND");
}

TEST_F(MemoryCacheTest, AnEntryIsValidStrictlyBeforeItsExpiry) {
    memory->add("one", "k");

    phone->advance(lifetime - 1ns);
    EXPECT_EQ(memory->value("k"), "one");
    phone->advance(1ns);
    EXPECT_EQ(failureOf([&] { static_cast<void>(memory->entry("k")); }), "NOT_FOUND");
}

TEST_F(MemoryCacheTest, AnEntryThatIsReadAtItsExpiryIsRemovedWithItsKey) {
    memory->add("one", "k");
    EXPECT_EQ(memory->keysNow(), std::set<std::string>{"k"});

    phone->advance(lifetime);
    EXPECT_EQ(memory->find("k"), nullptr);

    EXPECT_EQ(memory->keysNow(), std::set<std::string>());
    EXPECT_EQ(memory->wrapped->count(), 0U);
    phone->setWallTime(time() - lifetime);
    EXPECT_EQ(memory->find("k"), nullptr) << "an entry came back with the clock";
}

TEST_F(MemoryCacheTest, AddingAgainReplacesTheValueAndItsExpiry) {
    memory->add("one", "k");
    phone->advance(11h);
    memory->add("two", "k");

    phone->advance(11h);

    EXPECT_EQ(memory->value("k"), "two");
    EXPECT_EQ(memory->all().size(), 1U);
}

TEST_F(MemoryCacheTest, TheLimitsAreAHundredAndTheLifetimeTwelveHoursWhateverTheConfigurationSays) {
    QVCache::MemoryConfig config;
    config.countLimit = 2;
    config.totalCostLimit = 2;
    config.entryLifetime = 1;
    Memory small(config);

    for (int i = 0; i < 100; ++i) {
        small.add("v", std::to_string(i));
    }
    phone->advance(lifetime - 1ns);

    EXPECT_EQ(small.all().size(), 100U);
    EXPECT_EQ(small.config.countLimit, 2U);
}

TEST_F(MemoryCacheTest, TheHundredAndFirstEntryDrivesOutTheOneUsedLeastRecently) {
    for (int i = 0; i < 100; ++i) {
        memory->add("v", std::to_string(i));
    }
    EXPECT_NE(memory->find("0"), nullptr);

    memory->add("v", "100");

    EXPECT_NE(memory->find("0"), nullptr);
    EXPECT_EQ(memory->find("1"), nullptr);
    EXPECT_EQ(memory->wrapped->count(), 100U);
}

TEST_F(MemoryCacheTest, TheHundredAndFirstEntryEvictsOneAlthoughTheConfigurationSaysAThousand) {
    QVCache::MemoryConfig config;
    config.countLimit = 1000;
    config.totalCostLimit = 1000;
    Memory large(config);
    for (int i = 0; i < 100; ++i) {
        large.add("v", std::to_string(i));
    }
    EXPECT_EQ(large.wrapped->count(), 100U);

    large.add("v", "100");

    EXPECT_EQ(large.wrapped->count(), 100U);
    EXPECT_EQ(large.find("0"), nullptr);
    EXPECT_NE(large.find("1"), nullptr);
    EXPECT_NE(large.find("100"), nullptr);
}

TEST_F(MemoryCacheTest, AllIsEveryEntry) {
    memory->add("one", "a");
    memory->add("two", "b");

    const auto entries = memory->all();

    ASSERT_EQ(entries.size(), 2U);
    EXPECT_EQ(entries[0]->value, "one");
    EXPECT_EQ(entries[1]->value, "two");
}

TEST_F(MemoryCacheTest, AllOfNothingIsAnEmptyList) {
    EXPECT_TRUE(memory->all().empty());
}

TEST_F(MemoryCacheTest, AfterAnEvictionAllIsNotFoundAlthoughOtherEntriesAreThere) {
    memory->add("one", "a");
    memory->add("two", "b");
    memory->wrapped->removeObject(std::string("a"));
    EXPECT_EQ(memory->keysNow(), (std::set<std::string>{"a", "b"})) << "an evicted key stays until a read";

    EXPECT_EQ(failureOf([&] { static_cast<void>(memory->all()); }), "NOT_FOUND");

    EXPECT_EQ(memory->keysNow(), std::set<std::string>{"b"});
    EXPECT_EQ(memory->all().size(), 1U) << "the read that found it missing dropped the key";
}

TEST_F(MemoryCacheTest, AReadThatFindsItsObjectEvictedDropsTheKey) {
    memory->add("one", "a");
    memory->wrapped->removeAll();

    EXPECT_EQ(memory->find("a"), nullptr);

    EXPECT_TRUE(memory->all().empty());
}

TEST_F(MemoryCacheTest, AnExpiredEntryEndsAllAndIsRemovedFirst) {
    memory->add("one", "a");
    phone->advance(1h);
    memory->add("two", "b");
    phone->advance(lifetime - 1h);

    EXPECT_EQ(failureOf([&] { static_cast<void>(memory->all()); }), "NOT_FOUND");

    const auto left = memory->all();
    ASSERT_EQ(left.size(), 1U);
    EXPECT_EQ(left[0]->key, "b");
}

TEST_F(MemoryCacheTest, AWarningOfTheSystemEmptiesItAndKeepsItsKeys) {
    memory->add("one", "a");

    phone->application().warnOfMemory();
    phone->runUntilIdle();

    EXPECT_EQ(memory->wrapped->count(), 0U);
    EXPECT_EQ(failureOf([&] { static_cast<void>(memory->all()); }), "NOT_FOUND");
    EXPECT_TRUE(memory->all().empty());
    memory->add("two", "a");
    EXPECT_EQ(memory->value("a"), "two");
}

TEST_F(MemoryCacheTest, AWarningAfterItIsGoneDoesNothing) {
    const std::weak_ptr<Memory::Objects> objects = memory->wrapped;
    memory.reset();
    EXPECT_TRUE(objects.expired()) << "the platform holds the objects";

    phone->application().warnOfMemory();

    EXPECT_TRUE(phone->runUntilIdle());
}

TEST_F(MemoryCacheTest, OneThatIsMadeOnAnotherThreadIsWarnedAsWell) {
    std::thread([this] { memory = makeMemory(); }).join();
    phone->runUntilIdle();
    memory->add("one", "a");

    phone->application().warnOfMemory();
    phone->runUntilIdle();

    EXPECT_EQ(memory->wrapped->count(), 0U);
}

TEST_F(MemoryCacheTest, AnyClockMayTellTheExpiry) {
    platform::Date now(100h);
    QVCache::MemoryConfig config;
    config.dateProvider = [&] { return now; };
    Memory dated(config);
    dated.add("one", "k");
    EXPECT_EQ(dated.entry("k")->expiry, platform::Date(112h));

    now += lifetime;

    EXPECT_EQ(dated.find("k"), nullptr);
}

} // namespace
} // namespace quorvane
