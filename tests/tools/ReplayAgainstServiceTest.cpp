#include <algorithm>
#include <chrono>
#include <csignal>
#include <memory>
#include <variant>

#include <gtest/gtest.h>

#include "Platform/Native/CurlTransport.h"
#include "sandbox/Sandbox.h"
#include "testing/PhonePlatform.h"
#include "tools/Failure.h"
#include "tools/Interruption.h"
#include "tools/Session.h"
#include "tools/demo/Ride.h"
#include "tools/demo/TrackedRide.h"
#include "tools/replay/ReplayRun.h"

namespace quorvane::tool {
namespace {

/// Replays the invented ride against a sandbox, over real sockets.
class ReplayAgainstServiceTest : public ::testing::Test {
protected:
    void SetUp() override {
        sandbox::SandboxOptions options;
        options.around = ride.coordinates();
        auto started = sandbox::Sandbox::start(std::move(options));
        ASSERT_EQ(started.index(), 0U);
        service = std::get<0>(std::move(started));
        global.dataPort = static_cast<std::uint16_t>(service->dataPort());
        global.identityPort = static_cast<std::uint16_t>(service->identityPort());
    }

    void addFault(const std::string& text) {
        const auto fault = sandbox::Fault::parse(text);
        ASSERT_TRUE(std::holds_alternative<sandbox::Fault>(fault)) << text;
        service->addFault(std::get<sandbox::Fault>(fault));
    }

    ReplaySummary track(TrackedRide& tracked, std::size_t preset = 0) {
        ReplayInput input;
        input.track = "the ride";
        input.options = presets().at(preset);
        input.recording = ride.beginning(std::chrono::hours(12));
        input.service = [this](platform::Platform& platform) {
            return std::make_unique<platform::native::CurlTransport>(
                platform.mainQueue(), platform::native::CurlOptions{loopbackPorts(global), {}});
        };
        ReplayReaders readers;
        readers.listener = listener != nullptr ? listener : &tracked;
        readers.delegate = tracked.delegate();
        return replay(input, readers, global);
    }

    const Ride ride = Ride::invented();
    std::unique_ptr<sandbox::Sandbox> service;
    GlobalOptions global;
    ReplayListener* listener = nullptr;
};

TEST_F(ReplayAgainstServiceTest, TheClockStandsHoweverLongTheServiceTakes) {
    TrackedRide quick;
    static_cast<void>(track(quick));
    addFault("/locations/find:delay=150ms:count=2");
    addFault("/token:delay=150ms:count=1");
    TrackedRide slow;

    static_cast<void>(track(slow));

    EXPECT_FALSE(slow.syncs().empty());
    EXPECT_EQ(slow.timeInFlight().count(), 0);
    EXPECT_EQ(slow.document(), quick.document()) << "what tracking does depends on virtual time only";
}

TEST_F(ReplayAgainstServiceTest, EachRequestIsTheServicesOwn) {
    TrackedRide tracked;

    const ReplaySummary summary = track(tracked, 1);

    EXPECT_GT(summary.usage.requests, 0U);
    EXPECT_EQ(service->requests().size(), summary.usage.requests);
}

TEST_F(ReplayAgainstServiceTest, AnAnswerThatFailsIsToldAsItCame) {
    addFault("/locations/find:status=503:count=1");
    addFault("/locations/find:invalid-json:count=1");
    TrackedRide tracked;

    static_cast<void>(track(tracked));

    ASSERT_GT(tracked.syncs().size(), 2U);
    EXPECT_EQ(tracked.syncs()[0].answer, 503);
    EXPECT_EQ(tracked.syncs()[0].status, QVStatus::ERROR_SERVER);
    EXPECT_EQ(tracked.syncs()[1].answer, 200);
    EXPECT_NE(tracked.syncs()[1].status, QVStatus::SUCCESS);
    EXPECT_EQ(tracked.syncs()[2].status, QVStatus::SUCCESS);
    EXPECT_EQ(tracked.calls(testing::RecordingDelegate::Kind::locationUpdated), tracked.syncs().size() - 2);
}

TEST_F(ReplayAgainstServiceTest, AFailedStopIsSentAgainWithThePresetThatDoesSo) {
    // The first sync is on the way, the second one at the first stop.
    addFault("/locations/find:status=500:skip=1:count=1");
    TrackedRide tracked;

    static_cast<void>(track(tracked, 1));

    ASSERT_GT(tracked.syncs().size(), 2U);
    EXPECT_EQ(tracked.syncs()[1].answer, 500);
    EXPECT_TRUE(tracked.syncs()[1].stopped);
    EXPECT_EQ(tracked.syncs()[2].location, tracked.syncs()[1].location);
    EXPECT_EQ(tracked.forced(SyncDecision::Force::replay), 1U);
}

TEST_F(ReplayAgainstServiceTest, ASignalEndsItInTheMiddle) {
    /// Somebody presses Ctrl-C at the twentieth fix.
    class Impatient : public ReplayListener {
    public:
        void recorded(const platform::Location&) override {
            if (++fixes == 20) {
                std::raise(SIGINT);
            }
        }
        void observed(platform::Date, const observed::Observation&) override {}
        int fixes = 0;
    } impatient;
    listener = &impatient;
    const Interruption interruption;
    TrackedRide tracked;

    EXPECT_THROW(static_cast<void>(track(tracked)), Interrupted);

    EXPECT_LT(impatient.fixes, 30);
}

/// Sees what the platform of a replay keeps, and may press Ctrl-C.
class Watcher : public ReplayListener {
public:
    void recorded(const platform::Location& fix) override { start = std::min(start, fix.timestamp); }
    void observed(platform::Date now, const observed::Observation&) override {
        last = now - start;
        testing::SimulatedPlatform& kept = dynamic_cast<testing::PhonePlatform&>(platform::current()).parts();
        mostRequests = std::max(mostRequests, kept.transport().requests().size());
        mostLines = std::max(mostLines, kept.application().outputLines().size());
        if (interruptsAt && last >= *interruptsAt) {
            interruptsAt.reset();
            std::raise(SIGINT);
        }
    }

