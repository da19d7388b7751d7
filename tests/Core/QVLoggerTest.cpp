#include <thread>
#include <vector>

#include <gmock/gmock.h>

#include "Core/QVLogger.h"
#include "support/SimulatedTest.h"

namespace quorvane {
namespace {

using ::testing::ElementsAre;
using ::testing::IsEmpty;
using namespace std::chrono_literals;

class QVLoggerTest : public SimulatedTest {
protected:
    void log(QVLogLevel level, const std::string& message) { QVLogger::shared().log(level, message); }

    [[nodiscard]] std::vector<std::string> printed() {
        phone->runUntilIdle();
        return phone->application().outputLines();
    }
};

TEST_F(QVLoggerTest, ALineIsTheTimestampTheNameTheMessageAndTheBackgroundTime) {
    setLogLevel(QVLogLevel::DEBUG);

    log(QVLogLevel::INFO, "signed in");

    EXPECT_THAT(printed(), ElementsAre("2026-03-01 12:00:00 GMT Quorvane signed in | backgroundTimeRemaining = 180.0"));
}

TEST_F(QVLoggerTest, ALineCarriesLocalTimeAndItsOffset) {
    setLogLevel(QVLogLevel::DEBUG);
    phone->clock().setOffsetFromUTC(2h);
    phone->advance(1h + 5min + 7s);

    log(QVLogLevel::INFO, "signed in");

    EXPECT_THAT(printed(),
                ElementsAre("2026-03-01 03:05:07 GMT+02:00 Quorvane signed in | backgroundTimeRemaining = 180.0"));
}

TEST_F(QVLoggerTest, TheBackgroundTimeIsADoubleOfSeconds) {
    setLogLevel(QVLogLevel::DEBUG);

    phone->application().setBackgroundTimeRemaining(12.5);
    log(QVLogLevel::INFO, "a");
    EXPECT_TRUE(printed().back().ends_with(" a | backgroundTimeRemaining = 12.5"));

    phone->application().setBackgroundTimeRemaining(30);
    log(QVLogLevel::INFO, "b");
    EXPECT_TRUE(printed().back().ends_with(" b | backgroundTimeRemaining = 30.0"));

    phone->application().setBackgroundTimeRemaining(0);
    log(QVLogLevel::INFO, "c");
    EXPECT_TRUE(printed().back().ends_with(" c | backgroundTimeRemaining = 0.0"));
}

TEST_F(QVLoggerTest, ALineReadsTimeAndBackgroundTimeWhenItIsWritten) {
    setLogLevel(QVLogLevel::DEBUG);

    log(QVLogLevel::INFO, "late");
    phone->application().setBackgroundTimeRemaining(7);
    phone->clock().moveForward(1s);

    EXPECT_THAT(printed(), ElementsAre("2026-03-01 12:00:01 GMT Quorvane late | backgroundTimeRemaining = 7.0"));
}

TEST_F(QVLoggerTest, NothingIsLoggedWhenNoLevelIsStored) {
    log(QVLogLevel::ERROR, "lost");

    EXPECT_THAT(printed(), IsEmpty());
}

TEST_F(QVLoggerTest, EveryStoredLevelAdmitsItselfAndWhatIsGraver) {
    const std::vector<QVLogLevel> levels{QVLogLevel::ERROR, QVLogLevel::WARNING, QVLogLevel::INFO, QVLogLevel::DEBUG};
    const std::vector<std::string> names{"error", "warning", "info", "debug"};
    for (std::size_t stored = 0; stored <= levels.size(); ++stored) {
        setLogLevel(static_cast<QVLogLevel>(stored));
        phone->application().clearOutput();

        for (std::size_t i = 0; i < levels.size(); ++i) {
            log(levels[i], names[i]);
        }

        const std::vector<std::string> admitted(names.begin(), names.begin() + static_cast<std::ptrdiff_t>(stored));
        EXPECT_EQ(messages(), admitted) << "at level " << stored;
    }
}

TEST_F(QVLoggerTest, ADroppedMessageDoesNotReachTheDelegate) {
    const auto delegate = std::make_shared<quorvane::testing::RecordingDelegate>();
    QVLogger::shared().delegate = delegate;
    setLogLevel(QVLogLevel::INFO);

    log(QVLogLevel::DEBUG, "dropped");
    log(QVLogLevel::ERROR, "kept");

    EXPECT_THAT(messages(), ElementsAre("kept"));
    EXPECT_EQ(delegate->logLines().size(), 1U);
}

TEST_F(QVLoggerTest, TheDelegateGetsTheLineThatIsPrinted) {
    const auto delegate = std::make_shared<quorvane::testing::RecordingDelegate>();
    QVLogger::shared().delegate = delegate;
    setLogLevel(QVLogLevel::INFO);

    log(QVLogLevel::INFO, "hello");

    EXPECT_THAT(printed(), ElementsAre("2026-03-01 12:00:00 GMT Quorvane hello | backgroundTimeRemaining = 180.0"));
    EXPECT_EQ(delegate->logLines(), printed());
}

TEST_F(QVLoggerTest, ALineIsPrintedBeforeTheDelegateGetsIt) {
    struct Counting : quorvane::testing::RecordingDelegate {
        explicit Counting(quorvane::testing::SimulatedApplication& theApplication) : application(theApplication) {}
        void onLog(const std::string&) override { printed.push_back(application.outputLines().size()); }
        quorvane::testing::SimulatedApplication& application;
        std::vector<std::size_t> printed;
    };
    const auto delegate = std::make_shared<Counting>(phone->application());
    QVLogger::shared().delegate = delegate;
    setLogLevel(QVLogLevel::INFO);

    log(QVLogLevel::INFO, "one");
    log(QVLogLevel::INFO, "two");
    phone->runUntilIdle();

    EXPECT_THAT(delegate->printed, ElementsAre(1U, 2U));
}

TEST_F(QVLoggerTest, ALineIsPrintedWhenTheDelegateIsGone) {
    auto delegate = std::make_shared<quorvane::testing::RecordingDelegate>();
    QVLogger::shared().delegate = delegate;
    setLogLevel(QVLogLevel::INFO);

    log(QVLogLevel::INFO, "alone");
    delegate.reset();

    EXPECT_THAT(messages(), ElementsAre("alone"));
}

TEST_F(QVLoggerTest, LoggingReturnsBeforeAnythingIsPrinted) {
    setLogLevel(QVLogLevel::DEBUG);

    log(QVLogLevel::ERROR, "later");

    EXPECT_THAT(phone->application().outputLines(), IsEmpty());
    EXPECT_THAT(messages(), ElementsAre("later"));
}

TEST_F(QVLoggerTest, TheLevelCountsAsItIsWhenTheLineIsWritten) {
    setLogLevel(QVLogLevel::NONE);
    log(QVLogLevel::DEBUG, "admitted late");
    setLogLevel(QVLogLevel::DEBUG);
    EXPECT_THAT(messages(), ElementsAre("admitted late"));

    log(QVLogLevel::DEBUG, "dropped late");
    setLogLevel(QVLogLevel::NONE);
    EXPECT_THAT(messages(), ElementsAre("admitted late"));
}

TEST_F(QVLoggerTest, LinesComeInTheOrderOfTheCalls) {
    setLogLevel(QVLogLevel::DEBUG);

    log(QVLogLevel::INFO, "one");
    log(QVLogLevel::ERROR, "two");
    log(QVLogLevel::DEBUG, "three");

    EXPECT_THAT(messages(), ElementsAre("one", "two", "three"));
}

TEST_F(QVLoggerTest, OtherThreadsLogIntoTheSameOrderedQueue) {
    setLogLevel(QVLogLevel::DEBUG);
    constexpr int threadCount = 4;
    constexpr int lineCount = 200;

    std::vector<std::thread> threads;
    for (int thread = 0; thread < threadCount; ++thread) {
        threads.emplace_back([thread] {
            for (int line = 0; line < lineCount; ++line) {
                QVLogger::shared().log(QVLogLevel::INFO, std::to_string(thread) + ":" + std::to_string(line));
            }
        });
    }
    for (std::thread& thread : threads) {
        thread.join();
    }

    std::vector<int> next(threadCount, 0);
    for (const std::string& message : messages()) {
        const auto thread = static_cast<std::size_t>(message[0] - '0');
        EXPECT_EQ(message, std::to_string(thread) + ":" + std::to_string(next[thread]++));
    }
    EXPECT_THAT(next, ::testing::Each(lineCount));
}

TEST_F(QVLoggerTest, AMessageThatIsExpensiveIsMadeOnlyWhereTheLevelAdmitsItThen) {
    setLogLevel(QVLogLevel::INFO);
    int made = 0;
    const auto make = [&made] {
        ++made;
        return std::string("expensive");
    };

    QVLogger::shared().log(QVLogLevel::INFO, make);
    QVLogger::shared().log(QVLogLevel::DEBUG, make);
    EXPECT_EQ(made, 0);
    EXPECT_THAT(messages(), ElementsAre("expensive"));
    EXPECT_EQ(made, 1);

    QVLogger::shared().log(QVLogLevel::DEBUG, make);
    setLogLevel(QVLogLevel::DEBUG);
    EXPECT_THAT(messages(), ElementsAre("expensive", "expensive"));
}

TEST_F(QVLoggerTest, MessagesOfBothKindsKeepTheirOrder) {
    setLogLevel(QVLogLevel::DEBUG);

    log(QVLogLevel::INFO, "one");
    QVLogger::shared().log(QVLogLevel::INFO, [] { return std::string("two"); });
    log(QVLogLevel::INFO, "three");

    EXPECT_THAT(messages(), ElementsAre("one", "two", "three"));
}

TEST_F(QVLoggerTest, WhatWaitsWhenAnotherPlatformIsInstalledIsNeverWritten) {
    setLogLevel(QVLogLevel::DEBUG);
    log(QVLogLevel::ERROR, "of the old world");

    phone.relaunch();

    EXPECT_THAT(messages(), IsEmpty());
}

} // namespace
} // namespace quorvane
