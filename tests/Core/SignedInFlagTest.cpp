#include "Core/SignedInFlag.h"
#include "support/SimulatedTest.h"

namespace quorvane {
namespace {

class SignedInFlagTest : public SimulatedTest {
protected:
    [[nodiscard]] std::optional<bool> stored() { return preferences().boolean("quorvane_background_tracking"); }

    SignedInFlag& flag = SignedInFlag::shared();
};

TEST_F(SignedInFlagTest, IsNotSetWhenNothingIsStored) {
    EXPECT_FALSE(flag.isSet());
    EXPECT_EQ(stored(), std::nullopt);
}

TEST_F(SignedInFlagTest, IsWhatTheEntrySaysWhoeverWroteIt) {
    preferences().setBoolean("quorvane_background_tracking", true);

    EXPECT_TRUE(flag.isSet());
}

TEST_F(SignedInFlagTest, WritesTheEntryAtOnce) {
    flag.set(true);
    EXPECT_EQ(stored(), true);

    flag.set(false);
    EXPECT_EQ(stored(), false);
}

TEST_F(SignedInFlagTest, IsFalseDuringARefreshAndThenWhatItWasBefore) {
    flag.set(true);

    flag.beginRefresh();
    EXPECT_EQ(stored(), false);

    flag.endRefresh();
    EXPECT_EQ(stored(), true);
}

TEST_F(SignedInFlagTest, ARefreshThatBeginsWithFalseEndsWithFalse) {
    flag.set(false);

    flag.beginRefresh();
    flag.endRefresh();

    EXPECT_EQ(stored(), false);
}

TEST_F(SignedInFlagTest, OverlappingRefreshesPutItBackAfterTheLast) {
    flag.set(true);

    flag.beginRefresh();
    flag.beginRefresh();
    flag.endRefresh();
    EXPECT_EQ(stored(), false);

    flag.endRefresh();
    EXPECT_EQ(stored(), true);
}

TEST_F(SignedInFlagTest, ARefreshThatBeginsBetweenTwoOthersDoesNotTakeTheirFalseForWhatItWas) {
    flag.set(true);

    flag.beginRefresh();
    flag.beginRefresh();
    flag.endRefresh();
    flag.beginRefresh();
    flag.endRefresh();
    flag.endRefresh();

    EXPECT_EQ(stored(), true);
}

TEST_F(SignedInFlagTest, WhatIsSetDuringARefreshIsWhatItIsAfterwards) {
    flag.set(true);
    flag.beginRefresh();
    flag.set(false);
    flag.endRefresh();
    EXPECT_EQ(stored(), false);

    flag.beginRefresh();
    flag.set(true);
    EXPECT_EQ(stored(), true);
    flag.endRefresh();
    EXPECT_EQ(stored(), true);
}

TEST_F(SignedInFlagTest, WhatIsSetBetweenTwoOverlappingRefreshesOutlastsBoth) {
    flag.set(false);

    flag.beginRefresh();
    flag.set(true);
    flag.beginRefresh();
    EXPECT_EQ(stored(), false);
    flag.endRefresh();
    flag.endRefresh();

    EXPECT_EQ(stored(), true);
}

TEST_F(SignedInFlagTest, AnEntryThatSomebodyElseWroteDuringARefreshStays) {
    flag.set(false);

    flag.beginRefresh();
    preferences().setBoolean("quorvane_background_tracking", true);
    flag.endRefresh();

    EXPECT_EQ(stored(), true);
}

TEST_F(SignedInFlagTest, AnEntryThatSomebodyElseWroteBeforeASecondRefreshIsPutBackAfterIt) {
    flag.set(false);

    flag.beginRefresh();
    preferences().setBoolean("quorvane_background_tracking", true);
    flag.beginRefresh();
    EXPECT_EQ(stored(), false);
    flag.endRefresh();
    flag.endRefresh();

    EXPECT_EQ(stored(), true);
}

TEST_F(SignedInFlagTest, AnEntryThatWasRemovedDuringARefreshStaysAway) {
    flag.set(true);

    flag.beginRefresh();
    preferences().remove("quorvane_background_tracking");
    flag.endRefresh();

    EXPECT_EQ(stored(), std::nullopt);
}

TEST_F(SignedInFlagTest, TrackingIsOnDuringARefreshAsItWasBefore) {
    EXPECT_FALSE(flag.isTracking());
    flag.set(true);
    EXPECT_TRUE(flag.isTracking());

    flag.beginRefresh();
    EXPECT_FALSE(flag.isSet());
    EXPECT_TRUE(flag.isTracking());
    flag.set(false);
    EXPECT_FALSE(flag.isTracking());
    flag.set(true);
    EXPECT_TRUE(flag.isTracking());
    flag.endRefresh();

    EXPECT_TRUE(flag.isTracking());
}

TEST_F(SignedInFlagTest, TrackingGoesByAnEntryThatSomebodyElseWroteDuringARefresh) {
    flag.beginRefresh();
    preferences().setBoolean("quorvane_background_tracking", true);
    EXPECT_TRUE(flag.isTracking());

    preferences().remove("quorvane_background_tracking");
    EXPECT_FALSE(flag.isTracking());
}

TEST_F(SignedInFlagTest, RefreshesUnderWayWhenThePlatformIsTakenOutOfUseAreGivenBack) {
    flag.set(true);
    flag.beginRefresh();
    flag.beginRefresh();
    EXPECT_TRUE(flag.isRefreshing());

    phone.relaunch();

    EXPECT_EQ(stored(), true);
    EXPECT_FALSE(SignedInFlag::shared().isRefreshing());
}

TEST_F(SignedInFlagTest, AnEntryThatSomebodyElseRemovedStaysAwayWhenThePlatformIsTakenOutOfUse) {
    flag.set(true);
    flag.beginRefresh();
    preferences().remove("quorvane_background_tracking");

    phone.relaunch();

    EXPECT_EQ(stored(), std::nullopt);
}

TEST_F(SignedInFlagTest, AProcessThatIsKilledDuringARefreshLeavesFalse) {
    flag.set(true);
    flag.beginRefresh();

    phone.relaunchAfterKill();

    EXPECT_EQ(stored(), false);
    EXPECT_FALSE(SignedInFlag::shared().isSet());
}

} // namespace
} // namespace quorvane
