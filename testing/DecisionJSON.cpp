#include <array>
#include <chrono>
#include <cmath>
#include <string_view>
#include <variant>

#include "JSON/Writer.h"
#include "testing/DateText.h"
#include "testing/DecisionNames.h"
#include "testing/DecisionText.h"

namespace quorvane::testing {
namespace {

using json::Writer;

/// Rounded to that many decimals, where it is not absurd.
double rounded(double value, int decimals) {
    constexpr double largest = 1e9;
    static constexpr std::array<double, 7> powers{1, 10, 100, 1e3, 1e4, 1e5, 1e6};
    const double power = powers.at(static_cast<std::size_t>(decimals));
    const double result = std::abs(value) < largest ? std::round(value * power) / power : value;
    return result == 0 ? 0.0 : result;
}

/// An object that is being written: its members in order.
class Members {
public:
    explicit Members(Writer& theWriter) : writer(theWriter), step(theWriter) {}

    void text(std::string_view key, std::string_view value) {
        step.member(key);
        writer.text(value);
    }
    template <class Value>
    void name(std::string_view key, Value value) {
        text(key, nameOf(value));
    }
    void count(std::string_view key, std::uint64_t value) {
        step.member(key);
        writer.integer(static_cast<std::int64_t>(value));
    }
    void flag(std::string_view key, bool value) {
        step.member(key);
        writer.boolean(value);
    }
    /// Metres or seconds.
    void measure(std::string_view key, double value) {
        step.member(key);
        writer.number(rounded(value, 1));
    }
    void place(const platform::Coordinate& coordinate) {
        step.member("latitude");
        writer.number(rounded(coordinate.latitude, 6));
        step.member("longitude");
        writer.number(rounded(coordinate.longitude, 6));
    }
    void place(const platform::Location& location) {
        place(location.coordinate);
        measure("accuracy", location.horizontalAccuracy);
    }
    void moment(std::string_view key, platform::Date date) { text(key, dateText(date)); }
    template <class Value, class Write>
    void list(std::string_view key, const std::vector<Value>& values, Write write) {
        step.member(key);
        writer.beginList();
        Writer::Step inner(writer);
        for (const Value& value : values) {
            inner.element();
            write(writer, value);
        }
        writer.endList(inner);
    }
    void end() { writer.endObject(step); }

private:
    Writer& writer;
    Writer::Step step;
};

void describe(Members& members, const StopDecision& stop) {
    members.flag("detecting", stop.isDetecting);
    if (stop.isDetecting) {
        members.moment("lastMovedAt", stop.lastMovedAt);
    }
    if (stop.isDetecting && !stop.isOld) {
        members.measure("distance", stop.distance);
        members.measure("duration", stop.duration);
        members.flag("moved", stop.moved);
    }
}

void describe(Members& members, const observed::Fix& fix) {
    members.text("type", "fix");
    members.name("source", fix.source);
    members.place(fix.location);
    members.moment("timestamp", fix.location.timestamp);
    members.name("outcome", fix.outcome);
    members.flag("stoppedBefore", fix.stoppedBefore);
    members.flag("stoppedAfter", fix.stoppedAfter);
    if (fix.stop) {
        describe(members, *fix.stop);
    }
    if (fix.sync) {
        members.name("sync", fix.sync->rule);
        members.name("force", fix.sync->force);
        members.measure("lastSyncInterval", fix.sync->lastSyncInterval);
    }
}

void describe(Members& members, const observed::Tracking& tracking) {
    members.text("type", "tracking");
    members.flag("on", tracking.isOn);
    members.name("cause", tracking.cause);
}

void describe(Members& members, const observed::UpdateTimer& timer) {
    members.text("type", "timer");
    members.name("change", timer.change);
    members.count("interval", static_cast<std::uint64_t>(timer.interval));
}

void describe(Members& members, const observed::LocationRequest& request) {
    members.text("type", "request");
    members.flag("byTimer", request.byTimer);
    if (request.accuracy) {
        members.measure("desiredAccuracy", *request.accuracy);
    }
}

void describe(Members& members, const observed::Service& service) {
    members.text("type", "service");
    members.name("service", service.kind);
    members.flag("on", service.isRunning);
}

void describe(Members& members, const observed::Geofence& fence) {
    members.text("type", "geofence");
    members.flag("placed", fence.isPlaced);
    members.text("identifier", fence.region.identifier);
    members.place(fence.region.center);
    members.measure("radius", fence.region.radius);
}

void describe(Members& members, const observed::BackgroundGrant& grant) {
    members.text("type", "grant");
    members.name("change", grant.change);
    members.count("task", grant.task);
    members.measure("duration", grant.duration);
}

void describe(Members& members, const observed::Shutdown& shutdown) {
    members.text("type", "shutdown");
    members.name("change", shutdown.change);
    members.measure("delay", shutdown.delay);
}

void describe(Members& members, const observed::Answer& answer) {
    members.text("type", "answer");
    members.name("status", answer.status);
    members.count("callers", answer.callers);
    members.flag("timedOut", answer.timedOut);
}

void describe(Members& members, const observed::Send& send) {
    members.text("type", "send");
    members.name("change", send.change);
    members.name("source", send.source);
    members.place(send.location);
    members.flag("stopped", send.stopped);
    members.flag("replayed", send.replayed);
    if (send.change == observed::Send::Change::ended) {
        members.name("status", send.status);
        members.flag("canExit", send.canExit);
    }
}

void describe(Members& members, const observed::FailedStop& stop) {
    members.text("type", "failedStop");
    members.flag("replayed", stop.isReplayed);
    members.place(stop.location);
}

void describe(Members& members, const observed::Sync& sync) {
    members.text("type", "sync");
    members.name("status", sync.status);
    members.name("source", sync.source);
    members.place(sync.location);
    members.flag("stopped", sync.stopped);
    members.flag("replayed", sync.replayed);
    members.count("fences", sync.fences);
    if (sync.place) {
        members.text("placeId", sync.place->_id);
        members.text("placeName", sync.place->name);
    }
    members.list("events", sync.events,
                 [](Writer& writer, const std::shared_ptr<QVEvent>& event) { writer.text(nameOf(event->type)); });
}

void describe(Members& members, const observed::Failure& failure) {
    members.text("type", "failure");
    members.name("kind", failure.error.kind);
    members.text("message", failure.error.message);
}

void describe(Members& members, const phone::StateChange& change) {
    members.text("type", "app");
    members.name("before", change.before);
    members.name("after", change.after);
}

void describe(Members& members, const phone::SignalChange& change) {
    members.text("type", "signal");
    members.flag("found", change.hasSignal);
}

void describe(Members& members, const phone::AccuracyChange& change) {
    members.text("type", "accuracy");
    if (change.metres) {
        members.measure("metres", *change.metres);
    }
}

void describe(Members& members, const phone::AuthorizationChange& change) {
    members.text("type", "permission");
    members.name("status", change.status);
}

void describe(Members& members, const phone::ClockChange& change) {
    members.text("type", "clock");
    members.moment("before", change.before);
    members.moment("after", change.after);
}

void describe(Members& members, const phone::Request& request) {
    members.text("type", "httpRequest");
    members.count("id", request.id);
    members.text("method", request.method);
    members.text("target", request.target);
    members.count("bytes", request.bytes);
}

void describe(Members& members, const phone::Response& response) {
    members.text("type", "httpResponse");
    members.count("id", response.id);
    members.text("method", response.method);
    members.text("target", response.target);
    if (response.status) {
        members.count("status", static_cast<std::uint64_t>(*response.status));
    }
}

void describe(Members& members, const SummaryRecord& record) {
    const TrackingSummary& did = record.summary;
    const phone::Usage& used = record.usage;
    members.text("type", "summary");
    members.count("fixes", did.fixes);
    members.count("dropped", did.dropped);
    members.count("stops", did.stops);
    members.count("syncs", did.syncs);
    members.count("failedSyncs", did.failedSyncs);
    members.count("events", did.events);
    members.count("geofences", did.geofences);
    members.count("grants", did.backgroundGrants);
    members.count("launches", used.launches);
    members.count("wakeUps", used.wakeUps);
    members.count("timerWakeUps", used.timerWakeUps);
    members.count("fixRequests", used.fixRequests);
    members.count("fixesGiven", used.fixes);
    members.measure("receiverSeconds", std::chrono::duration<double>(used.receiverTime).count());
    members.count("requests", used.requests);
    members.count("bytesSent", used.bytesSent);
}

template <class Describe>
std::string lineOf(platform::Date time, Describe describeInto) {
    Writer writer(json::Style::compact, Writer::Unencodable::isReplaced);
    writer.beginObject();
    {
        Members members(writer);
        members.moment("time", time);
        describeInto(members);
        members.end();
    }
    return writer.take() + '\n';
}

} // namespace

std::string decisionJSON(platform::Date time, const observed::Observation& observation) {
    return lineOf(time, [&observation](Members& members) {
        std::visit([&members](const auto& one) { describe(members, one); }, observation);
    });
}

std::string decisionJSON(platform::Date time, const phone::Event& event) {
    return lineOf(time, [&event](Members& members) {
        std::visit([&members](const auto& one) { describe(members, one); }, event);
    });
}

std::string decisionJSON(platform::Date time, const SummaryRecord& record) {
    return lineOf(time, [&record](Members& members) { describe(members, record); });
}

} // namespace quorvane::testing
