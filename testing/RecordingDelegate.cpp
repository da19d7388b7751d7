#include "testing/RecordingDelegate.h"

#include <algorithm>
#include <iterator>

#include "JSON/NumberText.h"
#include "Tracking/LocationSource.h"
#include "testing/DateText.h"

namespace quorvane::testing {
namespace {

std::string textOf(const platform::Location& location) {
    return json::textOf(location.coordinate.latitude) + ',' + json::textOf(location.coordinate.longitude) + ' ' +
           dateText(location.timestamp);
}

const char* textOf(const std::shared_ptr<QVUser>& user) {
    return user ? "a user" : "no user";
}

} // namespace

std::string RecordingDelegate::Call::text() const {
    switch (kind) {
        case Kind::clientLocationUpdated:
            return "onClientLocationUpdated " + textOf(location) + (stopped ? " stopped " : " moving ") +
                   std::string(nameOf(source));
        case Kind::error:
            return "onError " + std::string(nameOf(status));
        case Kind::eventsReceived:
            return "onEventsReceived " + std::to_string(events.size()) +
                   (events.size() == 1 ? " event, " : " events, ") + textOf(user);
        case Kind::locationUpdated:
            return "onLocationUpdated " + textOf(location) + ' ' + textOf(user);
        case Kind::log:
            break;
    }
    return "onLog " + message;
}

void RecordingDelegate::onClientLocationUpdated(const platform::Location& location, bool stopped,
                                                QVLocationSource source) {
    Call& call = recorded.emplace_back();
    call.kind = Kind::clientLocationUpdated;
    call.location = location;
    call.stopped = stopped;
    call.source = source;
}

void RecordingDelegate::onError(QVStatus status) {
    Call& call = recorded.emplace_back();
    call.kind = Kind::error;
    call.status = status;
}

void RecordingDelegate::onEventsReceived(const std::vector<std::shared_ptr<QVEvent>>& events,
                                         const std::shared_ptr<QVUser>& user) {
    Call& call = recorded.emplace_back();
    call.kind = Kind::eventsReceived;
    call.events = events;
    call.user = user;
}

void RecordingDelegate::onLocationUpdated(const platform::Location& location, const std::shared_ptr<QVUser>& user) {
    Call& call = recorded.emplace_back();
    call.kind = Kind::locationUpdated;
    call.location = location;
    call.user = user;
}

void RecordingDelegate::onLog(const std::string& message) {
    Call& call = recorded.emplace_back();
    call.kind = Kind::log;
    call.message = message;
}

std::vector<RecordingDelegate::Call> RecordingDelegate::calls(Kind kind) const {
    std::vector<Call> result;
    std::copy_if(recorded.begin(), recorded.end(), std::back_inserter(result),
                 [kind](const Call& call) { return call.kind == kind; });
    return result;
}

std::vector<std::string> RecordingDelegate::texts() const {
    std::vector<std::string> result;
    std::transform(recorded.begin(), recorded.end(), std::back_inserter(result),
                   [](const Call& call) { return call.text(); });
    return result;
}

std::vector<QVStatus> RecordingDelegate::errors() const {
    std::vector<QVStatus> result;
    for (const Call& call : recorded) {
        if (call.kind == Kind::error) {
            result.push_back(call.status);
        }
    }
    return result;
}

std::vector<std::string> RecordingDelegate::logLines() const {
    std::vector<std::string> result;
    for (const Call& call : recorded) {
        if (call.kind == Kind::log) {
            result.push_back(call.message);
        }
    }
    return result;
}

} // namespace quorvane::testing