    std::optional<platform::Date::duration> interruptsAt;
    platform::Date start = platform::Date::max();
    platform::Date::duration last{0};
    std::size_t mostRequests = 0;
    std::size_t mostLines = 0;
};

/// A recording with one fix in a long time.
class ReplayOfGapsTest : public ::testing::Test {
protected:
    ReplaySummary track(std::chrono::seconds gap, int fixes, std::size_t preset) {
        testing::Track sparse;
        for (int i = 0; i < fixes; ++i) {
            sparse.fixes.push_back({{46 + i * 0.1, 14.5}, 10, -1, testing::SimulatedClock::start + gap * i});
        }
        ReplayInput input;
        input.track = "the gaps";
        input.options = presets().at(preset);
        input.recording = std::make_shared<const testing::Track>(std::move(sparse));
        ReplayReaders readers;
        readers.listener = &watcher;
        readers.libraryLog = [this](std::string_view) { ++lines; };
        return replay(input, readers, global);
    }

    const Interruption interruption;
    GlobalOptions global;
    Watcher watcher;
    std::size_t lines = 0;
};

TEST_F(ReplayOfGapsTest, TrackingGoesOnInAGap) {
    const ReplaySummary summary = track(std::chrono::hours(7), 3, 0);

    EXPECT_EQ(summary.recorded, 3U);
    EXPECT_EQ(summary.duration, std::chrono::hours(14) + replayTail);
    EXPECT_EQ(summary.decisions.at("send"), 14U * 120) << "one each half a minute";
}

TEST_F(ReplayOfGapsTest, WhatIsKeptDoesNotGrowWithAGap) {
    global.logLevel = QVLogLevel::DEBUG;

    const ReplaySummary summary = track(std::chrono::minutes(50), 12, 0);

    EXPECT_GT(summary.usage.requests, 1000U);
    EXPECT_LE(watcher.mostRequests, 125U) << "half a minute's each, of an hour";
    EXPECT_GT(lines, 1000U);
    EXPECT_LT(watcher.mostLines, lines / 5);
}

TEST_F(ReplayOfGapsTest, ASignalEndsItInAGap) {
    watcher.interruptsAt = std::chrono::hours(5);

    EXPECT_THROW(static_cast<void>(track(std::chrono::hours(24), 2, 0)), Interrupted);

    EXPECT_LE(watcher.last, std::chrono::hours(6));
}

TEST_F(ReplayOfGapsTest, AGapMayBeThirtyOneDaysLongAndNoSecondLonger) {
    constexpr std::chrono::seconds longest = std::chrono::hours(31 * 24);

    const ReplaySummary summary = track(longest, 2, 2);

    EXPECT_EQ(summary.duration, longest + replayTail);
    try {
        static_cast<void>(track(longest + std::chrono::seconds(1), 2, 2));
        ADD_FAILURE() << "it was replayed";
    } catch (const Failure& failure) {
        EXPECT_STREQ(failure.what(),
                     "the gaps: The fix after 2026-03-01T12:00:00Z is of 2026-04-01T12:00:01Z, more "
                     "than 31 days later: the way ends before it.");
    }
}

} // namespace
} // namespace quorvane::tool
