#include <gtest/gtest.h>

#include "days/TextDiff.h"

namespace quorvane::days {
namespace {

TEST(TextDiffTest, EqualTextsDoNotDiffer) {
    EXPECT_EQ(differences("", ""), "");
    EXPECT_EQ(differences("a\nb\n", "a\nb\n"), "");
}

TEST(TextDiffTest, AChangedLineIsShownWithThreeLinesAroundIt) {
    EXPECT_EQ(differences("1\n2\n3\n4\n5\n6\n7\n8\n9\n", "1\n2\n3\n4\nfive\n6\n7\n8\n9\n"),
              "...\n 2\n 3\n 4\n-5\n+five\n 6\n 7\n 8\n");
}

TEST(TextDiffTest, LinesThatCameAndWentAreFoundApart) {
    EXPECT_EQ(differences("a\nb\nc\nd\ne\nf\ng\nh\ni\nj\n", "b\nc\nd\ne\nf\ng\nh\ni\nj\nk\n"),
              "-a\n b\n c\n d\n...\n h\n i\n j\n+k\n");
}

TEST(TextDiffTest, ATextThatIsMissingIsAllNew) {
    EXPECT_EQ(differences("", "a\nb\n"), "+a\n+b\n");
}

TEST(TextDiffTest, TextsThatDifferInTheirEndOnlyDoDiffer) {
    EXPECT_EQ(differences("a", "a\n"), "the texts end differently\n");
}

} // namespace
} // namespace quorvane::days
