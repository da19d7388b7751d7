#include <cmath>
#include <cstdlib>
#include <limits>

#include <gtest/gtest.h>
#include <unistd.h>

#include "JSON/JSON.h"

namespace quorvane {

using json::readExactly;
using json::writeExactly;

TEST(ExactValues, KeepTheirKindsAsTheyAreWritten) {
    EXPECT_EQ(readExactly(R"({"a":3,"b":3.0,"c":3e0,"d":null,"e":[null]})"),
              (AnyCodable::Dictionary{
                  {"a", 3}, {"b", 3.0}, {"c", 3.0}, {"d", AnyCodable()}, {"e", AnyCodable::List{AnyCodable()}}}));
}

TEST(ExactValues, ReadBackAsTheyWereWritten) {
    const AnyCodable value = AnyCodable::Dictionary{{"integer", INT64_MIN},
                                                    {"whole", 3.0},
                                                    {"fraction", 0.1},
                                                    {"tiny", 5e-324},
                                                    {"huge", std::numeric_limits<double>::max()},
                                                    {"flag", false},
                                                    {"text", std::string("\0\"\\\n\xE2\x82\xAC", 7)},
                                                    {"nothing", AnyCodable()},
                                                    {"", AnyCodable::List{AnyCodable::Dictionary()}}};

    EXPECT_EQ(readExactly(writeExactly(value)), value);
    EXPECT_TRUE(std::signbit(std::get<double>(readExactly(writeExactly(-0.0)).value)));
}

TEST(ExactValues, StandAloneAsWell) {
    EXPECT_EQ(writeExactly(AnyCodable()), "null");
    EXPECT_EQ(writeExactly(46.0), "46.0");
    EXPECT_EQ(writeExactly("x"), "\"x\"");
    EXPECT_EQ(readExactly("null"), AnyCodable());
}

TEST(ExactValues, WithoutAFormInJSONAreWrittenAsNull) {
    EXPECT_EQ(writeExactly(AnyCodable::List{std::nan(""), std::numeric_limits<double>::infinity(), AnyCodable()}),
              "[null,null,null]");
}

TEST(ExactValues, ATextThatIsNotUTF8IsWrittenWithReplacementCharacters) {
    EXPECT_EQ(writeExactly("a\xFF\xE2\x82\xAC\xE2\x82"), "\"a\xEF\xBF\xBD\xE2\x82\xAC\xEF\xBF\xBD\xEF\xBF\xBD\"");
    EXPECT_EQ(writeExactly(AnyCodable::Dictionary{{"\xC3", 1}}), "{\"\xEF\xBF\xBD\":1}");
}

TEST(ExactValues, AreRefusedWhereTheTextIsMalformed) {
    EXPECT_THROW((void)readExactly("{"), json::DecodingError);
    EXPECT_THROW((void)readExactly(""), json::DecodingError);
}

/// Encodes and decodes when the program ends, after what its thread kept for that has gone.
struct CodesAtTheEnd {
    CodesAtTheEnd() = default;
    CodesAtTheEnd(const CodesAtTheEnd&) = delete;
    CodesAtTheEnd& operator=(const CodesAtTheEnd&) = delete;
    // NOLINTNEXTLINE(bugprone-exception-escape): one that escapes is fatal, and the test fails.
    ~CodesAtTheEnd() {
        for (int i = 0; i < 2; ++i) {
            if (readExactly(writeExactly(value)) != value) {
                _exit(1);
            }
        }
    }
    const AnyCodable value =
        AnyCodable::Dictionary{{"list", AnyCodable::List{1, 2.5, std::string(5000, 'x'), "\xE2\x82\xAC"}}};
};

TEST(ExactValuesDeathTest, AreWrittenAndReadByStaticObjectsThatEndAsWell) {
    EXPECT_EXIT(
        {
            static const CodesAtTheEnd last;
            static_cast<void>(readExactly(writeExactly(last.value)));
            std::exit(0); // NOLINT(concurrency-mt-unsafe): no other thread runs here.
        },
        ::testing::ExitedWithCode(0), "");
}

} // namespace quorvane
