#include <gtest/gtest.h>

#include "testing/RecordingDelegate.h"
#include "testing/SimulatedClock.h"

namespace quorvane::testing {
namespace {

using Kind = RecordingDelegate::Kind;

const platform::Location here{{46.05, 14.5}, 10, -1, SimulatedClock::start};

TEST(RecordingDelegateTest, EachCallIsALineOfText) {
    RecordingDelegate delegate;

    delegate.onLog("starting");
    delegate.onError(QVStatus::ERROR_NETWORK);
    delegate.onClientLocationUpdated(here, true, QVLocationSource::GEOFENCE_EXIT);
    delegate.onClientLocationUpdated(here, false, QVLocationSource::MANUAL_LOCATION);
    delegate.onLocationUpdated(here, nullptr);
    delegate.onEventsReceived({nullptr}, nullptr);
    delegate.onEventsReceived({}, nullptr);

    EXPECT_EQ(delegate.texts(), (std::vector<std::string>{
                                    "onLog starting",
                                    "onError ERROR_NETWORK",
                                    "onClientLocationUpdated 46.05,14.5 2026-03-01T12:00:00Z stopped GEOFENCE_EXIT",
                                    "onClientLocationUpdated 46.05,14.5 2026-03-01T12:00:00Z moving MANUAL_LOCATION",
                                    "onLocationUpdated 46.05,14.5 2026-03-01T12:00:00Z no user",
                                    "onEventsReceived 1 event, no user",
                                    "onEventsReceived 0 events, no user",
                                }));
}

TEST(RecordingDelegateTest, CallsCanBeAskedForByKind) {
    RecordingDelegate delegate;
    delegate.onLog("one");
    delegate.onError(QVStatus::ERROR_SERVER);
    delegate.onLog("two");
    delegate.onLocationUpdated(here, nullptr);

    EXPECT_EQ(delegate.logLines(), (std::vector<std::string>{"one", "two"}));
    EXPECT_EQ(delegate.errors(), std::vector<QVStatus>{QVStatus::ERROR_SERVER});
    ASSERT_EQ(delegate.calls(Kind::locationUpdated).size(), 1U);
    EXPECT_EQ(delegate.calls(Kind::locationUpdated)[0].location, here);
    EXPECT_EQ(delegate.calls().size(), 4U);
    delegate.forget();
    EXPECT_TRUE(delegate.calls().empty());
}

} // namespace
} // namespace quorvane::testing
