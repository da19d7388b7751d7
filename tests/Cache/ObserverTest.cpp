#include "Cache/CacheTest.h"

namespace quorvane {
namespace {

/// Observers of a hybrid cache, and of its front, on whose queue they run.
class ObserverTest : public CacheTest {
protected:
    [[nodiscard]] auto recordChanges() {
        return [this](Hybrid&, const Change& change) { changes.push_back(change); };
    }
    [[nodiscard]] auto recordEdits() {
        return [this](Hybrid&, const KeyChange& change) { edits.push_back(change); };
    }

    std::vector<Change> changes;
    std::vector<KeyChange> edits;
    std::shared_ptr<Cache> cache = std::make_shared<Cache>(diskConfig(), QVCache::MemoryConfig(), transformer());
    std::shared_ptr<Hybrid> hybrid = cache->hybridCache;
};

TEST_F(ObserverTest, AnAddIsToldToAllObserversOfTheCache) {
    cache->addObserver(recordChanges());
    cache->addObserver(recordChanges());

    cache->add("one", "k");

    EXPECT_EQ(changes, (std::vector<Change>{Change::ADD("k"), Change::ADD("k")}));
}

TEST_F(ObserverTest, TheObserverOfAKeyIsToldTheValueBeforeAndAfter) {
    cache->addObserver("k", recordEdits());

    cache->add("one", "k");
    cache->add("two", "k");
    cache->add("other", "x");

    EXPECT_EQ(edits, (std::vector<KeyChange>{KeyChange::EDIT(std::nullopt, "one"), KeyChange::EDIT("one", "two")}));
}

TEST_F(ObserverTest, TheValueBeforeIsReadFromDiskToo) {
    Cache(diskConfig(), QVCache::MemoryConfig(), transformer()).add("on disk", "k");
    cache->addObserver("k", recordEdits());

    cache->add("one", "k");

    EXPECT_EQ(edits, std::vector<KeyChange>{KeyChange::EDIT("on disk", "one")});
}

TEST_F(ObserverTest, AValueBeforeThatCannotBeReadIsNone) {
    ASSERT_FALSE(files().replace(hybrid->disk->makeFilePath("k"), "no JSON"));
    cache->addObserver("k", recordEdits());

    cache->add("one", "k");

    EXPECT_EQ(edits, std::vector<KeyChange>{KeyChange::EDIT(std::nullopt, "one")});
}

TEST_F(ObserverTest, NothingIsReadWhenNobodyObservesTheKey) {
    int reads = 0;
    const auto counting =
        std::make_shared<QVCache::Transformer<std::string>>([](const std::string& value) { return value; },
                                                            [&](std::string bytes) {
                                                                ++reads;
                                                                return bytes;
                                                            });
    Cache counted(diskConfig(), QVCache::MemoryConfig(), counting);
    ASSERT_FALSE(files().replace(counted.hybridCache->disk->makeFilePath("k"), "on disk"));
    counted.addObserver("other", recordEdits());
    counted.addObserver(recordChanges());

    counted.add("one", "k");
    EXPECT_EQ(reads, 0);

    counted.addObserver("p", recordEdits());
    ASSERT_FALSE(files().replace(counted.hybridCache->disk->makeFilePath("p"), "on disk"));
    counted.add("one", "p");
    EXPECT_EQ(reads, 1);
}

TEST_F(ObserverTest, AnAddWhoseDiskStepFailsTellsNobody) {
    cache->addObserver(recordChanges());
    cache->addObserver("k", recordEdits());
    files().setDiskFull(true);

    EXPECT_EQ(failureOf([&] { cache->add("one", "k"); }), noSuchFile);

    EXPECT_TRUE(changes.empty());
    EXPECT_TRUE(edits.empty());
    EXPECT_EQ(hybrid->memory->value("k"), "one");
}

TEST_F(ObserverTest, AKeysObserverIsToldBeforeTheCachesObservers) {
    std::vector<std::string> order;
    cache->addObserver([&](Hybrid&, const Change&) { order.emplace_back("cache"); });
    cache->addObserver("k", [&](Hybrid&, const KeyChange&) { order.emplace_back("key"); });

    cache->add("one", "k");

    EXPECT_EQ(order, (std::vector<std::string>{"key", "cache"}));
}

TEST_F(ObserverTest, AKeyHasOneObserverAndTheNewOneTakesThePlaceOfTheOld) {
    int old = 0;
    const auto oldToken = cache->addObserver("k", [&](Hybrid&, const KeyChange&) { ++old; });
    cache->addObserver("k", recordEdits());

    cache->add("one", "k");
    oldToken.cancel();
    cache->add("two", "k");

    EXPECT_EQ(old, 0);
    EXPECT_EQ(edits.size(), 2U) << "the token of the old one does not cancel the new one";
}

TEST_F(ObserverTest, AnObserverOfTheKeyThatIsGoneAfterTheReadIsNotCalled) {
    QVCache::ObservationToken token([] {});
    const auto cancelling =
        std::make_shared<QVCache::Transformer<std::string>>([](const std::string& value) { return value; },
                                                            [&](std::string bytes) {
                                                                token.cancel();
                                                                return bytes;
                                                            });
    Cache reading(diskConfig(), QVCache::MemoryConfig(), cancelling);
    ASSERT_FALSE(files().replace(reading.hybridCache->disk->makeFilePath("k"), "on disk"));
    token = reading.addObserver("k", recordEdits());

    reading.add("one", "k");

    EXPECT_TRUE(edits.empty());
}

TEST_F(ObserverTest, ACancelledObserverIsToldNothingMore) {
    const auto token = cache->addObserver(recordChanges());
    const auto keyToken = cache->addObserver("k", recordEdits());
    cache->add("one", "k");

    token.cancel();
    keyToken.cancel();
    token.cancel();
    keyToken.cancel();
    cache->add("two", "k");

    EXPECT_EQ(changes.size(), 1U);
    EXPECT_EQ(edits.size(), 1U);
}

TEST_F(ObserverTest, ATokenThatIsDroppedCancelsNothing) {
    { const auto token = cache->addObserver(recordChanges()); }

    cache->add("one", "k");

    EXPECT_EQ(changes.size(), 1U);
}

TEST_F(ObserverTest, AnObserverMayCancelItselfAndOthersFromInside) {
    std::vector<QVCache::ObservationToken> tokens;
    const auto cancelAll = [&](Hybrid&, const Change& change) {
        changes.push_back(change);
        for (const auto& token : tokens) {
            token.cancel();
        }
    };
    tokens.push_back(cache->addObserver(cancelAll));
    tokens.push_back(cache->addObserver(cancelAll));
    tokens.push_back(cache->addObserver("k", [&](Hybrid&, const KeyChange& change) {
        edits.push_back(change);
        tokens.back().cancel();
    }));

    cache->add("one", "k");
    cache->add("two", "k");

    EXPECT_EQ(changes.size(), 1U) << "the one that was told first cancelled the other";
    EXPECT_EQ(edits.size(), 1U);
}

TEST_F(ObserverTest, AnObserverMayAddReadAndObserveFromInside) {
    std::string seen;
    std::size_t count = 0;
    cache->addObserver([&](Hybrid& inner, const Change& change) {
        changes.push_back(change);
        if (change == Change::ADD("k")) {
            seen = cache->value("k") + inner.value("k");
            count = cache->syncCache.all().size();
            cache->add("from inside", "x");
            cache->addObserver("x", recordEdits());
            cache->addObserver(recordChanges());
        }
    });

    cache->add("one", "k");
    EXPECT_EQ(seen, "oneone");
    EXPECT_EQ(count, 1U);
    EXPECT_EQ(cache->value("x"), "from inside");
    EXPECT_EQ(changes, (std::vector<Change>{Change::ADD("k"), Change::ADD("x")}));

    cache->add("later", "x");
    EXPECT_EQ(edits.size(), 1U);
    EXPECT_EQ(changes.size(), 4U);
}

TEST_F(ObserverTest, ATokenMayBeCancelledAfterTheCacheIsGone) {
    const auto token = cache->addObserver(recordChanges());
    const auto keyToken = cache->addObserver("k", recordEdits());
    hybrid.reset();
    cache.reset();

    token.cancel();
    keyToken.cancel();

    EXPECT_TRUE(changes.empty());
}

TEST_F(ObserverTest, AnObserverMayLetGoOfTheCacheFromInside) {
    hybrid.reset();
    cache->addObserver([&](Hybrid& inner, const Change& change) {
        cache.reset();
        changes.push_back(change);
        EXPECT_EQ(inner.value("k"), "one");
    });

    cache->add("one", "k");

    EXPECT_EQ(cache, nullptr);
    EXPECT_EQ(changes.size(), 1U);
}

TEST_F(ObserverTest, AFileThatTheStoreRemovedIsToldToTheObserverOfItsKey) {
    int others = 0;
    cache->addObserver("photo.jpg", recordEdits());
    cache->addObserver("other", [&](Hybrid&, const KeyChange&) { ++others; });
    cache->addObserver(recordChanges());

    hybrid->disk->onRemove(directory + "/" + Disk::makeFileName("photo.jpg"));
    hybrid->disk->onRemove(directory + "/" + Disk::makeFileName("photo.jpg"));
    hybrid->disk->onRemove("/elsewhere/" + Disk::makeFileName("other"));

    EXPECT_EQ(edits, (std::vector<KeyChange>{KeyChange::REMOVE(), KeyChange::REMOVE()})) << "it stays registered";
    EXPECT_EQ(others, 0);
    EXPECT_TRUE(changes.empty());
}

TEST_F(ObserverTest, ThreadsMayObserveAndCancelWhileOthersAdd) {
    std::atomic<int> told = 0;
    std::thread observing([&] {
        for (int i = 0; i < 500; ++i) {
            const auto token = cache->addObserver([&](Hybrid&, const Change&) { ++told; });
            const auto keyToken = cache->addObserver("k", [&](Hybrid&, const KeyChange&) { ++told; });
            token.cancel();
            keyToken.cancel();
        }
    });
    for (int i = 0; i < 200; ++i) {
        cache->add("value", "k");
    }
    observing.join();
    const int before = told;

    cache->add("value", "k");

    EXPECT_EQ(told, before);
}

} // namespace
} // namespace quorvane
