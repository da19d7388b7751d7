#include <condition_variable>
#include <mutex>
#include <thread>

#include "Cache/CacheTest.h"

namespace quorvane {
namespace {

using namespace std::chrono_literals;

/// The front object and its two ways in.
class CacheFrontTest : public CacheTest {
protected:
    /// Waits for what the asynchronous cache has accepted.
    void finish() {
        cache->asyncCache.queue->sync([] {});
    }

    std::shared_ptr<Cache> cache = std::make_shared<Cache>(diskConfig(), QVCache::MemoryConfig(), transformer());
};

TEST_F(CacheFrontTest, OneHybridCacheStandsBehindTwoQueuesWithTheirLabels) {
    EXPECT_EQ(cache->asyncCache.innerCache, cache->hybridCache);
    EXPECT_EQ(cache->syncCache.innerCache, cache->hybridCache);
    EXPECT_EQ(cache->asyncCache.queue->label(), "Cache.AsyncCache.Queue");
    EXPECT_EQ(cache->syncCache.queue->label(), "Cache.SyncCache.Queue");
    EXPECT_EQ(cache->hybridCache->disk->path, directory);
}

TEST_F(CacheFrontTest, OneMayBeMadeOverAHybridCacheThatIsThere) {
    const Cache other(cache->hybridCache);

    cache->add("one", "k");

    EXPECT_EQ(other.hybridCache->value("k"), "one");
}

TEST_F(CacheFrontTest, ADirectoryThatCannotBeMadeFailsTheConstruction) {
    files().setDiskFull(true);
    QVCache::DiskConfig config = diskConfig();
    config.name = "other.cache";

    EXPECT_EQ(failureOf([&] { Cache(config, QVCache::MemoryConfig(), transformer()); }), "No space left on device");
}

TEST_F(CacheFrontTest, ItsOwnOperationsAreTheSynchronousOnes) {
    cache->add("one", "k");

    EXPECT_EQ(cache->entry("k")->value, "one");
    EXPECT_EQ(cache->value("k"), "one");
    EXPECT_EQ(cache->syncCache.value("k"), "one");
    EXPECT_EQ(cache->syncCache.all().size(), 1U);
}

TEST_F(CacheFrontTest, ErrorsPassThroughTheSynchronousCacheUnchanged) {
    EXPECT_THROW(static_cast<void>(cache->syncCache.entry("k")), std::system_error);
    ASSERT_FALSE(files().replace(cache->hybridCache->disk->makeFilePath("k"), "{"));
    EXPECT_THROW(static_cast<void>(cache->syncCache.entry("k")), json::DecodingError);
    files().setDiskFull(true);
    EXPECT_EQ(failureOf([&] { cache->add("one", "new"); }), noSuchFile);

    EXPECT_EQ(cache->value("new"), "one") << "the queue goes on after a failure";
}

TEST_F(CacheFrontTest, TheAsynchronousCacheAnswersOnItsQueueInTheOrderOfTheCalls) {
    std::vector<std::string> answers;
    std::thread::id thread;

    cache->asyncCache.value("k", [&](const std::optional<std::string>& value, const std::exception_ptr& error) {
        answers.emplace_back(value ? "a value" : "none");
        EXPECT_EQ(failureOf([&] { std::rethrow_exception(error); }), noSuchFile);
        thread = std::this_thread::get_id();
    });
    cache->asyncCache.add("one", "k", [&](const std::exception_ptr& error) {
        answers.emplace_back("added");
        EXPECT_EQ(error, nullptr);
    });
    cache->asyncCache.value("k", [&](const std::optional<std::string>& value, const std::exception_ptr& error) {
        answers.push_back(value.value_or("none"));
        EXPECT_EQ(error, nullptr);
    });
    cache->asyncCache.entry("k", [&](const auto& entry, const std::exception_ptr& error) {
        answers.push_back(entry->key + "=" + entry->value);
        EXPECT_EQ(error, nullptr);
    });
    cache->asyncCache.all([&](const auto& entries, const std::exception_ptr& error) {
        answers.push_back(std::to_string(entries.size()));
        EXPECT_EQ(error, nullptr);
    });
    finish();

    EXPECT_EQ(answers, (std::vector<std::string>{"none", "added", "one", "k=one", "1"}));
    EXPECT_NE(thread, std::this_thread::get_id());
}

TEST_F(CacheFrontTest, FailuresOfTheAsynchronousCacheComeWithTheCompletion) {
    std::vector<std::string> failures;
    const auto record = [&](const std::exception_ptr& error) {
        failures.push_back(failureOf([&] { std::rethrow_exception(error); }));
    };
    files().setDiskFull(true);
    cache->asyncCache.add("one", "k", record);
    finish();
    phone->advance(lifetime);

    cache->asyncCache.entry("k", [&](const auto& entry, const std::exception_ptr& error) {
        EXPECT_EQ(entry, nullptr);
        record(error);
    });
    cache->asyncCache.add("two", "k", record);
    finish();
    phone->advance(lifetime);
    files().setUnreadable(directory, true);
    cache->asyncCache.all([&](const auto& entries, const std::exception_ptr& error) {
        EXPECT_TRUE(entries.empty());
        record(error);
    });
    finish();

    EXPECT_EQ(failures, (std::vector<std::string>{noSuchFile, noSuchFile, noSuchFile, "Permission denied"}));
}

TEST_F(CacheFrontTest, TheAsynchronousCachesFormsWithoutACompletionWaitForWhatCameBefore) {
    cache->asyncCache.add("one", "k", [](const std::exception_ptr&) {});

    EXPECT_EQ(cache->asyncCache.value("k"), "one");
    cache->asyncCache.add("two", "k");
    EXPECT_EQ(cache->asyncCache.entry("k")->value, "two");
    EXPECT_EQ(cache->asyncCache.all().size(), 1U);
}

TEST_F(CacheFrontTest, ACompletionMayUseTheCacheAndLetGoOfIt) {
    std::vector<std::string> answers;
    std::mutex mutex;
    std::condition_variable done;
    bool isDone = false;
    cache->asyncCache.add("one", "k", [&](const std::exception_ptr&) {
        answers.push_back(cache->asyncCache.value("k"));
        answers.push_back(cache->syncCache.value("k"));
        cache->asyncCache.value("k", [&](const std::optional<std::string>& value, const std::exception_ptr&) {
            answers.push_back(value.value_or("none"));
            const std::lock_guard lock(mutex);
            isDone = true;
            done.notify_one();
        });
        cache.reset();
    });

    std::unique_lock lock(mutex);
    done.wait(lock, [&] { return isDone; });

    EXPECT_EQ(answers, (std::vector<std::string>{"one", "one", "one"}));
}

TEST_F(CacheFrontTest, AnObserverMayUseTheAsynchronousCacheWithoutADeadlock) {
    std::string seen;
    cache->addObserver([&](Hybrid&, const Change&) {
        cache->asyncCache.value("k", [&](const std::optional<std::string>& value, const std::exception_ptr&) {
            seen = value.value_or("none");
        });
    });

    cache->add("one", "k");
    finish();

    EXPECT_EQ(seen, "one");
}

TEST_F(CacheFrontTest, ObserversOfAnAsynchronousAddRunOnTheQueueOfItsCompletion) {
    std::vector<std::thread::id> threads;
    cache->asyncCache.addObserver([&](Hybrid&, const Change&) { threads.push_back(std::this_thread::get_id()); });
    cache->asyncCache.addObserver("k",
                                  [&](Hybrid&, const KeyChange&) { threads.push_back(std::this_thread::get_id()); });

    cache->asyncCache.add("one", "k",
                          [&](const std::exception_ptr&) { threads.push_back(std::this_thread::get_id()); });
    finish();

    ASSERT_EQ(threads.size(), 3U);
    EXPECT_EQ(threads[0], threads[2]);
    EXPECT_EQ(threads[1], threads[2]);
    EXPECT_NE(threads[2], std::this_thread::get_id());
}

TEST_F(CacheFrontTest, AnObserverOnTheAsynchronousCachesQueueMayUseItsBlockingForms) {
    std::vector<std::string> seen;
    cache->asyncCache.addObserver([&](Hybrid&, const Change& change) {
        seen.push_back(*change.key);
        if (change == Change::ADD("k")) {
            seen.push_back(cache->asyncCache.value("k"));
            seen.push_back(cache->asyncCache.entry("k")->value);
            cache->asyncCache.add("two", "inner");
            seen.push_back(std::to_string(cache->asyncCache.all().size()));
        }
    });

    cache->asyncCache.add("one", "k", [&](const std::exception_ptr& error) {
        seen.emplace_back("added");
        EXPECT_EQ(error, nullptr);
    });
    finish();

    EXPECT_EQ(seen, (std::vector<std::string>{"k", "one", "one", "inner", "2", "added"}));
    EXPECT_EQ(cache->value("inner"), "two");
}

TEST_F(CacheFrontTest, ObserversMayBeAddedOnEitherSideAndHearBoth) {
    std::atomic<int> told = 0;
    const auto token = cache->asyncCache.addObserver([&](Hybrid&, const Change&) { ++told; });
    const auto keyToken = cache->syncCache.addObserver("k", [&](Hybrid&, const KeyChange&) { ++told; });

    cache->add("one", "k");
    cache->asyncCache.add("two", "k");
    EXPECT_EQ(told, 4);

    token.cancel();
    keyToken.cancel();
    cache->add("three", "k");
    EXPECT_EQ(told, 4);
}

TEST_F(CacheFrontTest, WhatTheAsynchronousCacheAcceptedIsDoneBeforeItEnds) {
    int added = 0;
    for (int i = 0; i < 50; ++i) {
        cache->asyncCache.add("value", std::to_string(i), [&](const std::exception_ptr&) { ++added; });
    }

    cache.reset();

    EXPECT_EQ(added, 50);
    EXPECT_EQ(listed(directory).size(), 50U);
}

TEST_F(CacheFrontTest, ThreadsOnBothSidesDoNoHarmToEachOther) {
    std::vector<std::thread> threads;
    for (int t = 0; t < 3; ++t) {
        threads.emplace_back([this, t] {
            for (int i = 0; i < 150; ++i) {
                const std::string key = std::to_string(i % 7);
                if (t == 0) {
                    cache->asyncCache.add("async", key, [](const std::exception_ptr&) {});
                    cache->asyncCache.all([](const auto&, const std::exception_ptr&) {});
                } else {
                    cache->add("sync", key);
                    EXPECT_FALSE(cache->value(key).empty());
                    EXPECT_LE(cache->syncCache.all().size(), 7U);
                }
            }
        });
    }
    for (std::thread& thread : threads) {
        thread.join();
    }
    finish();

    EXPECT_EQ(cache->syncCache.all().size(), 7U);
}

} // namespace
} // namespace quorvane
