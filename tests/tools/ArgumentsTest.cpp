#include <gtest/gtest.h>

#include "tools/Arguments.h"
#include "tools/Failure.h"

namespace quorvane::tool {
namespace {

TEST(Arguments, ACoordinateIsLatitudeCommaLongitude) {
    EXPECT_EQ(coordinateIn("--near", "52.0931,5.6642"), (platform::Coordinate{52.0931, 5.6642}));
    EXPECT_EQ(coordinateIn("--near", "-90,-180"), (platform::Coordinate{-90, -180}));
    EXPECT_EQ(coordinateIn("--near", "90,180"), (platform::Coordinate{90, 180}));
}

TEST(Arguments, WhatIsNoPointOnTheEarthIsRefused) {
    for (const char* const text : {"", ",", "1", "1,", ",1", "a,b", "1,2,3", "1;2", " 1,2", "1, 2", "91,0", "-90.1,0",
                                   "0,180.5", "nan,0", "0,nan", "inf,0", "0,-inf", "1e999,0", "0x10,1"}) {
        EXPECT_THROW(static_cast<void>(coordinateIn("--near", text)), WrongForm) << text;
    }
}

TEST(Arguments, AnAccelerationIsTwoNumbersOfGravities) {
    const platform::Acceleration held = accelerationIn("--level", "0.25,-1");
    EXPECT_EQ(held.x, 0.25);
    EXPECT_EQ(held.y, -1);
    EXPECT_EQ(held.z, 0);
    EXPECT_EQ(accelerationIn("--level", "-16,16").x, -16);
    for (const char* const text : {"", ",", "1", "1,", "a,b", "1,2,3", "16.1,0", "0,-17", "nan,0", "0,inf"}) {
        EXPECT_THROW(static_cast<void>(accelerationIn("--level", text)), WrongForm) << text;
    }
}

TEST(Arguments, MetresAreAWholeNumberFromNothingOn) {
    EXPECT_EQ(metresIn("--radius", "0"), 0);
    EXPECT_EQ(metresIn("--radius", "2147483647"), 2'147'483'647);
    for (const char* const text : {"", "-1", "-0.5", "1.5", "1e3", "ten", "2147483648", "1 ", "nan"}) {
        EXPECT_THROW(static_cast<void>(metresIn("--radius", text)), WrongForm) << text;
    }
}

TEST(Arguments, APortHasSixteenBitsAndIsNotNull) {
    EXPECT_EQ(portIn("--data-port", "1"), 1);
    EXPECT_EQ(portIn("--data-port", "65535"), 65'535);
    for (const char* const text : {"", "0", "-1", "65536", "http", "80a"}) {
        EXPECT_THROW(static_cast<void>(portIn("--data-port", text)), WrongForm) << text;
    }
}

TEST(Arguments, LogLevelsHaveTheirNamesInLowerCase) {
    EXPECT_EQ(logLevelIn("--log-level", "none"), QVLogLevel::NONE);
    EXPECT_EQ(logLevelIn("--log-level", "warning"), QVLogLevel::WARNING);
    EXPECT_EQ(logLevelIn("--log-level", "debug"), QVLogLevel::DEBUG);
    for (const char* const text : {"", "DEBUG", "4", "loud"}) {
        EXPECT_THROW(static_cast<void>(logLevelIn("--log-level", text)), WrongForm) << text;
    }
}

TEST(Arguments, TheSentenceNamesTheOptionAndShowsWhatWasTypedWithoutControlCharacters) {
    try {
        static_cast<void>(coordinateIn("--near",
                                       "a\x1b"
                                       "b"));
        FAIL();
    } catch (const WrongForm& error) {
        EXPECT_STREQ(error.what(), "--near takes LAT,LNG in degrees, such as 52.0931,5.6642, not \"a?b\"");
    }
}

TEST(Arguments, AnEmptyTextIsRefused) {
    EXPECT_EQ(textIn("--key", "k"), "k");
    EXPECT_THROW(static_cast<void>(textIn("--key", "")), WrongForm);
}

} // namespace
} // namespace quorvane::tool
