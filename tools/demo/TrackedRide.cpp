#include "tools/demo/TrackedRide.h"

#include <chrono>
#include <utility>
#include <variant>

#include "testing/DateText.h"
#include "testing/DecisionNames.h"
#include "tools/Results.h"

namespace quorvane::tool {
namespace {

using Kind = testing::RecordingDelegate::Kind;

/// What the event is about. One that a place was left does not carry that place.
std::string nameIn(const QVEvent& event, const std::string& lastPlace) {
    switch (event.type) {
        case QVEventType::USER_ENTERED_PLACE:
            return event.place ? event.place->name : "";
        case QVEventType::USER_EXITED_PLACE:
            return lastPlace;
        default:
            return event.geofence ? event.geofence->_description : "";
    }
}

template <class Key>
std::size_t countIn(const std::map<Key, std::size_t>& counts, Key key) {
    const auto found = counts.find(key);
    return found == counts.end() ? 0 : found->second;
}

AnyCodable::Dictionary syncDocument(const TrackedRide::Sync& sync) {
    AnyCodable::List events;
    for (const TrackedRide::Event& event : sync.events) {
        AnyCodable::Dictionary one{{"type", std::string(testing::nameOf(event.type))}};
        if (!event.name.empty()) {
            one["name"] = event.name;
        }
        events.emplace_back(std::move(one));
    }
    AnyCodable::Dictionary document{{"time", testing::dateText(sync.time)},
                                    {"at", documentOf(sync.location.coordinate)},
                                    {"source", std::string(testing::nameOf(sync.source))},
                                    {"stopped", sync.stopped},
                                    {"status", std::string(testing::nameOf(sync.status))},
                                    {"fences", sync.fences},
                                    {"events", std::move(events)}};
    if (sync.answer) {
        document["answer"] = *sync.answer;
    }
    if (!sync.place.empty()) {
        document["place"] = sync.place;
    }
    return document;
}

AnyCodable::Dictionary stopDocument(const TrackedRide::Stop& stop) {
    AnyCodable::Dictionary document{{"begin", testing::dateText(stop.begin)}, {"at", documentOf(stop.coordinate)}};
    if (stop.end) {
        document["end"] = testing::dateText(*stop.end);
    }
    return document;
}

} // namespace

void TrackedRide::observed(platform::Date now, const observed::Observation& observation) {
    if (const auto* const fix = std::get_if<observed::Fix>(&observation)) {
        observe(now, *fix);
    } else if (const auto* const sync = std::get_if<observed::Sync>(&observation)) {
        observe(now, *sync);
    } else if (const auto* const request = std::get_if<observed::LocationRequest>(&observation)) {
        timerWaits = timerWaits || request->byTimer;
    } else if (std::holds_alternative<observed::Failure>(observation)) {
        timerWaits = false;
    }
}

void TrackedRide::happened(platform::Date now, const testing::phone::Event& event) {
    if (const auto* const request = std::get_if<testing::phone::Request>(&event)) {
        begun.emplace(request->id, now);
    }
    const auto* const response = std::get_if<testing::phone::Response>(&event);
    if (response == nullptr) {
        return;
    }
    if (const auto request = begun.extract(response->id)) {
        inFlight += now - request.mapped();
    }
    if (response->target.find("/locations/find?") != std::string::npos) {
        lastAnswer = response->status;
    }
}

void TrackedRide::observe(platform::Date now, const observed::Fix& fix) {
    ++bySource[fix.source];
    if (fix.source == QVLocationSource::BACKGROUND_LOCATION && std::exchange(timerWaits, false)) {
        ++byTimer;
    }
    if (fix.sync) {
        ++byRule[fix.sync->rule];
        byForce[fix.sync->force] += fix.sync->rule == SyncDecision::Rule::send ? 1 : 0;
    }
    if (!fix.stoppedBefore && fix.stoppedAfter) {
        halts.push_back({now, std::nullopt, fix.location.coordinate});
    } else if (fix.stoppedBefore && !fix.stoppedAfter && !halts.empty()) {
        halts.back().end = now;
    }
}

void TrackedRide::observe(platform::Date now, const observed::Sync& sync) {
    Sync one{now, sync.location, sync.stopped, sync.source, sync.status, std::exchange(lastAnswer, std::nullopt)};
    if (sync.status == QVStatus::SUCCESS) {
        one.fences = sync.fences;
        one.place = sync.place ? sync.place->name : "";
        for (const auto& event : sync.events) {
            one.events.push_back({event->type, nameIn(*event, lastPlace)});
        }
        lastPlace = one.place;
    }
    sent.push_back(std::move(one));
}

std::size_t TrackedRide::fixCount() const {
    std::size_t count = 0;
    for (const auto& [source, number] : bySource) {
        count += number;
    }
    return count;
}

std::size_t TrackedRide::decided(SyncDecision::Rule rule) const {
    return countIn(byRule, rule);
}

std::size_t TrackedRide::forced(SyncDecision::Force force) const {
    return countIn(byForce, force);
}

std::size_t TrackedRide::eventCount() const {
    std::size_t count = 0;
    for (const Sync& sync : sent) {
        count += sync.events.size();
    }
    return count;
}

AnyCodable::Dictionary TrackedRide::document() const {
    AnyCodable::List syncList;
    for (const Sync& sync : sent) {
        syncList.emplace_back(syncDocument(sync));
    }
    AnyCodable::List stopList;
    for (const Stop& stop : halts) {
        stopList.emplace_back(stopDocument(stop));
    }
    return {{"syncs", std::move(syncList)},
            {"stops", std::move(stopList)},
            {"secondsInFlight", std::chrono::duration<double>(inFlight).count()},
            {"delegate", AnyCodable::Dictionary{{"onClientLocationUpdated", calls(Kind::clientLocationUpdated)},
                                                {"onLocationUpdated", calls(Kind::locationUpdated)},
                                                {"onEventsReceived", calls(Kind::eventsReceived)},
                                                {"onError", calls(Kind::error)}}}};
}

} // namespace quorvane::tool
