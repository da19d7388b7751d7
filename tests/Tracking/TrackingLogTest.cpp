#include "Device/QVUtils.h"
#include "Tracking/TrackingTest.h"

namespace quorvane {
namespace {

using ::testing::Contains;
using ::testing::ElementsAre;
using ::testing::IsEmpty;
using ::testing::Not;
using ::testing::StartsWith;

/// The lines of the decisions, letter by letter.
class TrackingLogTest : public TrackingTest {
protected:
    TrackingLogTest() {
        QVSettings::setTrackingOptions(*QuorvaneTrackingOptions::CONTINUOUS());
        setLogLevel(QVLogLevel::DEBUG);
    }

    /// What is logged by a fix, but for the lines that applying the options adds.
    [[nodiscard]] std::vector<std::string> linesOf(const platform::Location& fix,
                                                   Source source = Source::BACKGROUND_LOCATION) {
        settle();
        phone->application().clearOutput();
        handle(fix, source);
        auto lines = messages();
        std::erase_if(lines, [](const std::string& line) { return line.starts_with("    updating tracking:"); });
        return lines;
    }

    static constexpr const char* nobody =
        "Calling completion handlers | handlers.count = 0; status = SUCCESS; location = 46.0,14.5 +/- 10.0 m at "
        "2026-03-01 12:00:00 +0000";
};

TEST_F(TrackingLogTest, AStopIsCalculatedInSixLines) {
    setSent(1s);

    EXPECT_THAT(
        linesOf(fixAt(0, 0)),
        ElementsAre("    calculating stopped |\n    \tstopped = false;\n    \tdistance = 0.0;\n    \tduration = 0.0;"
                    "\n    \tlocation.timestamp = 2026-03-01 12:00:00 +0000;\n    \tlastMovedAt = 2026-03-01 "
                    "12:00:00 +0000"));
    EXPECT_THAT(
        linesOf(fixAt(0, 150.5)),
        Contains("    calculating stopped |\n    \tstopped = true;\n    \tdistance = 0.0;\n    \tduration = 150.5;"
                 "\n    \tlocation.timestamp = 2026-03-01 12:02:30 +0000;\n    \tlastMovedAt = 2026-03-01 12:00:00"
                 " +0000"));
}

TEST_F(TrackingLogTest, WithStopDetectionOffNothingIsCalculated) {
    QVSettings::setTrackingOptions(QuorvaneTrackingOptions());
    setSent(1s);

    EXPECT_THAT(linesOf(fixAt(0)), Not(Contains(StartsWith("    calculating"))));
}

TEST_F(TrackingLogTest, AnOldFixIsSkippedInOneLine) {
    handle(fixAt(0, 60));

    EXPECT_THAT(linesOf(fixAt(0, 10)),
                ElementsAre("Skipping location: old | lastMovedAt = 2026-03-01 12:01:00 +0000; location.timestamp = "
                            "2026-03-01 12:00:10 +0000"));
}

TEST_F(TrackingLogTest, AnInvalidFixIsNamedWhileVerbose) {
    const platform::Location invalid{{0, 14.5}, 10, 5, noon};
    EXPECT_THAT(linesOf(invalid), IsEmpty());

    manager().verbose = true;
    EXPECT_THAT(
        linesOf(invalid, Source::GEOFENCE_DWELL),
        ElementsAre("Invalid location | source = GEOFENCE_DWELL; location = 0.0,14.5 +/- 10.0 m at 2026-03-01 "
                    "12:00:00 +0000",
                    "Calling completion handlers | handlers.count = 0; status = ERROR_LOCATION; location = nil"));
}

TEST_F(TrackingLogTest, ASourceThatIsNoCaseIsUnknown) {
    manager().verbose = true;

    EXPECT_THAT(linesOf({{0, 14.5}, 10, 5, noon}, static_cast<Source>(42)),
                Contains(StartsWith("Invalid location | source = UNKNOWN; ")));
}

TEST_F(TrackingLogTest, AnInaccurateFixIsNamedWhileVerbose) {
    setStopped(true);
    EXPECT_THAT(linesOf(fixAt(0, 0, 1500)), IsEmpty());

    manager().verbose = true;
    EXPECT_THAT(linesOf(fixAt(0, 0, 1500)), ElementsAre("Skipping location: inaccurate | accuracy = 1500.0"));
}

TEST_F(TrackingLogTest, ASendThatIsScheduledIsNamedWhileVerbose) {
    manager().verbose = true;

    const auto lines = linesOf(fixAt(0));

    EXPECT_THAT(lines, ElementsAre(StartsWith("    calculating stopped |"), nobody, "Scheduling location send"));
}

TEST_F(TrackingLogTest, AReplayIsNamedWhileVerbose) {
    QuorvaneTrackingOptions options = *QuorvaneTrackingOptions::CONTINUOUS();
    options.replay = QuorvaneTrackingOptions::Replay::STOPS;
    QVSettings::setTrackingOptions(options);
    preferences().setDictionary("quorvane_last_failed_stopped_location", QVUtils::fromLocation(fixAt(0, -60)));
    manager().verbose = true;

    EXPECT_THAT(linesOf(fixAt(0)),
                Contains("Replaying location | location = 46.0,14.5 +/- 10.0 m at 2026-03-01 11:59:00 +0000; stopped = "
                         "true"));
}

TEST_F(TrackingLogTest, TheSyncIntervalIsNamedWhileVerbose) {
    setSent(1500ms);
    EXPECT_THAT(linesOf(fixAt(0)), ElementsAre(StartsWith("    calculating stopped |")));

    manager().verbose = true;
    EXPECT_THAT(linesOf(fixAt(0)),
                Contains("    skipping sync: desired sync interval |\n    \tdesiredSyncInterval = 20;\n    "
                         "\tlastSyncInterval = 1.5"));
}

TEST_F(TrackingLogTest, AStopThatWasSentIsNamedWhileVerbose) {
    QuorvaneTrackingOptions options = *QuorvaneTrackingOptions::CONTINUOUS();
    options.desiredStoppedUpdateInterval = 0;
    QVSettings::setTrackingOptions(options);
    handle(fixAt(0));
    handle(fixAt(0, 150));
    EXPECT_THAT(linesOf(fixAt(0, 300)), ElementsAre(StartsWith("    calculating stopped |")));

    manager().verbose = true;
    EXPECT_THAT(linesOf(fixAt(0, 300)), Contains("Skipping sync: already stopped | stopped = true; wasStopped = true"));
}

} // namespace
} // namespace quorvane
