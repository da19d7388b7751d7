#include "tools/commands/TrackReport.h"

#include <variant>

#include "Models/QVGeofence.h"
#include "Places/QVPlace.h"
#include "Tracking/LocationSource.h"
#include "Tracking/QVEvent.h"
#include "testing/DecisionNames.h"
#include "tools/Failure.h"
#include "tools/Text.h"

namespace quorvane::tool {
namespace {

std::string at(const platform::Location& location) {
    return coordinateText(location.coordinate) + " within " + metresText(location.horizontalAccuracy);
}

/// What an event is about.
std::string subjectOf(const QVEvent& event) {
    if (event.place) {
        return printable(event.place->name);
    }
    return event.geofence ? printable(event.geofence->_description) : "";
}

} // namespace

void TrackReport::write(std::string_view subject, const std::string& sentence, Paint paint) {
    constexpr std::size_t column = 10;
    terminal.line(terminal.painted(timeText(clock.now()), Paint::faint) + "  " +
                  terminal.painted(padded(subject, column), paint) + sentence);
    cutOff = cutOff || terminal.flush() != 0;
}

void TrackReport::onClientLocationUpdated(const platform::Location& location, bool stopped, QVLocationSource source) {
    ++soFar.locations;
    write("location", at(location) + (stopped ? ", stopped" : ", moving") + " (" + std::string(nameOf(source)) + ")");
}

void TrackReport::onError(QVStatus status) {
    ++soFar.errors;
    write("error", std::string(nameOf(status)) + ": " + std::string(sentenceFor(status)), Paint::bad);
}

void TrackReport::onEventsReceived(const std::vector<std::shared_ptr<QVEvent>>& events,
                                   const std::shared_ptr<QVUser>& /*user*/) {
    for (const std::shared_ptr<QVEvent>& event : events) {
        ++soFar.events;
        write("event", std::string(testing::nameOf(event->type)) + "  " + subjectOf(*event), Paint::good);
    }
}

void TrackReport::onLocationUpdated(const platform::Location& location, const std::shared_ptr<QVUser>& /*user*/) {
    ++soFar.synced;
    write("synced", at(location));
}

void TrackReport::observe(const observed::Observation& observation) {
    if (const auto* const send = std::get_if<observed::Send>(&observation)) {
        using Change = observed::Send::Change;
        scheduled = send->change == Change::scheduled;
        underWay += send->change == Change::begun ? 1 : send->change == Change::ended ? -1 : 0;
    } else if (const auto* const failure = std::get_if<observed::Failure>(&observation)) {
        write("receiver", printable(failure->error.message), Paint::bad);
    }
}

} // namespace quorvane::tool
