#include <atomic>
#include <future>

#include <gtest/gtest.h>

#include "sandbox/ConnectionThreads.h"

namespace quorvane::sandbox::test {
namespace {

TEST(ConnectionThreads, RunEverythingBeforeTheyEnd) {
    std::atomic<int> count = 0;
    ConnectionThreads threads;
    for (int i = 0; i < 500; ++i) {
        threads.run([&] { ++count; });
    }
    threads.join();
    EXPECT_EQ(count, 500);
}

TEST(ConnectionThreads, AreAsManyAsAreNeededUpToTheirLimit) {
    std::promise<void> end;
    const std::shared_future<void> ended = end.get_future().share();
    std::atomic<std::size_t> running = 0;
    ConnectionThreads threads;
    const auto connection = [&] {
        ++running;
        running.notify_all();
        ended.wait();
    };
    for (std::size_t i = 0; i < ConnectionThreads::mostThreads; ++i) {
        threads.run(connection);
    }
    for (std::size_t now = running; now < ConnectionThreads::mostThreads; now = running) {
        running.wait(now);
    }
    EXPECT_FALSE(threads.isCrowded());

    threads.run(connection);

    EXPECT_TRUE(threads.isCrowded());
    EXPECT_EQ(running, ConnectionThreads::mostThreads);
    end.set_value();
    threads.join();
    EXPECT_EQ(running, ConnectionThreads::mostThreads + 1);
}

TEST(ConnectionThreads, WaitWhileTooManyWaitUntilTheyAreClosed) {
    std::promise<void> end;
    const std::shared_future<void> ended = end.get_future().share();
    std::atomic<std::size_t> ran = 0;
    ConnectionThreads threads;
    const std::size_t total = ConnectionThreads::mostThreads + ConnectionThreads::mostWaiting + 10;
    const auto adding = std::async(std::launch::async, [&] {
        for (std::size_t i = 0; i < total; ++i) {
            threads.run([&] {
                ended.wait();
                ++ran;
            });
        }
    });
    EXPECT_EQ(adding.wait_for(std::chrono::milliseconds(50)), std::future_status::timeout);

    threads.close();
    adding.wait();
    end.set_value();
    threads.join();

    EXPECT_EQ(ran, total);
}

} // namespace
} // namespace quorvane::sandbox::test
