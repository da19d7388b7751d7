#include <gtest/gtest.h>

#include "Tasks/ClaimRule.h"

namespace quorvane {
namespace {

TEST(ClaimRule, AUserAHundredAndFiftyMetresAwayMayClaimATaskWithoutALimitOfItsOwn) {
    EXPECT_TRUE(ClaimRule::allows(150, std::nullopt));
    EXPECT_NEAR(ClaimRule::miles(150), 0.0932, 0.00005);
}

TEST(ClaimRule, AUserAHundredAndSeventyMetresAwayMayNotClaimATaskWithoutALimitOfItsOwn) {
    EXPECT_FALSE(ClaimRule::allows(170, std::nullopt));
    EXPECT_NEAR(ClaimRule::miles(170), 0.1056, 0.00005);
}

TEST(ClaimRule, TheTasksOwnLimitTakesThePlaceOfTheLibrarys) {
    EXPECT_TRUE(ClaimRule::allows(170, 0.25));
    EXPECT_FALSE(ClaimRule::allows(150, 0.05));
}

TEST(ClaimRule, ADistanceExactlyAtTheLimitIsAllowed) {
    const double metres = 400;
    EXPECT_TRUE(ClaimRule::allows(metres, ClaimRule::miles(metres)));
    EXPECT_FALSE(ClaimRule::allows(metres + 0.01, ClaimRule::miles(metres)));
    EXPECT_TRUE(ClaimRule::allows(0, 0.0));
}

TEST(ClaimRule, MilesAreMetresTimesTheFactorThroughAThousand) {
    EXPECT_DOUBLE_EQ(ClaimRule::miles(1000), 0.6213712);
}

} // namespace
} // namespace quorvane
