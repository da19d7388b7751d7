#include <gtest/gtest.h>

#include "testing/MemoryPreferences.h"
#include "tools/OverlayPreferences.h"

namespace quorvane::tool {
namespace {

class OverlayPreferencesTest : public ::testing::Test {
protected:
    /// Writes one value of every type under keys that begin with @p prefix, and reads them back.
    static void writeAndReadEveryType(platform::PreferencesStore& store, const std::string& key) {
        const platform::Date date{std::chrono::seconds(1'000'000)};
        store.setString(key, "text");
        EXPECT_EQ(store.string(key), "text");
        store.setInteger(key, 42);
        EXPECT_EQ(store.integer(key), 42);
        store.setNumber(key, 1.5);
        EXPECT_EQ(store.number(key), 1.5);
        store.setBoolean(key, true);
        EXPECT_EQ(store.boolean(key), true);
        store.setDate(key, date);
        EXPECT_EQ(store.date(key), date);
        store.setDictionary(key, {{"a", 1}});
        EXPECT_EQ(store.dictionary(key), (AnyCodable::Dictionary{{"a", 1}}));
    }

    testing::MemoryPreferences lower;
    testing::MemoryPreferences upper;
    OverlayPreferences overlay{lower, upper, "level"};
};

TEST_F(OverlayPreferencesTest, TheOverlaidKeyHidesWhatIsStoredAndLeavesItAsItIs) {
    lower.setInteger("level", 1);

    writeAndReadEveryType(overlay, "level");

    EXPECT_EQ(lower.integer("level"), 1);
    EXPECT_EQ(lower.keys(), std::vector<std::string>{"level"});
}

TEST_F(OverlayPreferencesTest, EveryOtherKeyIsStored) {
    writeAndReadEveryType(overlay, "other");

    EXPECT_EQ(lower.dictionary("other"), (AnyCodable::Dictionary{{"a", 1}}));
    EXPECT_TRUE(upper.keys().empty());
}

TEST_F(OverlayPreferencesTest, RemovingTheOverlaidKeyDoesNotUncoverTheStoredValue) {
    lower.setInteger("level", 1);
    overlay.setInteger("level", 4);

    overlay.remove("level");

    EXPECT_EQ(overlay.integer("level"), std::nullopt);
    EXPECT_EQ(lower.integer("level"), 1);
}

TEST_F(OverlayPreferencesTest, RemovingAnotherKeyRemovesItFromTheStore) {
    lower.setString("other", "x");

    overlay.remove("other");

    EXPECT_TRUE(lower.keys().empty());
}

TEST_F(OverlayPreferencesTest, SynchronizingReachesTheStore) {
    overlay.synchronize();

    EXPECT_EQ(lower.synchronizeCount(), 1);
}

} // namespace
} // namespace quorvane::tool
