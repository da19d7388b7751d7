#include <QCoreApplication>
#include <QEventLoop>
#include <QTimer>
#include <memory>
#include <stdexcept>
#include <string>
#include <thread>
#include <vector>

#include <gtest/gtest.h>

#include "Platform/Qt/QtMainQueue.h"

namespace quorvane::platform::qt {
namespace {

using namespace std::chrono_literals;

class QtMainQueueTest : public ::testing::Test {
protected:
    MainQueue::Work note(int number) {
        return [this, number] { ran.push_back(number); };
    }

    /// Runs the queue until everything posted so far has run.
    void runThrough() {
        bool reached = false;
        queue->post([&] { reached = true; });
        EXPECT_TRUE(queue->runUntil([&] { return reached; }, 60s));
    }

    std::unique_ptr<QtMainQueue> queue = std::make_unique<QtMainQueue>();
    std::vector<int> ran;
};

TEST_F(QtMainQueueTest, MakesAnApplicationWhereThereIsNoneAndTakesItAway) {
    EXPECT_NE(QCoreApplication::instance(), nullptr);

    queue.reset();

    EXPECT_EQ(QCoreApplication::instance(), nullptr);
}

TEST_F(QtMainQueueTest, AQueueMadeBeforeTheOneInUseEndsKeepsTheApplication) {
    const QCoreApplication* const application = QCoreApplication::instance();

    queue = std::make_unique<QtMainQueue>();

    EXPECT_EQ(QCoreApplication::instance(), application);
    runThrough();
}

TEST_F(QtMainQueueTest, UsesTheApplicationThatIsThereAndLeavesIt) {
    queue.reset();
    int count = 1;
    char name[] = "host";
    char* arguments[] = {name, nullptr};
    QCoreApplication host(count, arguments);

    queue = std::make_unique<QtMainQueue>();
    queue->post(note(1));
    queue->post([] { QCoreApplication::quit(); });
    QCoreApplication::exec();
    queue.reset();

    EXPECT_EQ(ran, std::vector<int>{1});
    EXPECT_EQ(QCoreApplication::instance(), &host);
}

TEST_F(QtMainQueueTest, AnApplicationThatEndsBeforeTheQueueDoesNoHarm) {
    queue.reset();
    int count = 1;
    char name[] = "host";
    char* arguments[] = {name, nullptr};
    auto host = std::make_unique<QCoreApplication>(count, arguments);
    queue = std::make_unique<QtMainQueue>();
    queue->post(note(1));
    queue->postAfter(1h, note(2));

    host.reset();
    queue->close();
    queue.reset();

    EXPECT_TRUE(ran.empty());
}

TEST_F(QtMainQueueTest, RunEndsAfterThePieceThatQuits) {
    queue->post(note(1));
    queue->post([this] {
        queue->quit();
        ran.push_back(2);
    });
    queue->post(note(3));

    queue->run();
    EXPECT_EQ(ran, (std::vector<int>{1, 2}));

    runThrough();
    EXPECT_EQ(ran, (std::vector<int>{1, 2, 3}));
}

TEST_F(QtMainQueueTest, AnotherThreadEndsARunThatWaits) {
    std::thread other;
    queue->post([&] { other = std::thread([this] { queue->quit(); }); });

    bool endedByOther = true;
    queue->postAfter(1min, [&] {
        endedByOther = false;
        queue->quit();
    });

    queue->run();

    other.join();
    EXPECT_TRUE(endedByOther);
}

TEST_F(QtMainQueueTest, ARunAfterQuitReturnsAtOnceAndTheNextOneDoesNot) {
    queue->quit();
    queue->post(note(1));
    queue->run();
    EXPECT_TRUE(ran.empty());

    queue->post([this] { queue->quit(); });
    queue->run();
    EXPECT_EQ(ran, std::vector<int>{1});
}

TEST_F(QtMainQueueTest, ClosingEndsARun) {
    queue->post([this] { queue->close(); });
    queue->post(note(1));

    queue->run();
    queue->run();

    EXPECT_TRUE(ran.empty());
}

TEST_F(QtMainQueueTest, RunUntilStopsAfterThePieceThatMakesItTrue) {
    for (int i = 1; i <= 3; ++i) {
        queue->post(note(i));
    }

    EXPECT_TRUE(queue->runUntil([this] { return ran.size() == 2; }, 60s));
    EXPECT_EQ(ran.size(), 2U);
    EXPECT_TRUE(queue->runUntil([this] { return ran.size() == 3; }, 60s));
}

TEST_F(QtMainQueueTest, RunUntilGivesUpWhenItsTimeIsOver) {
    EXPECT_FALSE(queue->runUntil([] { return false; }, 2ms));
    EXPECT_FALSE(queue->runUntil([] { return false; }, 0ms));
}

TEST_F(QtMainQueueTest, PollRunsWhatIsDueAndLeavesWhatComesMeanwhile) {
    queue->post([this] {
        ran.push_back(1);
        queue->post(note(3));
        queue->postAfter(0ms, note(4));
    });
    queue->postAfter(0ms, note(2));
    queue->postAfter(1h, note(5));

    EXPECT_EQ(queue->poll(), 2U);
    EXPECT_EQ(ran, (std::vector<int>{1, 2}));
    EXPECT_EQ(queue->poll(), 2U);
    EXPECT_EQ(ran, (std::vector<int>{1, 2, 3, 4}));
    EXPECT_EQ(queue->poll(), 0U);
}

TEST_F(QtMainQueueTest, WhatAPollLeftRunsInTheNextRun) {
    queue->post([this] { queue->post(note(1)); });
    EXPECT_EQ(queue->poll(), 1U);

    EXPECT_TRUE(queue->runUntil([this] { return ran.size() == 1; }, 60s));
}

TEST_F(QtMainQueueTest, TheToolkitsOwnEventsRunToo) {
    QTimer::singleShot(0, QCoreApplication::instance(), note(1));
    queue->postAfter(1ms, note(2));

    EXPECT_TRUE(queue->runUntil([this] { return ran.size() == 2; }, 60s));

    QTimer::singleShot(0, QCoreApplication::instance(), note(3));
    EXPECT_EQ(queue->poll(), 0U);
    EXPECT_EQ(ran, (std::vector<int>{1, 2, 3}));
}

TEST_F(QtMainQueueTest, WorkThatRunsAnEventLoopOfItsOwnLetsTheNextPiecesRunInIt) {
    queue->post([this] {
        QEventLoop dialog;
        queue->post([&] { dialog.quit(); });
        dialog.exec();
        ran.push_back(2);
    });
    queue->post(note(1));

    EXPECT_TRUE(queue->runUntil([this] { return ran.size() == 2; }, 60s));

    EXPECT_EQ(ran, (std::vector<int>{1, 2}));
}

TEST_F(QtMainQueueTest, DelayedWorkOfAThreadThatIsNotTheToolkitsRuns) {
    std::thread([this] { queue->postAfter(2ms, note(1)); }).join();

    EXPECT_TRUE(queue->runUntil([this] { return !ran.empty(); }, 60s));
}

TEST_F(QtMainQueueTest, AnExceptionPassesThroughAndWhatWaitsStays) {
    queue->post([] { throw std::runtime_error("from work"); });
    queue->post(note(1));
    EXPECT_THROW(queue->run(), std::runtime_error);
    EXPECT_TRUE(ran.empty());

    queue->post([] { throw std::runtime_error("from work"); });
    EXPECT_THROW(queue->poll(), std::runtime_error);
    EXPECT_EQ(ran, std::vector<int>{1});

    queue->post(note(2));
    EXPECT_TRUE(queue->runUntil([this] { return ran.size() == 2; }, 60s));
}

TEST_F(QtMainQueueTest, AQueueThatEndsWithEventsOnTheWayRunsNothing) {
    for (int i = 0; i < 10; ++i) {
        queue->post(note(i));
        queue->postAfter(0ms, note(i));
    }

    queue = std::make_unique<QtMainQueue>();
    runThrough();

    EXPECT_TRUE(ran.empty());
}

TEST_F(QtMainQueueTest, AllThatIsPostedWhileThePiecesQuitAgainAndAgainRunsOnce) {
    for (int i = 0; i < 100; ++i) {
        queue->post([this, i] {
            ran.push_back(i);
            if (i % 3 == 0) {
                queue->quit();
            }
        });
    }

    int runs = 0;
    while (ran.size() < 100) {
        queue->run();
        ++runs;
    }

    std::vector<int> expected(100);
    for (int i = 0; i < 100; ++i) {
        expected[static_cast<std::size_t>(i)] = i;
    }
    EXPECT_EQ(ran, expected);
    EXPECT_EQ(runs, 34);
}

using QtMainQueueDeathTest = QtMainQueueTest;

TEST_F(QtMainQueueDeathTest, APlatformMadeOnAnotherThreadThanTheApplicationsStopsTheProcess) {
    EXPECT_DEATH(std::thread([] { const QtMainQueue other; }).join(), "on the thread of the Qt application");
}

} // namespace
} // namespace quorvane::platform::qt
