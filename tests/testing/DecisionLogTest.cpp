#include <limits>
#include <memory>
#include <string>

#include <gtest/gtest.h>

#include "testing/DecisionLog.h"
#include "testing/SimulatedClock.h"

namespace quorvane::testing {
namespace {

using namespace std::chrono_literals;
using platform::Location;
using Format = DecisionLog::Format;

/// What a log writes, without the time that stands in front of each line.
class DecisionLogTest : public ::testing::Test {
protected:
    template <class Happening>
    std::string text(const Happening& happening) {
        const std::string line = written(Format::text, happening);
        EXPECT_TRUE(line.starts_with("2026-03-01T12:00:00Z      ")) << line;
        EXPECT_TRUE(line.ends_with('\n')) << line;
        return line.substr(26, line.size() - 27);
    }
    template <class Happening>
    std::string json(const Happening& happening) {
        static constexpr std::string_view intro = R"({"time":"2026-03-01T12:00:00Z","type":)";
        const std::string line = written(Format::jsonLines, happening);
        EXPECT_TRUE(line.starts_with(intro)) << line;
        EXPECT_TRUE(line.ends_with("}\n")) << line;
        return line.substr(intro.size(), line.size() - intro.size() - 2);
    }

    static observed::Fix fixOf(const Location& location) {
        observed::Fix fix;
        fix.location = location;
        fix.source = QVLocationSource::BACKGROUND_LOCATION;
        return fix;
    }

