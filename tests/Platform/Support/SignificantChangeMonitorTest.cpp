#include <gtest/gtest.h>

#include "Platform/Support/SignificantChangeMonitor.h"

namespace quorvane::platform {
namespace {

using namespace std::chrono_literals;

class SignificantChangeMonitorTest : public ::testing::Test {
protected:
    /// Whether a fix that many metres north is a change, @p after the one before.
    bool fixAt(double metres, double accuracy = 10, std::chrono::nanoseconds after = 5min) {
        now += after;
        return monitor.receive({{46 + metres / 111'195.08, 14.5}, accuracy}, now);
    }

    SignificantChangeMonitor monitor;
    std::chrono::nanoseconds now{0};
};

TEST_F(SignificantChangeMonitorTest, TheFirstFixIsNoChange) {
    EXPECT_FALSE(fixAt(0));
}

TEST_F(SignificantChangeMonitorTest, MoreThanFiveHundredMetresAreAChange) {
    fixAt(0);

    EXPECT_FALSE(fixAt(499));
    EXPECT_TRUE(fixAt(512));
    EXPECT_FALSE(fixAt(512));
    EXPECT_FALSE(fixAt(20));
    EXPECT_TRUE(fixAt(0));
}

TEST_F(SignificantChangeMonitorTest, AnUncertainFixNeedsASecondOne) {
    fixAt(0);

    EXPECT_FALSE(fixAt(600, 200));
    EXPECT_FALSE(fixAt(0, 200));
    EXPECT_FALSE(fixAt(600, 200));
    EXPECT_TRUE(fixAt(600, 200));
}

TEST_F(SignificantChangeMonitorTest, ThereIsOneInFiveMinutesAtTheMost) {
    fixAt(0);
    EXPECT_TRUE(fixAt(1000, 10, 1s));

    EXPECT_FALSE(fixAt(2000, 10, 4min + 59s));
    EXPECT_TRUE(fixAt(3000, 10, 1s));
}

TEST_F(SignificantChangeMonitorTest, AfterAResetItBeginsWithTheNextFix) {
    fixAt(0);
    monitor.reset();

    EXPECT_FALSE(fixAt(5000));
    EXPECT_FALSE(fixAt(5400));
    EXPECT_TRUE(fixAt(5600));
}

} // namespace
} // namespace quorvane::platform
