#include <algorithm>
#include <atomic>
#include <cerrno>
#include <cstddef>
#include <future>
#include <memory>
#include <stdexcept>
#include <thread>
#include <vector>

#include <gtest/gtest.h>
#include <linux/filter.h>
#include <linux/seccomp.h>
#include <sys/prctl.h>
#include <sys/syscall.h>

#include "Platform/SerialQueue.h"
#include "support/ChildProcess.h"

namespace quorvane::platform {
namespace {

/// Something that one thread waits for and another one does.
class Gate {
public:
    void open() { promise.set_value(); }
    void wait() { future.wait(); }

private:
    std::promise<void> promise;
    std::future<void> future = promise.get_future();
};

class SerialQueueTest : public ::testing::Test {
protected:
    /// Waits until everything that was accepted has run.
    void finish() {
        queue->sync([] {});
    }

    std::unique_ptr<SerialQueue> queue = std::make_unique<SerialQueue>("Test.Queue");
};

TEST_F(SerialQueueTest, WhereTheSystemGivesNoThreadAsynchronousWorkRunsOnTheCallers) {
    testing::ChildProcess child([this] {
        sock_filter steps[] = {
            BPF_STMT(BPF_LD | BPF_W | BPF_ABS, offsetof(seccomp_data, nr)),
            BPF_JUMP(BPF_JMP | BPF_JEQ | BPF_K, SYS_clone, 1, 0),
            BPF_JUMP(BPF_JMP | BPF_JEQ | BPF_K, SYS_clone3, 0, 1),
            BPF_STMT(BPF_RET | BPF_K, SECCOMP_RET_ERRNO | EAGAIN),
            BPF_STMT(BPF_RET | BPF_K, SECCOMP_RET_ALLOW),
        };
        const sock_fprog program = {static_cast<unsigned short>(std::size(steps)), steps};
        ASSERT_EQ(prctl(PR_SET_NO_NEW_PRIVS, 1, 0, 0, 0), 0);
        ASSERT_EQ(prctl(PR_SET_SECCOMP, SECCOMP_MODE_FILTER, &program), 0);
        std::vector<int> order;

        queue->async([&] {
            order.push_back(1);
            queue->async([&] { order.push_back(2); });
        });
        queue->sync([&] { order.push_back(3); });

        EXPECT_EQ(order, (std::vector<int>{1, 2, 3}));
    });
    EXPECT_TRUE(child.succeeds());
}

TEST_F(SerialQueueTest, ItKeepsItsLabel) {
    EXPECT_EQ(queue->label(), "Test.Queue");
}

TEST_F(SerialQueueTest, SynchronousWorkRunsOnTheCallersThreadAndHandsItsResultBack) {
    const std::thread::id ran = queue->sync([] { return std::this_thread::get_id(); });

    EXPECT_EQ(ran, std::this_thread::get_id());
}

TEST_F(SerialQueueTest, AReferenceIsHandedBackAsOne) {
    int number = 1;

    queue->sync([&]() -> int& { return number; }) = 2;

    EXPECT_EQ(number, 2);
}

TEST_F(SerialQueueTest, WhatSynchronousWorkThrowsPassesThroughAndTheQueueGoesOn) {
    EXPECT_THROW(queue->sync([] { throw std::runtime_error("no"); }), std::runtime_error);

    EXPECT_EQ(queue->sync([] { return 1; }), 1);
}

TEST_F(SerialQueueTest, SynchronousWorkMayUseItsOwnQueue) {
    std::vector<int> order;

    queue->sync([&] {
        order.push_back(1);
        queue->sync([&] { queue->sync([&] { order.push_back(2); }); });
        order.push_back(3);
    });

    EXPECT_EQ(order, (std::vector<int>{1, 2, 3}));
}

TEST_F(SerialQueueTest, AsynchronousWorkMayUseItsOwnQueueBothWays) {
    std::vector<int> order;

    queue->async([&] {
        queue->async([&] { order.push_back(2); });
        queue->sync([&] { order.push_back(1); });
    });
    finish();
    finish();

    EXPECT_EQ(order, (std::vector<int>{1, 2}));
}

TEST_F(SerialQueueTest, AsynchronousWorkRunsInOrderOnOneOtherThread) {
    std::vector<int> order;
    std::vector<std::thread::id> threads;

    for (int i = 0; i < 1000; ++i) {
        queue->async([&, i] {
            order.push_back(i);
            threads.push_back(std::this_thread::get_id());
        });
    }
    finish();

    ASSERT_EQ(order.size(), 1000U);
    for (int i = 0; i < 1000; ++i) {
        EXPECT_EQ(order[static_cast<std::size_t>(i)], i);
        EXPECT_EQ(threads[static_cast<std::size_t>(i)], threads[0]);
    }
    EXPECT_NE(threads[0], std::this_thread::get_id());
}

TEST_F(SerialQueueTest, SynchronousWorkWaitsForAllThatCameBeforeIt) {
    Gate gate;
    std::atomic<int> ran = 0;
    queue->async([&] {
        gate.wait();
        ++ran;
    });
    for (int i = 0; i < 10; ++i) {
        queue->async([&] { ++ran; });
    }
    std::thread opener([&] { gate.open(); });

    EXPECT_EQ(queue->sync([&] { return ran.load(); }), 11);

    opener.join();
}

TEST_F(SerialQueueTest, OnePieceOfWorkRunsAtATimeWhateverTheThreads) {
    constexpr int rounds = 2000;
    int inside = 0;
    int most = 0;
    int total = 0;
    const auto work = [&] {
        ++inside;
        most = std::max(most, inside);
        ++total;
        --inside;
    };
    std::vector<std::thread> threads;
    for (int t = 0; t < 4; ++t) {
        threads.emplace_back([&, t] {
            for (int i = 0; i < rounds; ++i) {
                if (t % 2 == 0) {
                    queue->sync(work);
                } else {
                    queue->async(work);
                }
            }
        });
    }
    for (std::thread& thread : threads) {
        thread.join();
    }
    finish();

    EXPECT_EQ(most, 1);
    EXPECT_EQ(total, 4 * rounds);
}

TEST_F(SerialQueueTest, TheEndOfTheQueueWaitsForWhatWasAccepted) {
    int ran = 0;
    for (int i = 0; i < 100; ++i) {
        queue->async([&] { ++ran; });
    }

    queue.reset();

    EXPECT_EQ(ran, 100);
}

TEST_F(SerialQueueTest, AQueueThatEndsInsideItsAsynchronousWorkStillRunsTheRest) {
    Gate gate;
    bool isGone = false;
    auto shared = std::shared_ptr<SerialQueue>(std::move(queue));
    SerialQueue& last = *shared;
    Gate start;
    last.async([shared, &start, &isGone]() mutable {
        start.wait();
        const std::weak_ptr<SerialQueue> weak = shared;
        shared.reset();
        isGone = weak.expired();
    });
    last.async([&] { gate.open(); });
    shared.reset();

    start.open();
    gate.wait();

    EXPECT_TRUE(isGone);
}

TEST_F(SerialQueueTest, AQueueThatEndsInsideItsSynchronousWorkStillRunsTheRest) {
    Gate gate;

    queue->sync([&] {
        queue->async([&] { gate.open(); });
        queue.reset();
    });

    gate.wait();
    EXPECT_EQ(queue, nullptr);
}

TEST_F(SerialQueueTest, WhatAsynchronousWorkHoldsIsLetGoOfBeforeTheNextRuns) {
    auto held = std::make_shared<int>(0);
    const std::weak_ptr<int> weak = held;
    bool isGone = false;

    queue->async([held = std::move(held)] {});
    queue->async([&] { isGone = weak.expired(); });
    finish();

    EXPECT_TRUE(isGone);
}

TEST_F(SerialQueueTest, WhatAsynchronousWorkThrowsIsFatal) {
    ::testing::GTEST_FLAG(death_test_style) = "threadsafe";
    EXPECT_DEATH(
        {
            queue->async([] { throw std::runtime_error("no"); });
            finish();
            queue.reset();
        },
        "");
}

} // namespace
} // namespace quorvane::platform