    const Location here{{46.0500004, -14.1234567}, 9.96, -1, SimulatedClock::start};
    SimulatedClock clock;

private:
    std::string written(Format format, const observed::Observation& observation) {
        std::string result;
        DecisionLog(clock, format, [&result](std::string_view line) { result += line; }).observe(observation);
        return result;
    }
    std::string written(Format format, const phone::Event& event) {
        std::string result;
        DecisionLog(clock, format, [&result](std::string_view line) { result += line; }).happened(event);
        return result;
    }
};

TEST_F(DecisionLogTest, AFixIsWrittenWithItsReasonAndTheNumbersThatItWasDecidedOn) {
    observed::Fix fix = fixOf(here);
    fix.stoppedAfter = true;
    fix.stop = StopDecision{true, false, true, 12.34, 150.06, SimulatedClock::start - 150s, false};
    fix.sync = SyncDecision{SyncDecision::Rule::send, SyncDecision::Force::justStopped, 30};

    EXPECT_EQ(
        text(observed::Observation(fix)),
        "fix         BACKGROUND_LOCATION 46.050000,-14.123457 within 10.0 m; moving -> stopped; 12.3 m and 150.1 s "
        "from the last move; sent in any case: justStopped, 30.0 s after the last");
    EXPECT_EQ(json(observed::Observation(fix)),
              R"("fix","source":"BACKGROUND_LOCATION","latitude":46.05,"longitude":-14.123457,"accuracy":10.0,)"
              R"("timestamp":"2026-03-01T12:00:00Z","outcome":"processed","stoppedBefore":false,"stoppedAfter":true,)"
              R"("detecting":true,"lastMovedAt":"2026-03-01T11:57:30Z","distance":12.3,"duration":150.1,"moved":false,)"
              R"("sync":"send","force":"justStopped","lastSyncInterval":30.0)");
}

TEST_F(DecisionLogTest, AFixThatIsNotSentSaysByWhichRule) {
    observed::Fix fix = fixOf(here);
    fix.stop = StopDecision{true, false, false, 80, 30, SimulatedClock::start, true};
    fix.sync = SyncDecision{SyncDecision::Rule::desiredSyncInterval, SyncDecision::Force::none, 5};

    EXPECT_EQ(text(observed::Observation(fix)),
              "fix         BACKGROUND_LOCATION 46.050000,-14.123457 within 10.0 m; moving -> moving; 80.0 m and 30.0 s "
              "from the last move, which this is; not sent: desiredSyncInterval, 5.0 s after the last");
}

TEST_F(DecisionLogTest, WithoutStopDetectionThereAreNoNumbersOfIt) {
    observed::Fix fix = fixOf(here);
    fix.stop = StopDecision{};
    fix.sync = SyncDecision{};

    EXPECT_EQ(text(observed::Observation(fix)),
              "fix         BACKGROUND_LOCATION 46.050000,-14.123457 within 10.0 m; moving -> moving; sent, 0.0 s after "
              "the last");
    EXPECT_NE(json(observed::Observation(fix)).find(R"("detecting":false,"sync":"send")"), std::string::npos);
}

TEST_F(DecisionLogTest, AFixThatIsDroppedSaysWhy) {
    observed::Fix fix = fixOf(here);
    fix.outcome = observed::Fix::Outcome::old;
    fix.stop = StopDecision{true, true, false, platform::maximumDistance, 0, SimulatedClock::start + 1h};
    EXPECT_EQ(text(observed::Observation(fix)),
              "fix         BACKGROUND_LOCATION 46.050000,-14.123457 within 10.0 m; dropped: old, the last move was at "
              "2026-03-01T13:00:00Z, the fix is of 2026-03-01T12:00:00Z; moving");
    EXPECT_NE(json(observed::Observation(fix))
                  .find(R"("outcome":"old","stoppedBefore":false,"stoppedAfter":false,"detecting":true,"lastMovedAt":)"
                        R"("2026-03-01T13:00:00Z")"),
              std::string::npos);

    fix = fixOf({{46, 14}, 1500});
    fix.outcome = observed::Fix::Outcome::inaccurate;
    fix.stoppedBefore = true;
    EXPECT_EQ(text(observed::Observation(fix)),
              "fix         BACKGROUND_LOCATION 46.000000,14.000000 within 1500.0 m; dropped: inaccurate; stopped");
}

TEST_F(DecisionLogTest, AbsurdNumbersAreWrittenAndStayJSON) {
    constexpr double none = std::numeric_limits<double>::quiet_NaN();
    observed::Fix fix = fixOf({{none, -1e300}, std::numeric_limits<double>::infinity()});
    fix.outcome = observed::Fix::Outcome::invalid;

    EXPECT_EQ(text(observed::Observation(fix)),
              "fix         BACKGROUND_LOCATION nan,-1.000000e+300 within inf m; dropped: invalid; moving");
    EXPECT_NE(json(observed::Observation(fix)).find(R"("latitude":null,"longitude":-1e+300,"accuracy":null)"),
              std::string::npos)
        << json(observed::Observation(fix));
    EXPECT_NE(text(observed::Observation(fixOf({{-0.0, -0.0000001}, -0.01}))).find("0.000000,0.000000 within 0.0 m"),
              std::string::npos);
}

TEST_F(DecisionLogTest, TrackingItsTimerAndItsServicesAreWritten) {
    const observed::Observation off = observed::Tracking{false, observed::Tracking::Cause::stopDate};
    EXPECT_EQ(text(off), "tracking    off, by stopDate");
    EXPECT_EQ(json(off), R"("tracking","on":false,"cause":"stopDate")");
    const observed::Observation fired = observed::UpdateTimer{observed::UpdateTimer::Change::fired, 30};
    EXPECT_EQ(text(fired), "timer       fired, every 30 s");
    EXPECT_EQ(json(fired), R"("timer","change":"fired","interval":30)");
    const observed::Observation asked = observed::LocationRequest{false, 100};
    EXPECT_EQ(text(asked), "request     a location, by the host, accuracy 100");
    EXPECT_EQ(json(asked), R"("request","byTimer":false,"desiredAccuracy":100.0)");
    EXPECT_EQ(text(observed::Observation(observed::LocationRequest{true})), "request     a location, by the timer");
    const observed::Observation visits = observed::Service{observed::Service::Kind::visits, true};
    EXPECT_EQ(text(visits), "service     visits on");
    EXPECT_EQ(json(visits), R"("service","service":"visits","on":true)");
}

TEST_F(DecisionLogTest, GeofencesGrantsAndShutdownsAreWritten) {
    const observed::Observation fence = observed::Geofence{true, {"qv-visit-region_A", {46, 14.5}, 200}};
    EXPECT_EQ(text(fence), "geofence    placed 46.000000,14.500000 radius 200.0 m");
    EXPECT_EQ(json(fence), R"("geofence","placed":true,"identifier":"qv-visit-region_A","latitude":46.0,)"
                           R"("longitude":14.5,"radius":200.0)");
    const observed::Observation grant = observed::BackgroundGrant{observed::BackgroundGrant::Change::begun, 7, 170};
    EXPECT_EQ(text(grant), "grant       begun, for 170.0 s");
    EXPECT_EQ(json(grant), R"("grant","change":"begun","task":7,"duration":170.0)");
    EXPECT_EQ(text(observed::Observation(observed::BackgroundGrant{observed::BackgroundGrant::Change::ended, 7})),
              "grant       ended");
    const observed::Observation shutdown = observed::Shutdown{observed::Shutdown::Change::scheduled, 10};
    EXPECT_EQ(text(shutdown), "shutdown    scheduled, in 10.0 s");
    EXPECT_EQ(json(shutdown), R"("shutdown","change":"scheduled","delay":10.0)");
    EXPECT_EQ(text(observed::Observation(observed::Shutdown{observed::Shutdown::Change::done})), "shutdown    done");
}

TEST_F(DecisionLogTest, WhatIsSentAndWhatComesBackIsWritten) {
    observed::Send send{observed::Send::Change::begun, here, true, QVLocationSource::VISIT_ARRIVAL, true};
    EXPECT_EQ(text(observed::Observation(send)),
              "send        begun, VISIT_ARRIVAL 46.050000,-14.123457 within 10.0 m; stopped, replayed");
    send.change = observed::Send::Change::ended;
    send.status = QVStatus::ERROR_SERVER;
    EXPECT_EQ(text(observed::Observation(send)),
              "send        ended, VISIT_ARRIVAL 46.050000,-14.123457 within 10.0 m; "
              "stopped, replayed; ERROR_SERVER, exits not allowed");
    EXPECT_EQ(json(observed::Observation(send)),
              R"("send","change":"ended","source":"VISIT_ARRIVAL","latitude":46.05,"longitude":-14.123457,)"
              R"("accuracy":10.0,"stopped":true,"replayed":true,"status":"ERROR_SERVER","canExit":false)");
    const observed::Observation kept = observed::FailedStop{false, here};
    EXPECT_EQ(text(kept), "stop        kept for later 46.050000,-14.123457 within 10.0 m");
    EXPECT_EQ(json(kept), R"("failedStop","replayed":false,"latitude":46.05,"longitude":-14.123457,"accuracy":10.0)");
    const observed::Observation answer = observed::Answer{QVStatus::ERROR_LOCATION, 2, true};
    EXPECT_EQ(text(answer), "answer      ERROR_LOCATION to 2 waiting, too late");
    EXPECT_EQ(json(answer), R"("answer","status":"ERROR_LOCATION","callers":2,"timedOut":true)");
    const observed::Observation failure = observed::Failure{{platform::LocationError::Kind::unknown, "No signal."}};
    EXPECT_EQ(text(failure), "failure     unknown: No signal.");
    EXPECT_EQ(json(failure), R"("failure","kind":"unknown","message":"No signal.")");
}

TEST_F(DecisionLogTest, ASyncIsWrittenWithItsPlaceAndItsEvents) {
    observed::Sync sync{here, true, QVLocationSource::VISIT_ARRIVAL};
    sync.fences = 2;
    EXPECT_EQ(text(observed::Observation(sync)), "sync        SUCCESS; 2 fences near, at no place");
    sync.place = std::make_shared<QVPlace>();
    sync.place->_id = "p1";
    sync.place->name = "Caf\xC3\xA9 \"A\"";
    for (const QVEventType type : {QVEventType::USER_STOPPED_TRAVELING, QVEventType::USER_ENTERED_PLACE}) {
        sync.events.push_back(std::make_shared<QVEvent>());
        sync.events.back()->type = type;
    }

    EXPECT_EQ(
        text(observed::Observation(sync)),
        "sync        SUCCESS; 2 fences near, at Caf\xC3\xA9 \"A\" (p1); USER_STOPPED_TRAVELING; USER_ENTERED_PLACE");
    EXPECT_EQ(
        json(observed::Observation(sync)),
        "\"sync\",\"status\":\"SUCCESS\",\"source\":\"VISIT_ARRIVAL\",\"latitude\":46.05,\"longitude\":-14.123457,"
        "\"accuracy\":10.0,\"stopped\":true,\"replayed\":false,\"fences\":2,\"placeId\":\"p1\",\"placeName\":"
        "\"Caf\xC3\xA9 \\\"A\\\"\",\"events\":[\"USER_STOPPED_TRAVELING\",\"USER_ENTERED_PLACE\"]");

    sync.status = QVStatus::ERROR_NETWORK;
    sync.events.clear();
    EXPECT_EQ(text(observed::Observation(sync)), "sync        ERROR_NETWORK");
}

TEST_F(DecisionLogTest, OtherPeoplesTextsStayOnOneLineAndMoveNoCursor) {
    observed::Sync sync{here, true, QVLocationSource::VISIT_ARRIVAL};
    sync.place = std::make_shared<QVPlace>();
    sync.place->_id = "p\r1";
    sync.place->name = "Caf\xC3\xA9\n2026-03-01T12:00:01Z      sync        \x1B[2J\xE2\x80\xAE!";
    EXPECT_EQ(text(observed::Observation(sync)),
              "sync        SUCCESS; 0 fences near, at Caf\xC3\xA9?2026-03-01T12:00:01Z"
              "      sync        ?[2J?! (p?1)");
    EXPECT_EQ(
        text(observed::Observation(observed::Failure{{platform::LocationError::Kind::unknown, "No\nsignal\x7F"}})),
        "failure     unknown: No?signal?");
    EXPECT_EQ(text(phone::Event(phone::Response{3, "GET", "/find?q=\t\xC3", 503})),
              "http        503 to GET /find?q=??");
}

TEST_F(DecisionLogTest, WhatHappensOnThePhoneIsWritten) {
    const phone::Event state = phone::StateChange{phone::AppState::suspended, phone::AppState::background};
    EXPECT_EQ(text(state), "app         suspended -> background");
    EXPECT_EQ(json(state), R"("app","before":"suspended","after":"background")");
    EXPECT_EQ(text(phone::Event(phone::SignalChange{false})), "signal      lost");
    EXPECT_EQ(json(phone::Event(phone::SignalChange{false})), R"("signal","found":false)");
    EXPECT_EQ(text(phone::Event(phone::AccuracyChange{70})), "accuracy    70.0 m whatever the track says");
    EXPECT_EQ(json(phone::Event(phone::AccuracyChange{70})), R"("accuracy","metres":70.0)");
    EXPECT_EQ(text(phone::Event(phone::AccuracyChange{})), "accuracy    as the track says");
    const phone::Event denied = phone::AuthorizationChange{platform::LocationAuthorization::denied};
    EXPECT_EQ(text(denied), "permission  denied");
    EXPECT_EQ(json(denied), R"("permission","status":"denied")");
    const phone::Event set = phone::ClockChange{SimulatedClock::start, SimulatedClock::start - 1h};
    EXPECT_EQ(text(set), "clock       set from 2026-03-01T12:00:00Z to 2026-03-01T11:00:00Z");
    EXPECT_EQ(json(set), R"("clock","before":"2026-03-01T12:00:00Z","after":"2026-03-01T11:00:00Z")");
}

TEST_F(DecisionLogTest, RequestsAreWrittenAndLongOnesCutShortForReaders) {
    const std::string target = "/find?q=" + std::string(80, 'x');
    const phone::Event request = phone::Request{3, "GET", target, 120};
    EXPECT_EQ(text(request), "http        GET /find?q=" + std::string(72, 'x') + "..., 120 bytes");
    EXPECT_EQ(json(request), R"("httpRequest","id":3,"method":"GET","target":")" + target + R"(","bytes":120)");
    EXPECT_EQ(text(phone::Event(phone::Response{3, "GET", "/find", 503})), "http        503 to GET /find");
    EXPECT_EQ(json(phone::Event(phone::Response{3, "GET", "/find", 503})),
              R"("httpResponse","id":3,"method":"GET","target":"/find","status":503)");
    EXPECT_EQ(text(phone::Event(phone::Response{3, "GET", "/find", {}})), "http        no answer to GET /find");
    EXPECT_EQ(json(phone::Event(phone::Response{3, "GET", "/find", {}})),
              R"("httpResponse","id":3,"method":"GET","target":"/find")");
}

TEST_F(DecisionLogTest, TheTimeIsTheClocksToTheMillisecond) {
    clock.moveForward(1250ms);
    std::string result;
    DecisionLog log(clock, Format::text, [&result](std::string_view line) { result += line; });
    log.happened(phone::SignalChange{true});

    EXPECT_EQ(result, "2026-03-01T12:00:01.250Z  signal      found\n");
}

TEST_F(DecisionLogTest, ASummarySaysWhatHappenedAndWhatItCost) {
    std::string result;
    DecisionLog log(clock, Format::text, [&result](std::string_view line) { result = line; });
    observed::Fix fix = fixOf(here);
    fix.stoppedAfter = true;
    log.observe(fix);
    fix.stoppedBefore = true;
    fix.outcome = observed::Fix::Outcome::old;
    log.observe(fix);
    observed::Sync sync;
    sync.events.resize(2, std::make_shared<QVEvent>());
    log.observe(sync);
    sync = {};
    sync.status = QVStatus::ERROR_SERVER;
    log.observe(sync);
    log.observe(observed::Geofence{true, {}});
    log.observe(observed::Geofence{false, {}});
    log.observe(observed::BackgroundGrant{observed::BackgroundGrant::Change::begun, 1, 170});
    log.observe(observed::BackgroundGrant{observed::BackgroundGrant::Change::ended, 1});

    EXPECT_EQ(log.summary(), (TrackingSummary{2, 1, 1, 1, 1, 2, 1, 1}));
    log.summarize({1, 2, 3, 4, 5, 6500ms, 7, 800});
    EXPECT_EQ(result,
              "2026-03-01T12:00:00Z      summary     2 fixes, 1 of them dropped; 1 stops; 1 syncs, 1 failed; 2 "
              "events; 1 geofences; 1 grants; 1 launches, 2 wake-ups, 3 by timers; 4 requests for a fix, 5 fixes "
              "given, receiver on for 6.5 s; 7 requests, 800 bytes\n");

    DecisionLog forPrograms(clock, Format::jsonLines, [&result](std::string_view line) { result = line; });
    forPrograms.summarize({1, 2, 3, 4, 5, 6500ms, 7, 800});
    EXPECT_EQ(result,
              R"({"time":"2026-03-01T12:00:00Z","type":"summary","fixes":0,"dropped":0,"stops":0,"syncs":0,)"
              R"("failedSyncs":0,"events":0,"geofences":0,"grants":0,"launches":1,"wakeUps":2,"timerWakeUps":3,)"
              R"("fixRequests":4,"fixesGiven":5,"receiverSeconds":6.5,"requests":7,"bytesSent":800})"
              "\n");
}

} // namespace
} // namespace quorvane::testing
