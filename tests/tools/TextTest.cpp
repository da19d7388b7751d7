#include <gtest/gtest.h>

#include "tools/Text.h"

namespace quorvane::tool {
namespace {

using namespace std::chrono_literals;

TEST(Text, ControlCharactersStandAsQuestionMarks) {
    EXPECT_EQ(printable("a\x1b[31mb\n\t\x7f"), "a?[31mb???");
    EXPECT_EQ(printable(std::string_view("a\0b", 3)), "a?b");
    EXPECT_EQ(printable("a\xC2\x9B"
                        "31m"),
              "a?31m");
}

TEST(Text, MarksThatTurnTheDirectionOfTheTextStandAsQuestionMarks) {
    EXPECT_EQ(printable("a\u202Eb\u2066c\u200F\u200Ed\u2069\u202A"), "a?b?c??d??");
    EXPECT_EQ(printable("a\u061Cb\u061B\u061D"), "a?b\u061B\u061D");
    EXPECT_EQ(printable("\u2026 \u2065 \u202F \u200D"), "\u2026 \u2065 \u202F \u200D");
}

TEST(Text, LettersBeyondASCIIStayAsTheyAre) {
    EXPECT_EQ(printable("Žerjav Café 5 €"), "Žerjav Café 5 €");
}

TEST(Text, TextThatIsNotUTF8LosesItsForeignBytes) {
    EXPECT_EQ(printable("caf\xE9 x"), "caf? x");
    EXPECT_EQ(printable("\xC2"), "?");
}

TEST(Text, WidthCountsCharactersAndNotBytes) {
    EXPECT_EQ(width(""), 0U);
    EXPECT_EQ(width("Žerjav"), 6U);
}

TEST(Text, ATextThatFitsIsNotCut) {
    EXPECT_EQ(clipped("Žerjav", 6), "Žerjav");
    EXPECT_EQ(clipped("", 3), "");
}

TEST(Text, ATextThatIsCutTakesNoMoreColumnsThanItMay) {
    EXPECT_EQ(clipped("Žerjav", 5), "Žerj…");
    EXPECT_EQ(clipped("ŽŽŽ", 2), "Ž…");
    EXPECT_EQ(clipped("abc", 1), "…");
    EXPECT_EQ(clipped("abc", 0), "");
}

TEST(Text, PaddingGoesUpToTheColumnAndNoFurther) {
    EXPECT_EQ(padded("Ž", 3), "Ž  ");
    EXPECT_EQ(padded("abcd", 3), "abcd");
}

TEST(Text, DistancesAreMetresBelowAKilometre) {
    EXPECT_EQ(metresText(0), "0 m");
    EXPECT_EQ(metresText(84.4), "84 m");
    EXPECT_EQ(metresText(999.4), "999 m");
    EXPECT_EQ(metresText(999.6), "1.0 km");
    EXPECT_EQ(metresText(9'940), "9.9 km");
    EXPECT_EQ(metresText(9'960), "10 km");
    EXPECT_EQ(metresText(20'015'000), "20015 km");
    EXPECT_EQ(metresText(160.934, 1), "160.9 m");
    EXPECT_EQ(metresText(5'612, 1), "5.61 km");
}

TEST(Text, CoordinatesHaveFiveDecimals) {
    EXPECT_EQ(coordinateText({46.05, -14.5}), "46.05000, -14.50000");
}

TEST(Text, NumbersOfAnyLengthAreWrittenOut) {
    const std::string longest = metresText(-1e300);

    EXPECT_EQ(longest.size(), 304U);
    EXPECT_TRUE(longest.starts_with("-1000000000000000052")) << longest;
    EXPECT_TRUE(longest.ends_with("540160 m")) << longest;
    EXPECT_TRUE(metresText(1e300).ends_with(" km"));
    EXPECT_EQ(coordinateText({-1e308, 1e308}).size(), (309U + 6U) * 2 + 1 + 2);
}

TEST(Text, TheTimeOfDayIsThatOfUTC) {
    EXPECT_EQ(timeText(platform::Date(24h * 20'000 + 8h + 30min + 5s)), "08:30:05");
    EXPECT_EQ(timeText(platform::Date(-1s)), "23:59:59");
}

TEST(Text, DurationsAreAsLongAsTheyNeedToBe) {
    EXPECT_EQ(durationText(59s), "59 s");
    EXPECT_EQ(durationText(60s), "1 min");
    EXPECT_EQ(durationText(28min + 16s), "28 min");
    EXPECT_EQ(durationText(1h), "1 h");
    EXPECT_EQ(durationText(2h + 5min), "2 h 5 min");
}

TEST(Text, OneOfAThingIsNoPlural) {
    EXPECT_EQ(counted(1, "place"), "1 place");
    EXPECT_EQ(counted(0, "place"), "0 places");
    EXPECT_EQ(counted(2, "fix", "fixes"), "2 fixes");
}

} // namespace
} // namespace quorvane::tool
