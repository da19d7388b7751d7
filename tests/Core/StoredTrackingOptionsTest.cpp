#include "Core/QVSettings.h"
#include "Core/StoredTrackingOptions.h"
#include "support/SimulatedTest.h"

namespace quorvane {
namespace {

class StoredTrackingOptionsTest : public SimulatedTest {
protected:
    StoredTrackingOptions options{*phone};
};

TEST_F(StoredTrackingOptionsTest, WithoutStoredOptionsTheEfficientPresetIsGoneBy) {
    EXPECT_EQ(options.stored(), nullptr);
    EXPECT_EQ(options.current(), QuorvaneTrackingOptions::EFFICIENT());
}

TEST_F(StoredTrackingOptionsTest, OptionsThatCannotBeDecodedAreNone) {
    for (const char* const corrupt : {"", "{", R"({"SYNC":7})"}) {
        store("quorvane_tracking_options", corrupt);
        EXPECT_EQ(options.stored(), nullptr) << corrupt;
        EXPECT_EQ(options.current(), QuorvaneTrackingOptions::EFFICIENT()) << corrupt;
    }
}

TEST_F(StoredTrackingOptionsTest, ATextIsDecodedOnce) {
    QVSettings::setTrackingOptions(*QuorvaneTrackingOptions::CONTINUOUS());
    const auto first = options.stored();

    ASSERT_TRUE(first);
    EXPECT_EQ(*first, *QuorvaneTrackingOptions::CONTINUOUS());
    EXPECT_EQ(options.stored(), first);
    EXPECT_EQ(options.current(), first);
    QVSettings::setTrackingOptions(*QuorvaneTrackingOptions::CONTINUOUS());
    EXPECT_EQ(options.stored(), first);
}

TEST_F(StoredTrackingOptionsTest, AnotherTextIsSeenByTheNextReaderWhoeverWroteIt) {
    QVSettings::setTrackingOptions(*QuorvaneTrackingOptions::CONTINUOUS());
    const auto first = options.stored();

    store("quorvane_tracking_options", R"({"STOP_DISTANCE":12})");
    EXPECT_EQ(options.stored()->stopDistance, 12);
    EXPECT_EQ(first->stopDistance, 70);

    store("quorvane_tracking_options", "no options");
    EXPECT_EQ(options.stored(), nullptr);
    preferences().remove("quorvane_tracking_options");
    EXPECT_EQ(options.stored(), nullptr);

    store("quorvane_tracking_options", R"({"STOP_DISTANCE":13})");
    EXPECT_EQ(options.stored()->stopDistance, 13);
}

TEST_F(StoredTrackingOptionsTest, WhatAHostDoesToItsCopyIsNotSeenHere) {
    QVSettings::setTrackingOptions(*QuorvaneTrackingOptions::CONTINUOUS());

    QVSettings::getTrackingOptions()->stopDistance = 1;
    QuorvaneTrackingOptions::CONTINUOUS()->stopDistance = 2;

    EXPECT_EQ(options.current()->stopDistance, 70);
}

} // namespace
} // namespace quorvane
