#include <stdexcept>
#include <thread>
#include <vector>

#include <gtest/gtest.h>

#include "Platform/Native/NativeMainQueue.h"

namespace quorvane::platform {
namespace {

using namespace std::chrono_literals;

class NativeMainQueueTest : public ::testing::Test {
protected:
    const std::unique_ptr<NativeMainQueue> queue = NativeMainQueue::make();
    std::vector<int> ran;
};

TEST_F(NativeMainQueueTest, RunReturnsAfterThePieceThatQuits) {
    queue->post([this] {
        ran.push_back(1);
        queue->quit();
    });
    queue->post([this] { ran.push_back(2); });

    queue->run();

    EXPECT_EQ(ran, std::vector<int>{1});
    EXPECT_EQ(queue->poll(), 1U);
    EXPECT_EQ(ran, (std::vector<int>{1, 2}));
}

TEST_F(NativeMainQueueTest, AQuitBeforeRunEndsTheNextRunOnly) {
    queue->quit();
    queue->run();

    queue->post([this] {
        ran.push_back(1);
        queue->quit();
    });
    queue->run();

    EXPECT_EQ(ran, std::vector<int>{1});
}

TEST_F(NativeMainQueueTest, AnotherThreadMayEndARunThatHasNothingToDo) {
    bool endedByOther = true;
    queue->postAfter(1min, [&] {
        endedByOther = false;
        queue->quit();
    });
    std::thread other([this] { queue->quit(); });

    queue->run();

    other.join();
    EXPECT_TRUE(endedByOther);
}

TEST_F(NativeMainQueueTest, WorkOfAnotherThreadWakesARunThatWaits) {
    queue->postAfter(1h, [this] { ran.push_back(1000); });
    std::thread other([this] {
        queue->post([this] {
            ran.push_back(1);
            queue->quit();
        });
    });

    queue->run();

    other.join();
    EXPECT_EQ(ran, std::vector<int>{1});
}

TEST_F(NativeMainQueueTest, ClosingEndsARun) {
    queue->post([this] { queue->close(); });
    queue->post([this] { ran.push_back(1); });

    queue->run();

    EXPECT_TRUE(ran.empty());
}

TEST_F(NativeMainQueueTest, RunUntilAsksFirstAndStopsAsSoonAsItHolds) {
    queue->post([this] { ran.push_back(1); });
    queue->post([this] { ran.push_back(2); });

    EXPECT_TRUE(queue->runUntil([] { return true; }, 1h));
    EXPECT_TRUE(ran.empty());
    EXPECT_TRUE(queue->runUntil([this] { return ran.size() == 1; }, 1h));

    EXPECT_EQ(ran, std::vector<int>{1});
}

TEST_F(NativeMainQueueTest, RunUntilGivesUpWhenItsTimeIsOver) {
    const auto started = std::chrono::steady_clock::now();

    EXPECT_FALSE(queue->runUntil([] { return false; }, 20ms));

    EXPECT_GE(std::chrono::steady_clock::now() - started, 20ms);
}

TEST_F(NativeMainQueueTest, RunUntilWithoutTimeRunsWhatIsDue) {
    queue->post([this] { ran.push_back(1); });

    EXPECT_TRUE(queue->runUntil([this] { return !ran.empty(); }, 0ns));
    EXPECT_FALSE(queue->runUntil([] { return false; }, -5s));
}

TEST_F(NativeMainQueueTest, AQueueThatIsClosedWaitsForNothing) {
    queue->close();

    EXPECT_FALSE(queue->runUntil([] { return false; }, 24h));
    queue->run();
}

TEST_F(NativeMainQueueTest, ATimeBeyondTheEndOfTheClockIsNever) {
    queue->postAfter(std::chrono::nanoseconds::max(), [this] { ran.push_back(1); });
    queue->post([this] { ran.push_back(2); });

    EXPECT_TRUE(queue->runUntil([this] { return !ran.empty(); }, std::chrono::nanoseconds::max()));

    EXPECT_EQ(ran, std::vector<int>{2});
}

TEST_F(NativeMainQueueTest, PollLeavesWhatFallsDueMeanwhile) {
    queue->post([this] {
        ran.push_back(1);
        queue->post([this] { ran.push_back(3); });
        queue->postAfter(0ns, [this] { ran.push_back(4); });
    });
    queue->post([this] { ran.push_back(2); });
    queue->postAfter(1h, [this] { ran.push_back(1000); });

    EXPECT_EQ(queue->poll(), 2U);
    EXPECT_EQ(ran, (std::vector<int>{1, 2}));
    EXPECT_EQ(queue->poll(), 2U);
    EXPECT_EQ(queue->poll(), 0U);
    EXPECT_EQ(ran, (std::vector<int>{1, 2, 3, 4}));
}

TEST_F(NativeMainQueueTest, AnExceptionPassesThroughAndTheRestStaysQueued) {
    queue->post([] { throw std::runtime_error("of the work"); });
    queue->post([this] { ran.push_back(1); });

    EXPECT_THROW(queue->poll(), std::runtime_error);

    EXPECT_EQ(queue->poll(), 1U);
    EXPECT_EQ(ran, std::vector<int>{1});
}

TEST_F(NativeMainQueueTest, WorkThatIsNoneIsIgnored) {
    queue->post(nullptr);
    queue->postAfter(0ns, nullptr);

    EXPECT_EQ(queue->poll(), 0U);
}

TEST_F(NativeMainQueueTest, TheThreadThatMadeItIsTheMainThread) {
    std::unique_ptr<NativeMainQueue> other;
    std::thread([&] {
        other = NativeMainQueue::make();
        EXPECT_TRUE(other->isMainThread());
    }).join();

    EXPECT_FALSE(other->isMainThread());
    EXPECT_TRUE(queue->isMainThread());
}

} // namespace
} // namespace quorvane::platform
