#pragma once

#include <chrono>
#include <map>
#include <memory>
#include <thread>
#include <vector>

#include "Platform/Clock.h"
#include "Platform/MainQueue.h"
#include "Platform/contract/Rig.h"

namespace quorvane::platform::contract {

class MainQueueContract : public Contract {
protected:
    [[nodiscard]] MainQueue& queue() { return platform().mainQueue(); }

    /// Work that notes @p number when it runs.
    MainQueue::Work note(int number) {
        return [this, number] { ran.push_back(number); };
    }

    /// Posts work that notes @p number, and between which moments it falls due.
    void postNoted(std::chrono::nanoseconds delay, int number) {
        const std::chrono::nanoseconds before = platform().clock().monotonic();
        queue().postAfter(delay, note(number));
        dueTimes[number] = {before + delay, platform().clock().monotonic() + delay};
    }

    /// However slow the machine is: nothing ran before what was certainly due earlier.
    void expectTheOrderOfDueTimes() {
        for (auto later = ran.begin(); later != ran.end(); ++later) {
            for (auto earlier = ran.begin(); earlier != later; ++earlier) {
                EXPECT_GE(dueTimes[*later].latest, dueTimes[*earlier].earliest) << *earlier << " before " << *later;
            }
        }
    }

    struct DueTime {
        std::chrono::nanoseconds earliest;
        std::chrono::nanoseconds latest;
    };

