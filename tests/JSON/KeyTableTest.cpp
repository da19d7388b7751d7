#include <string>

#include <gtest/gtest.h>

#include "JSON/KeyTable.h"
#include "JSON/TestModels.h"

namespace quorvane {

using json::KeyIndex;

namespace {

constexpr std::array<std::string_view, 12> names{
    "a",
    "b",
    "ab",
    "abc",
    "name",
    "eman",
    "seventy",
    "lastname",
    "firstname",
    "DESIRED_MOVING_UPDATE_INTERVAL",
    "DESIRED_STOPPED_UPDATE_INTERVAL",
    "",
};
constexpr KeyIndex<names.size()> keyIndex{names};

} // namespace

TEST(KeyIndexes, FindEachOfTheirNames) {
    for (std::size_t i = 0; i < names.size(); ++i) {
        EXPECT_EQ(keyIndex.find(names[i]), i) << names[i];
    }
}

TEST(KeyIndexes, FindNothingElse) {
    for (const std::string_view name : names) {
        for (std::size_t i = 0; i < name.size(); ++i) {
            std::string changed(name);
            changed[i] = static_cast<char>(changed[i] ^ 0x81);
            EXPECT_EQ(keyIndex.find(changed), keyIndex.none);
        }
        EXPECT_EQ(keyIndex.find(std::string(name) + '\0'), keyIndex.none);
    }
}

TEST(KeyIndexes, AnswerTheSameWhileCompiling) {
    static_assert(keyIndex.find("eman") == 5);
    static_assert(keyIndex.find("DESIRED_STOPPED_UPDATE_INTERVAL") == 10);
    static_assert(keyIndex.find("missing") == KeyIndex<names.size()>::none);
    EXPECT_EQ(keyIndex.find("eman"), 5U);
}

TEST(KeyTables, SpreadPairsIntoTheirTwoKeys) {
    using Table = json::KeyTable<modelling::Address>;

    EXPECT_EQ(Table::rowCount, 3U);
    ASSERT_EQ(Table::keyCount, 5U);
    EXPECT_EQ(Table::entries[2].name, "y");
    EXPECT_EQ(Table::entries[2].row, 1U);
    EXPECT_EQ(Table::entries[2].part, 1U);
}

TEST(KeyTables, MayBeEmpty) {
    using Table = json::KeyTable<modelling::Shape>;

    EXPECT_EQ(Table::keyCount, 0U);
    EXPECT_EQ(Table::index.find("radius"), Table::index.none);
}

} // namespace quorvane
