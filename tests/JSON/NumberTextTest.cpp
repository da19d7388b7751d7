#include <bit>
#include <cmath>
#include <cstdlib>
#include <limits>
#include <random>

#include <gtest/gtest.h>

#include "JSON/NumberText.h"

namespace quorvane {

using json::textOf;

TEST(TextOfADouble, EndsInPointZeroWhereItIsWhole) {
    EXPECT_EQ(textOf(46.0), "46.0");
    EXPECT_EQ(textOf(0.0), "0.0");
    EXPECT_EQ(textOf(-0.0), "-0.0");
    EXPECT_EQ(textOf(-180.0), "-180.0");
    EXPECT_EQ(textOf(100000.0), "100000.0");
    EXPECT_EQ(textOf(1234567890123456.0), "1234567890123456.0");
}

TEST(TextOfADouble, IsTheShortestThatReadsBackTheSame) {
    EXPECT_EQ(textOf(0.1), "0.1");
    EXPECT_EQ(textOf(0.1 + 0.2), "0.30000000000000004");
    EXPECT_EQ(textOf(46.0569), "46.0569");
    EXPECT_EQ(textOf(-14.505751), "-14.505751");
    EXPECT_EQ(textOf(1.0 / 3), "0.3333333333333333");
    EXPECT_EQ(textOf(0.0001), "0.0001");
    EXPECT_EQ(textOf(123456.789), "123456.789");
}

TEST(TextOfADouble, HasAnExponentWhereItIsVerySmallOrVeryLarge) {
    EXPECT_EQ(textOf(0.00001), "1e-05");
    EXPECT_EQ(textOf(1e16), "1e+16");
    EXPECT_EQ(textOf(1e300), "1e+300");
    EXPECT_EQ(textOf(-5e-324), "-5e-324");
    EXPECT_EQ(textOf(std::numeric_limits<double>::max()), "1.7976931348623157e+308");
}

TEST(TextOfADouble, NamesWhatIsNotFinite) {
    EXPECT_EQ(textOf(std::numeric_limits<double>::quiet_NaN()), "nan");
    EXPECT_EQ(textOf(std::numeric_limits<double>::infinity()), "inf");
    EXPECT_EQ(textOf(-std::numeric_limits<double>::infinity()), "-inf");
}

TEST(TextOfADouble, ReadsBackTheSameForAnyDouble) {
    std::mt19937_64 random(1);
    std::uniform_real_distribution<double> degrees(-180, 180);
    for (int i = 0; i < 20000; ++i) {
        const auto any = std::bit_cast<double>(random());
        const double degree = degrees(random);
        const double rounded = std::round(degree * 1e6) / 1e6;
        for (const double value : {any, degree, rounded, std::nextafter(rounded, 1e9), std::round(degree)}) {
            if (std::isfinite(value)) {
                ASSERT_EQ(std::strtod(textOf(value).c_str(), nullptr), value);
            }
        }
    }
}

TEST(TextOfADouble, IsNeverLongerThanTheFewestDigitsThatDo) {
    std::mt19937_64 random(2);
    std::uniform_int_distribution<std::int64_t> units(-999999999999999, 999999999999999);
    for (int i = 0; i < 20000; ++i) {
        const double value = static_cast<double>(units(random)) / std::pow(10, i % 12);
        char shortest[40];
        int digits = 1;
        do {
            (void)std::snprintf(shortest, sizeof shortest, "%.*e", digits - 1, value);
            ++digits;
        } while (std::strtod(shortest, nullptr) != value);
        std::string mantissa(shortest);
        mantissa.resize(mantissa.find('e'));
        std::erase_if(mantissa, [](char c) { return c < '0' || c > '9'; });

        std::string text = textOf(value);
        text.resize(std::min(text.find('e'), text.size()));
        std::erase_if(text, [](char c) { return c < '0' || c > '9'; });
        text.erase(0, text.find_first_not_of('0'));
        text.erase(text.find_last_not_of('0') + 1);
        mantissa.erase(mantissa.find_last_not_of('0') + 1);
        ASSERT_EQ(text, mantissa) << textOf(value);
    }
}

TEST(TextOfAFloat, IsTheShortestThatReadsBackTheSameFloat) {
    char text[json::numberTextCapacity];

    EXPECT_EQ(std::string(text, json::writeNumber(text, 0.1F)), "0.1");
    EXPECT_EQ(std::string(text, json::writeNumber(text, 3.0F)), "3.0");
    EXPECT_EQ(std::string(text, json::writeNumber(text, 1e30F)), "1e+30");
}

} // namespace quorvane