    std::vector<int> ran;
    std::map<int, DueTime> dueTimes;
};

using std::chrono::milliseconds;

TEST_P(MainQueueContract, PostedWorkRunsLaterAndNotInsideThePost) {
    queue().post(note(1));
    EXPECT_TRUE(ran.empty());

    EXPECT_TRUE(rig->runUntil([this] { return !ran.empty(); }));

    EXPECT_EQ(ran, std::vector<int>{1});
}

TEST_P(MainQueueContract, PostedWorkRunsInTheOrderOfPosting) {
    std::vector<int> expected;
    for (int i = 0; i < 100; ++i) {
        queue().post(note(i));
        expected.push_back(i);
    }

    EXPECT_TRUE(rig->runUntil([this] { return ran.size() == 100; }));

    EXPECT_EQ(ran, expected);
}

TEST_P(MainQueueContract, WorkPostedByRunningWorkComesAfterWhatWasWaiting) {
    bool inside = false;
    queue().post([&] {
        inside = true;
        queue().post([&] {
            EXPECT_FALSE(inside);
            ran.push_back(3);
        });
        ran.push_back(1);
        inside = false;
    });
    queue().post(note(2));

    EXPECT_TRUE(rig->runUntil([this] { return ran.size() == 3; }));

    EXPECT_EQ(ran, (std::vector<int>{1, 2, 3}));
}

TEST_P(MainQueueContract, DelayedWorkRunsInTheOrderOfDueTimes) {
    postNoted(milliseconds(30), 3);
    postNoted(milliseconds(10), 1);
    postNoted(milliseconds(20), 2);

    EXPECT_TRUE(rig->runUntil([this] { return ran.size() == 3; }));

    expectTheOrderOfDueTimes();
}

TEST_P(MainQueueContract, DelayedWorkThatIsOverdueStillRunsInTheOrderOfDueTimes) {
    queue().post([this] {
        postNoted(milliseconds(3), 2);
        postNoted(milliseconds(1), 1);
    });
    rig->pass(milliseconds(20));

    EXPECT_TRUE(rig->runUntil([this] { return ran.size() == 2; }));

    expectTheOrderOfDueTimes();
}

TEST_P(MainQueueContract, DelayedWorkNeverRunsEarly) {
    const std::chrono::nanoseconds posted = platform().clock().monotonic();
    std::chrono::nanoseconds at{};
    for (const int delay : {1, 7, 25}) {
        queue().postAfter(milliseconds(delay), [this, &at, delay] {
            at = platform().clock().monotonic();
            ran.push_back(delay);
        });

        EXPECT_TRUE(rig->runUntil([this, delay] { return !ran.empty() && ran.back() == delay; }));

        EXPECT_GE(at - posted, milliseconds(delay));
    }
}

TEST_P(MainQueueContract, ADelayOfLessThanNothingCountsAsNone) {
    queue().postAfter(milliseconds(-5), note(1));
    queue().postAfter(milliseconds(0), note(2));
    EXPECT_TRUE(ran.empty());

    EXPECT_TRUE(rig->runUntil([this] { return ran.size() == 2; }));
}

TEST_P(MainQueueContract, EmptyWorkIsDropped) {
    queue().post(nullptr);
    queue().cancel(queue().postAfter(milliseconds(1), nullptr));
    queue().postAfter(milliseconds(1), nullptr);
    queue().postAfter(milliseconds(2), note(1));

    EXPECT_TRUE(rig->runUntil([this] { return !ran.empty(); }));
}

TEST_P(MainQueueContract, CancelledWorkNeverRuns) {
    const MainQueue::Ticket cancelled = queue().postAfter(milliseconds(1), note(1));
    const MainQueue::Ticket kept = queue().postAfter(milliseconds(2), note(2));
    EXPECT_NE(cancelled, 0U);
    EXPECT_NE(cancelled, kept);

    queue().cancel(cancelled);

    EXPECT_TRUE(rig->runUntil([this] { return !ran.empty(); }));
    rig->pass(milliseconds(5));
    EXPECT_EQ(ran, std::vector<int>{2});
}

TEST_P(MainQueueContract, WorkThatIsDueAlreadyCanStillBeCancelledByWorkBeforeIt) {
    MainQueue::Ticket second = 0;
    queue().postAfter(milliseconds(0), [&] { queue().cancel(second); });
    second = queue().postAfter(milliseconds(0), note(2));

    rig->pass(milliseconds(5));

    EXPECT_TRUE(ran.empty());
}

TEST_P(MainQueueContract, CancelledWorkIsDestroyed) {
    auto owned = std::make_shared<int>(1);
    const std::weak_ptr<int> watched = owned;
    const MainQueue::Ticket ticket = queue().postAfter(milliseconds(2), [owned = std::move(owned)] {});

    queue().cancel(ticket);
    rig->pass(milliseconds(10));

    EXPECT_TRUE(watched.expired());
}

TEST_P(MainQueueContract, ATicketThatIsUnknownOrHasRunIsIgnored) {
    const MainQueue::Ticket ticket = queue().postAfter(milliseconds(1), note(1));
    EXPECT_TRUE(rig->runUntil([this] { return ran.size() == 1; }));

    queue().cancel(ticket);
    queue().cancel(0);
    queue().cancel(ticket + 1000);
    queue().post(note(2));

    EXPECT_TRUE(rig->runUntil([this] { return ran.size() == 2; }));
}

TEST_P(MainQueueContract, WorkMayCancelItself) {
    MainQueue::Ticket own = 0;
    own = queue().postAfter(milliseconds(1), [&] {
        queue().cancel(own);
        ran.push_back(1);
    });

    EXPECT_TRUE(rig->runUntil([this] { return ran.size() == 1; }));
}

TEST_P(MainQueueContract, WorkFromAnotherThreadRunsOnTheMainThreadInItsOrder) {
    bool mainThreadElsewhere = true;
    std::vector<bool> onMainThread;
    std::thread([&] {
        mainThreadElsewhere = queue().isMainThread();
        for (int i = 0; i < 50; ++i) {
            queue().post([&, i] {
                ran.push_back(i);
                onMainThread.push_back(queue().isMainThread());
            });
        }
        queue().cancel(queue().postAfter(milliseconds(1), note(1000)));
        queue().postAfter(milliseconds(1), note(50));
    }).join();

    EXPECT_TRUE(rig->runUntil([this] { return ran.size() == 51; }));

    std::vector<int> expected;
    for (int i = 0; i <= 50; ++i) {
        expected.push_back(i);
    }
    EXPECT_EQ(ran, expected);
    EXPECT_EQ(onMainThread, std::vector<bool>(50, true));
    EXPECT_FALSE(mainThreadElsewhere);
    EXPECT_TRUE(queue().isMainThread());
}

TEST_P(MainQueueContract, ThreadsThatPostAtOnceLoseNothing) {
    std::vector<std::thread> threads;
    std::vector<int> last(4, -1);
    int inOrder = 0;
    for (int thread = 0; thread < 4; ++thread) {
        threads.emplace_back([&, thread] {
            for (int i = 0; i < 250; ++i) {
                queue().post([&, thread, i] {
                    const auto index = static_cast<std::size_t>(thread);
                    inOrder += last[index] == i - 1 ? 1 : 0;
                    last[index] = i;
                });
            }
        });
    }
    for (std::thread& thread : threads) {
        thread.join();
    }

    EXPECT_TRUE(rig->runUntil([&] { return last == std::vector<int>(4, 249); }));

    EXPECT_EQ(inOrder, 1000);
}

TEST_P(MainQueueContract, AfterCloseNothingRunsAndWhatWaitedIsDestroyed) {
    const auto owned = std::make_shared<int>(1);
    queue().post([this, owned] { ran.push_back(*owned); });
    queue().postAfter(milliseconds(1), [this, owned] { ran.push_back(*owned); });

    queue().close();

    EXPECT_EQ(owned.use_count(), 1);
    queue().post([this, owned] { ran.push_back(*owned); });
    queue().cancel(queue().postAfter(milliseconds(1), [this, owned] { ran.push_back(*owned); }));
    queue().postAfter(milliseconds(1), [this, owned] { ran.push_back(*owned); });
    EXPECT_EQ(owned.use_count(), 1);
    rig->pass(milliseconds(5));
    EXPECT_TRUE(ran.empty());
}

TEST_P(MainQueueContract, WorkThatPostsWhileItIsDestroyedByCloseIsHarmless) {
    struct PostsWhenDestroyed {
        explicit PostsWhenDestroyed(MainQueue& theQueue) : queue(theQueue) {}
        ~PostsWhenDestroyed() {
            queue.post([] {});
        }
        MainQueue& queue;
    };
    auto owned = std::make_shared<PostsWhenDestroyed>(queue());
    const std::weak_ptr<PostsWhenDestroyed> watched = owned;
    queue().post([owned = std::move(owned)] {});

    queue().close();

    EXPECT_TRUE(watched.expired());
}

} // namespace quorvane::platform::contract
