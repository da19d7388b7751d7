#include "tools/demo/Walk.h"

#include "API/QVAuthService.h"
#include "Facade/Quorvane.h"
#include "tools/Failure.h"
#include "tools/Results.h"
#include "tools/Session.h"
#include "tools/Terminal.h"
#include "tools/Text.h"
#include "tools/demo/Account.h"
#include "tools/demo/Stage.h"

namespace quorvane::tool {

void Walk::signIn() {
    stage.heading("Sign-in");
    // Tokens of an earlier service are worth nothing to this one.
    QVAuthService::shared().logout();
    try {
        stage.session.signIn();
    } catch (const Failure&) {
        stage.account.tell();
        throw;
    }
    stage.tell(QVStatus::SUCCESS, "signed in as " + printable(Quorvane::getUserId().value_or("")));
}

void Walk::searchAt(const Ride::Stop& stop, bool isTimed) {
    const platform::Coordinate& near = stop.fix.coordinate;
    stage.heading(metresText(stop.metres) + " along the ride" +
                  (isTimed ? ", at " + timeText(stop.fix.timestamp) : "") + ", near " + coordinateText(near));
    const QVPlaceList places = stage.searchPlaces(near);
    const QVTaskList tasks = stage.searchTasks(near);
    placesFound += places.size();
    tasksFound += tasks.size();
    stops.emplace_back(AnyCodable::Dictionary{{"metres", stop.metres},
                                              {"near", documentOf(near)},
                                              {"places", documentOf(places, near)},
                                              {"tasks", documentOf(tasks)}});
}

std::string Walk::summary() const {
    return counted(placesFound, "place") + " and " + counted(tasksFound, "task") + " found at " +
           counted(stops.size(), "point") + " of the ride";
}

AnyCodable::Dictionary Walk::document() const {
    return {{"userId", Quorvane::getUserId().value_or("")}, {"stops", stops}};
}

} // namespace quorvane::tool
