#include <gtest/gtest.h>

#include "Search/QVRouteMode.h"

namespace quorvane {
namespace {

constexpr QVRouteMode FOOT = QVRouteMode::FOOT;
constexpr QVRouteMode BIKE = QVRouteMode::BIKE;
constexpr QVRouteMode CAR = QVRouteMode::CAR;
constexpr QVRouteMode TRANSIT = QVRouteMode::TRANSIT;

TEST(QVRouteMode, TheModesAreTheFirstFourBits) {
    EXPECT_EQ(FOOT.rawValue, 1);
    EXPECT_EQ(BIKE.rawValue, 2);
    EXPECT_EQ(CAR.rawValue, 4);
    EXPECT_EQ(TRANSIT.rawValue, 8);
    EXPECT_EQ(QVRouteMode(5), (QVRouteMode{FOOT, CAR}));
}

TEST(QVRouteMode, AListOfModesMakesTheSetOfThem) {
    EXPECT_EQ((QVRouteMode{FOOT, TRANSIT, FOOT}).rawValue, 9);
    EXPECT_EQ((QVRouteMode{QVRouteMode{FOOT, BIKE}, CAR}).rawValue, 7);
}

TEST(QVRouteMode, ANewSetIsEmpty) {
    EXPECT_TRUE(QVRouteMode().isEmpty());
    EXPECT_TRUE(QVRouteMode{}.isEmpty());
    EXPECT_FALSE(FOOT.isEmpty());
}

TEST(QVRouteMode, ASetContainsItsModesAndTheSetsOfThem) {
    const QVRouteMode set{FOOT, CAR};

    EXPECT_TRUE(set.contains(FOOT));
    EXPECT_FALSE(set.contains(BIKE));
    EXPECT_TRUE(set.contains({FOOT, CAR}));
    EXPECT_FALSE(set.contains({FOOT, BIKE}));
    EXPECT_TRUE(set.contains(QVRouteMode()));
}

TEST(QVRouteMode, TheFourCombinationsOfTwoSetsMakeNewSets) {
    const QVRouteMode set{FOOT, BIKE};
    const QVRouteMode other{BIKE, CAR};

    EXPECT_EQ(set.union_(other), (QVRouteMode{FOOT, BIKE, CAR}));
    EXPECT_EQ(set.intersection(other), BIKE);
    EXPECT_EQ(set.symmetricDifference(other), (QVRouteMode{FOOT, CAR}));
    EXPECT_EQ(set.subtracting(other), FOOT);
    EXPECT_EQ(set, (QVRouteMode{FOOT, BIKE}));
}

TEST(QVRouteMode, TheFourCombinationsWorkInPlace) {
    const QVRouteMode other{BIKE, CAR};
    QVRouteMode united{FOOT, BIKE};
    QVRouteMode common{FOOT, BIKE};
    QVRouteMode different{FOOT, BIKE};
    QVRouteMode less{FOOT, BIKE};

    united.formUnion(other);
    common.formIntersection(other);
    different.formSymmetricDifference(other);
    less.subtract(other);

    EXPECT_EQ(united, (QVRouteMode{FOOT, BIKE, CAR}));
    EXPECT_EQ(common, BIKE);
    EXPECT_EQ(different, (QVRouteMode{FOOT, CAR}));
    EXPECT_EQ(less, FOOT);
}

TEST(QVRouteMode, InsertingTellsWhetherTheModeWasNew) {
    QVRouteMode set{FOOT};

    const auto added = set.insert(CAR);
    const auto again = set.insert(CAR);

    EXPECT_TRUE(added.inserted);
    EXPECT_FALSE(again.inserted);
    EXPECT_EQ(added.memberAfterInsert, CAR);
    EXPECT_EQ(again.memberAfterInsert, CAR);
    EXPECT_EQ(set, (QVRouteMode{FOOT, CAR}));
}

TEST(QVRouteMode, InsertingModesThatAreOnlyPartlyThereCountsAsNew) {
    QVRouteMode set{FOOT};

    EXPECT_TRUE(set.insert({FOOT, CAR}).inserted);
    EXPECT_EQ(set, (QVRouteMode{FOOT, CAR}));
}

TEST(QVRouteMode, RemovingAnswersWhatWasTakenOut) {
    QVRouteMode set{FOOT, CAR};

    EXPECT_EQ(set.remove({CAR, BIKE}), CAR);
    EXPECT_FALSE(set.remove(CAR));
    EXPECT_EQ(set, FOOT);
}

TEST(QVRouteMode, UpdatingAnswersWhatWasAlreadyThere) {
    QVRouteMode set{FOOT};

    EXPECT_FALSE(set.update(CAR));
    EXPECT_EQ(set.update({CAR, BIKE}), CAR);
    EXPECT_EQ(set, (QVRouteMode{FOOT, BIKE, CAR}));
}

TEST(QVRouteMode, EverySetIsASubsetAndASupersetOfItselfButStrictlyNeither) {
    const QVRouteMode set{FOOT, CAR};

    EXPECT_TRUE(set.isSubset(set));
    EXPECT_TRUE(set.isSuperset(set));
    EXPECT_FALSE(set.isStrictSubset(set));
    EXPECT_FALSE(set.isStrictSuperset(set));
}

TEST(QVRouteMode, ASmallerSetIsAStrictSubsetOfALargerOne) {
    const QVRouteMode large{FOOT, CAR};

    EXPECT_TRUE(CAR.isSubset(large));
    EXPECT_TRUE(CAR.isStrictSubset(large));
    EXPECT_TRUE(large.isSuperset(CAR));
    EXPECT_TRUE(large.isStrictSuperset(CAR));
    EXPECT_FALSE(large.isSubset(CAR));
    EXPECT_FALSE(CAR.isStrictSuperset(large));
    EXPECT_FALSE(BIKE.isSubset(large));
}

TEST(QVRouteMode, SetsWithoutACommonModeAreDisjoint) {
    EXPECT_TRUE((QVRouteMode{FOOT, CAR}).isDisjoint({BIKE, TRANSIT}));
    EXPECT_FALSE((QVRouteMode{FOOT, CAR}).isDisjoint({CAR, TRANSIT}));
    EXPECT_TRUE(QVRouteMode().isDisjoint(QVRouteMode()));
}

} // namespace
} // namespace quorvane
