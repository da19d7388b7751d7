#include <gtest/gtest.h>

#include "tools/Table.h"

namespace quorvane::tool {
namespace {

class TableTest : public ::testing::Test {
protected:
    static std::string printed(const Table& table) {
        Terminal terminal;
        ::testing::internal::CaptureStdout();
        table.print(terminal, 2);
        EXPECT_EQ(terminal.flush(), 0);
        return ::testing::internal::GetCapturedStdout();
    }
};

TEST_F(TableTest, ColumnsAreAlignedAndLinesEndWithoutBlanks) {
    Table table({{"distance", 10, true}, {"place", 20}});
    table.add({"84 m", "Žerjav Inn"});
    table.add({"1.2 km", "Mill"});

    EXPECT_EQ(printed(table),
              "  distance  place\n"
              "      84 m  Žerjav Inn\n"
              "    1.2 km  Mill\n");
}

TEST_F(TableTest, AColumnWithoutATextIsLeftOut) {
    Table table({{"a", 10}, {"rewards", 10}, {"b", 10}});
    table.add({"1", "", "2"});

    EXPECT_EQ(printed(table), "  a  b\n  1  2\n");
}

TEST_F(TableTest, LongTextsAreCutAndControlCharactersReplaced) {
    Table table({{"name", 6}});
    table.add({"a\x1b[2Jlong one"});

    EXPECT_EQ(printed(table), "  name\n  a?[2J…\n");
}

} // namespace
} // namespace quorvane::tool
