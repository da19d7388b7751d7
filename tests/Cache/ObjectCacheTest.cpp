#include <string>
#include <thread>
#include <vector>

#include <gtest/gtest.h>

#include "Cache/ObjectCache.h"
#include "Cache/WrappedKey.h"

namespace quorvane::QVCache {
namespace {

class ObjectCacheTest : public ::testing::Test {
protected:
    using Objects = ObjectCache<std::string, int>;

    void put(const std::string& key, int value, std::uint64_t cost = 0) {
        objects.setObject(std::make_shared<int>(value), key, cost);
    }
    bool has(const std::string& key) { return objects.object(key) != nullptr; }

    Objects objects;
};

TEST_F(ObjectCacheTest, AnObjectIsFoundUnderItsKeyAndNoOther) {
    put("a", 1);

    ASSERT_TRUE(has("a"));
    EXPECT_EQ(*objects.object("a"), 1);
    EXPECT_FALSE(has("b"));
}

TEST_F(ObjectCacheTest, ASecondObjectUnderOneKeyReplacesTheFirst) {
    put("a", 1);
    put("a", 2);

    EXPECT_EQ(*objects.object("a"), 2);
    EXPECT_EQ(objects.count(), 1U);
}

TEST_F(ObjectCacheTest, WithoutALimitNothingGoes) {
    for (int i = 0; i < 1000; ++i) {
        put(std::to_string(i), i, 1000);
    }

    EXPECT_EQ(objects.count(), 1000U);
}

TEST_F(ObjectCacheTest, BeyondTheCountLimitTheOneUsedLeastRecentlyGoes) {
    objects.setCountLimit(3);
    put("a", 1);
    put("b", 2);
    put("c", 3);
    EXPECT_TRUE(has("a"));

    put("d", 4);

    EXPECT_TRUE(has("a"));
    EXPECT_FALSE(has("b"));
    EXPECT_TRUE(has("c"));
    EXPECT_TRUE(has("d"));
}

TEST_F(ObjectCacheTest, BeyondTheCostLimitTheOnesUsedLeastRecentlyGo) {
    objects.setTotalCostLimit(10);
    put("a", 1, 4);
    put("b", 2, 4);
    put("c", 3, 9);

    EXPECT_FALSE(has("a"));
    EXPECT_FALSE(has("b"));
    EXPECT_TRUE(has("c"));
    put("d", 4, 11);
    EXPECT_EQ(objects.count(), 0U);
}

TEST_F(ObjectCacheTest, TheCostOfWhatIsReplacedOrRemovedCountsNoMore) {
    objects.setTotalCostLimit(10);
    put("a", 1, 8);
    put("a", 2, 1);
    put("b", 3, 8);
    EXPECT_TRUE(has("a"));

    objects.removeObject("b");
    put("c", 4, 9);

    EXPECT_TRUE(has("a"));
    EXPECT_TRUE(has("c"));
}

TEST_F(ObjectCacheTest, ALowerLimitTakesEffectAtOnce) {
    for (const char* key : {"a", "b", "c"}) {
        put(key, 0, 1);
    }

    objects.setCountLimit(2);
    EXPECT_EQ(objects.count(), 2U);
    objects.setTotalCostLimit(1);
    EXPECT_EQ(objects.count(), 1U);
    EXPECT_TRUE(has("c"));
}

TEST_F(ObjectCacheTest, AnObjectThatIsRemovedIsGoneAndAnAbsentOneIsIgnored) {
    put("a", 1);

    objects.removeObject("a");
    objects.removeObject("a");

    EXPECT_FALSE(has("a"));
    EXPECT_EQ(objects.count(), 0U);
}

TEST_F(ObjectCacheTest, AfterAllIsRemovedItGoesOnAsNew) {
    objects.setTotalCostLimit(10);
    put("a", 1, 10);

    objects.removeAll();
    EXPECT_EQ(objects.count(), 0U);
    put("b", 2, 10);

    EXPECT_TRUE(has("b"));
}

TEST_F(ObjectCacheTest, AnObjectInUseOutlivesItsEviction) {
    objects.setCountLimit(1);
    put("a", 1);
    const auto held = objects.object("a");

    put("b", 2);

    EXPECT_EQ(*held, 1);
}

TEST_F(ObjectCacheTest, ThreadsMayUseItAtOnce) {
    objects.setCountLimit(50);
    std::vector<std::thread> threads;
    for (int t = 0; t < 4; ++t) {
        threads.emplace_back([this, t] {
            for (int i = 0; i < 2000; ++i) {
                const std::string key = std::to_string((i * 7 + t) % 100);
                put(key, i % 100);
                if (const auto found = objects.object(key)) {
                    EXPECT_LT(*found, 100);
                }
                if (i % 500 == 0) {
                    objects.removeAll();
                }
            }
        });
    }
    for (std::thread& thread : threads) {
        thread.join();
    }

    EXPECT_LE(objects.count(), 50U);
}

TEST(WrappedKeyTest, WrappedKeysAreEqualAndHashAlikeWhenTheirKeysDo) {
    using Wrapped = WrappedKey<std::string>;

    EXPECT_EQ(Wrapped{"a"}, Wrapped{"a"});
    EXPECT_FALSE(Wrapped{"a"} == Wrapped{"b"});
    EXPECT_EQ(Wrapped{"a"}, std::string("a"));
    EXPECT_EQ(Wrapped::Hash()(Wrapped{"a"}), Wrapped::Hash()(std::string("a")));
}

TEST(WrappedKeyTest, AnObjectUnderAWrappedKeyIsFoundByItsPlainKey) {
    using Wrapped = WrappedKey<std::string>;
    ObjectCache<Wrapped, int, Wrapped::Hash> objects;
    objects.setObject(std::make_shared<int>(1), {"a"});

    EXPECT_NE(objects.object(std::string("a")), nullptr);
    EXPECT_NE(objects.object(Wrapped{"a"}), nullptr);
    objects.removeObject(std::string("a"));
    EXPECT_EQ(objects.count(), 0U);
}

} // namespace
} // namespace quorvane::QVCache
