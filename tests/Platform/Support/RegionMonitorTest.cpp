#include <gmock/gmock.h>

#include "Platform/Support/RegionMonitor.h"

namespace quorvane::platform {
namespace {

using ::testing::ElementsAre;
using ::testing::IsEmpty;

/// A hundredth of a degree of latitude is some 1,112 metres.
class RegionMonitorTest : public ::testing::Test {
protected:
    /// What a fix that many metres north of the middle changes, as words.
    std::vector<std::string> fixAt(double metres, double accuracy = 5) {
        std::vector<std::string> words;
        for (const RegionMonitor::Finding& finding : monitor.receive({{46 + metres / 111'195.08, 14.5}, accuracy})) {
            const std::string word = finding.state == RegionState::inside ? "inside " : "outside ";
            words.push_back((finding.isCrossing ? "crossed to " : "begins ") + word + finding.region.identifier);
        }
        return words;
    }

    const CircularRegion home{"home", {46, 14.5}, 100};
    RegionMonitor monitor;
};

TEST_F(RegionMonitorTest, TheFirstFixSaysWhereTheDeviceIsAndIsNoCrossing) {
    monitor.start(home);

    EXPECT_THAT(fixAt(0), ElementsAre("begins inside home"));
    EXPECT_THAT(fixAt(0), IsEmpty());
}

TEST_F(RegionMonitorTest, ARegionThatIsResumedOnOneSideIsCrossedByAFixOnTheOther) {
    monitor.resume(home, RegionState::inside);
    EXPECT_EQ(monitor.state("home"), RegionState::inside);

    EXPECT_THAT(fixAt(1112), ElementsAre("crossed to outside home"));

    EXPECT_EQ(monitor.state("home"), RegionState::outside);
    EXPECT_EQ(monitor.state("office"), RegionState::unknown);
}

TEST_F(RegionMonitorTest, AFixThatIsGivenAtTheStartSaysSoAtOnce) {
    EXPECT_EQ(monitor.start(home), RegionState::unknown);
    EXPECT_EQ(monitor.start(home, Location{{46, 14.5}, 5}), RegionState::inside);
    EXPECT_EQ(monitor.start({"office", {46.01, 14.5}, 100}, Location{{46, 14.5}, 5}), RegionState::outside);

    EXPECT_THAT(fixAt(1112), ElementsAre("crossed to outside home", "crossed to inside office"));
}

TEST_F(RegionMonitorTest, OneFixWhoseCircleLiesBeyondTheBorderAsAWholeCrossesIt) {
    monitor.start(home);
    fixAt(0);

    EXPECT_THAT(fixAt(106, 5), ElementsAre("crossed to outside home"));
    EXPECT_THAT(fixAt(94, 5), ElementsAre("crossed to inside home"));
}

TEST_F(RegionMonitorTest, AFixWhoseCircleTouchesTheBorderCrossesItOnlyWithASecondOne) {
    monitor.start(home);
    fixAt(0);

    EXPECT_THAT(fixAt(104, 5), IsEmpty());
    EXPECT_THAT(fixAt(101, 50), ElementsAre("crossed to outside home"));
    EXPECT_THAT(fixAt(96, 5), IsEmpty());
    EXPECT_THAT(fixAt(99, 50), ElementsAre("crossed to inside home"));
}

TEST_F(RegionMonitorTest, AFixThatStraysCrossesNothing) {
    monitor.start(home);
    fixAt(0);

    for (int i = 0; i < 5; ++i) {
        EXPECT_THAT(fixAt(150, 60), IsEmpty());
        EXPECT_THAT(fixAt(50, 60), IsEmpty());
    }
}

TEST_F(RegionMonitorTest, TheBorderItselfIsInside) {
    const double reach = distance({46, 14.5}, {46.001, 14.5});
    monitor.start({"home", {46, 14.5}, reach});

    const auto findings = monitor.receive({{46.001, 14.5}, 0});

    ASSERT_EQ(findings.size(), 1U);
    EXPECT_EQ(findings[0].state, RegionState::inside);
}

TEST_F(RegionMonitorTest, ARegionThatIsStartedAgainBeginsAnewAndComesLast) {
    monitor.start(home);
    monitor.start({"office", {46.01, 14.5}, 100});
    fixAt(0);
    monitor.start({"home", {46.02, 14.5}, 100});

    ASSERT_EQ(monitor.regions().size(), 2U);
    EXPECT_EQ(monitor.regions()[0].identifier, "office");
    EXPECT_THAT(fixAt(0), ElementsAre("begins outside home"));
}

TEST_F(RegionMonitorTest, ARegionThatWasStoppedIsNotCrossed) {
    monitor.start(home);
    fixAt(0);
    monitor.stop("office");
    EXPECT_TRUE(monitor.has("home"));
    monitor.stop("home");

    EXPECT_FALSE(monitor.has("home"));
    EXPECT_TRUE(monitor.isEmpty());
    EXPECT_THAT(fixAt(5000), IsEmpty());
}

TEST_F(RegionMonitorTest, StatesThatAreForgottenAreFoundOutAnew) {
    monitor.start(home);
    fixAt(0);
    fixAt(150, 60);
    monitor.forgetStates();

    EXPECT_THAT(fixAt(150, 60), ElementsAre("begins outside home"));
    EXPECT_THAT(fixAt(50, 60), IsEmpty());
}

TEST_F(RegionMonitorTest, ARegionAtTheDateLineIsACircle) {
    monitor.start({"island", {-17, 179.9995}, 200});
    EXPECT_EQ(monitor.receive({{-17, -179.9995}, 5}).at(0).state, RegionState::inside);
}

} // namespace
} // namespace quorvane::platform
