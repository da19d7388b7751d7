#include "testing/DecisionText.h"

#include <array>
#include <charconv>
#include <chrono>
#include <cmath>
#include <string_view>
#include <variant>

#include "testing/DateText.h"
#include "testing/DecisionNames.h"
#include "testing/TrackText.h"

namespace quorvane::testing {
namespace {

/// @p value with that many decimals; with an exponent where it is absurd.
std::string fixed(double value, int decimals) {
    constexpr double largest = 1e12;
    std::array<char, 48> text{};
    const double shown = value == 0 ? 0.0 : value;
    const auto end = std::abs(shown) < largest
                         ? std::to_chars(text.begin(), text.end(), shown, std::chars_format::fixed, decimals).ptr
                         : std::to_chars(text.begin(), text.end(), shown, std::chars_format::scientific, decimals).ptr;
    const std::string_view result(text.data(), static_cast<std::size_t>(end - text.begin()));
    const bool isNothing = result.find_first_not_of("-0.") == std::string_view::npos;
    return std::string(isNothing && result.starts_with('-') ? result.substr(1) : result);
}

std::string metres(double value) {
    return fixed(value, 1) + " m";
}

std::string seconds(double value) {
    return fixed(value, 1) + " s";
}

std::string at(const platform::Coordinate& coordinate) {
    return fixed(coordinate.latitude, 6) + ',' + fixed(coordinate.longitude, 6);
}

std::string at(const platform::Location& location) {
    return at(location.coordinate) + " within " + metres(location.horizontalAccuracy);
}

std::string_view stopped(bool is) {
    return is ? "stopped" : "moving";
}

std::string text(std::string_view view) {
    return std::string(view);
}

/// What is written behind the time: the subject, and the sentence about it.
struct Words {
    std::string_view subject;
    std::string sentence;
};

std::string stopWords(const StopDecision& stop) {
    if (!stop.isDetecting) {
        return "";
    }
    return "; " + metres(stop.distance) + " and " + seconds(stop.duration) + " from the last move" +
           (stop.moved ? ", which this is" : "");
}

std::string syncWords(const SyncDecision& sync) {
    std::string words = sync.rule == SyncDecision::Rule::send ? "; sent" : "; not sent: " + text(nameOf(sync.rule));
    if (sync.force != SyncDecision::Force::none) {
        words += " in any case: " + text(nameOf(sync.force));
    }
    return words + ", " + seconds(sync.lastSyncInterval) + " after the last";
}

Words words(const observed::Fix& fix) {
    std::string sentence = text(nameOf(fix.source)) + ' ' + at(fix.location);
    if (fix.outcome != observed::Fix::Outcome::processed) {
        sentence += "; dropped: " + text(nameOf(fix.outcome));
        sentence += fix.stop && fix.stop->isOld ? ", the last move was at " + dateText(fix.stop->lastMovedAt) +
                                                      ", the fix is of " + dateText(fix.location.timestamp)
                                                : "";
        return {"fix", sentence + "; " + text(stopped(fix.stoppedBefore))};
    }
    sentence += "; " + text(stopped(fix.stoppedBefore)) + " -> " + text(stopped(fix.stoppedAfter));
    return {"fix", sentence + (fix.stop ? stopWords(*fix.stop) : "") + (fix.sync ? syncWords(*fix.sync) : "")};
}

Words words(const observed::Tracking& tracking) {
    return {"tracking", text(tracking.isOn ? "on" : "off") + ", by " + text(nameOf(tracking.cause))};
}

Words words(const observed::UpdateTimer& timer) {
    return {"timer", text(nameOf(timer.change)) + ", every " + std::to_string(timer.interval) + " s"};
}

Words words(const observed::LocationRequest& request) {
    return {"request", "a location, by the " + text(request.byTimer ? "timer" : "host") +
                           (request.accuracy ? ", accuracy " + fixed(*request.accuracy, 0) : "")};
}

Words words(const observed::Service& service) {
    return {"service", text(nameOf(service.kind)) + (service.isRunning ? " on" : " off")};
}

Words words(const observed::Geofence& fence) {
    return {"geofence", text(fence.isPlaced ? "placed " : "removed ") + at(fence.region.center) + " radius " +
                            metres(fence.region.radius)};
}

Words words(const observed::BackgroundGrant& grant) {
    const std::string duration = grant.duration != 0 ? ", for " + seconds(grant.duration) : "";
    return {"grant", text(nameOf(grant.change)) + duration};
}

Words words(const observed::Shutdown& shutdown) {
    const bool isScheduled = shutdown.change == observed::Shutdown::Change::scheduled;
    return {"shutdown", text(nameOf(shutdown.change)) + (isScheduled ? ", in " + seconds(shutdown.delay) : "")};
}

Words words(const observed::Answer& answer) {
    return {"answer", text(nameOf(answer.status)) + " to " + std::to_string(answer.callers) + " waiting" +
                          (answer.timedOut ? ", too late" : "")};
}

Words words(const observed::Send& send) {
    std::string sentence = text(nameOf(send.change)) + ", " + text(nameOf(send.source)) + ' ' + at(send.location) +
                           "; " + text(stopped(send.stopped)) + (send.replayed ? ", replayed" : "");
    if (send.change == observed::Send::Change::ended) {
        sentence += "; " + text(nameOf(send.status)) + (send.canExit ? ", exits allowed" : ", exits not allowed");
    }
    return {"send", sentence};
}

Words words(const observed::FailedStop& stop) {
    return {"stop", text(stop.isReplayed ? "sent again " : "kept for later ") + at(stop.location)};
}

Words words(const observed::Sync& sync) {
    std::string sentence = text(nameOf(sync.status));
    if (sync.status == QVStatus::SUCCESS) {
        sentence += "; " + std::to_string(sync.fences) + " fences near";
        sentence += sync.place ? ", at " + sync.place->name + " (" + sync.place->_id + ')' : ", at no place";
    }
    for (const std::shared_ptr<QVEvent>& event : sync.events) {
        sentence += "; " + text(nameOf(event->type));
    }
    return {"sync", sentence};
}

Words words(const observed::Failure& failure) {
    return {"failure", text(nameOf(failure.error.kind)) + ": " + failure.error.message};
}

Words words(const phone::StateChange& change) {
    return {"app", text(nameOf(change.before)) + " -> " + text(nameOf(change.after))};
}

Words words(const phone::SignalChange& change) {
    return {"signal", change.hasSignal ? "found" : "lost"};
}

Words words(const phone::AccuracyChange& change) {
    return {"accuracy", change.metres ? metres(*change.metres) + " whatever the track says" : "as the track says"};
}

Words words(const phone::AuthorizationChange& change) {
    return {"permission", text(nameOf(change.status))};
}

Words words(const phone::ClockChange& change) {
    return {"clock", "set from " + dateText(change.before) + " to " + dateText(change.after)};
}

std::string requestLine(const std::string& method, const std::string& target) {
    constexpr std::size_t longest = 80;
    return method + ' ' + target.substr(0, longest) + (target.size() > longest ? "..." : "");
}

Words words(const phone::Request& request) {
    return {"http", requestLine(request.method, request.target) + ", " + std::to_string(request.bytes) + " bytes"};
}

Words words(const phone::Response& response) {
    return {"http", (response.status ? std::to_string(*response.status) : text("no answer")) + " to " +
                        requestLine(response.method, response.target)};
}

std::string lineOf(platform::Date time, const Words& words) {
    constexpr std::size_t timeWidth = 26;
    constexpr std::size_t subjectWidth = 12;
    std::string line = dateText(time);
    line.resize(std::max(line.size() + 1, timeWidth), ' ');
    line += words.subject;
    line.append(subjectWidth - words.subject.size(), ' ');
    // Names and messages are other people's.
    return line + printable(words.sentence) + '\n';
}

} // namespace

std::string decisionText(platform::Date time, const observed::Observation& observation) {
    return lineOf(time, std::visit([](const auto& one) { return words(one); }, observation));
}

std::string decisionText(platform::Date time, const phone::Event& event) {
    return lineOf(time, std::visit([](const auto& one) { return words(one); }, event));
}

std::string decisionText(platform::Date time, const SummaryRecord& record) {
    const TrackingSummary& did = record.summary;
    const phone::Usage& used = record.usage;
    const auto count = [](std::size_t number, std::string_view what) {
        return std::to_string(number) + ' ' + text(what);
    };
    return lineOf(
        time, {"summary",
               count(did.fixes, "fixes, ") + count(did.dropped, "of them dropped; ") + count(did.stops, "stops; ") +
                   count(did.syncs, "syncs, ") + count(did.failedSyncs, "failed; ") + count(did.events, "events; ") +
                   count(did.geofences, "geofences; ") + count(did.backgroundGrants, "grants; ") +
                   count(used.launches, "launches, ") + count(used.wakeUps, "wake-ups, ") +
                   count(used.timerWakeUps, "by timers; ") + count(used.fixRequests, "requests for a fix, ") +
                   count(used.fixes, "fixes given, receiver on for ") +
                   seconds(std::chrono::duration<double>(used.receiverTime).count()) + "; " +
                   count(used.requests, "requests, ") + count(used.bytesSent, "bytes")});
}

} // namespace quorvane::testing
