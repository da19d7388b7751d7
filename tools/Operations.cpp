#include "tools/Operations.h"

#include <functional>

#include "Facade/Quorvane.h"
#include "Tasks/AnswerCheck.h"
#include "Tasks/ClaimRule.h"
#include "tools/Session.h"
#include "tools/Text.h"

namespace quorvane::tool {
namespace {

platform::Location locationAt(Session& session, const platform::Coordinate& coordinate) {
    return {coordinate, 0, -1, session.platform().clock().now()};
}

} // namespace

PlacesFound findPlaces(Session& session, const platform::Coordinate& near, int radius) {
    session.requirePlaceStore();
    PlacesFound found;
    bool isAnswered = false;
    Quorvane::Search::places(locationAt(session, near), radius, std::nullopt, std::nullopt, std::nullopt, 0,
                             [&](QVStatus status, const auto&, const std::optional<QVPlaceList>& places) {
                                 found = {status, places.value_or(QVPlaceList())};
                                 isAnswered = true;
                             });
    session.waitForAnswer([&] { return isAnswered; });
    return found;
}

TasksFound findTasks(Session& session, const platform::Coordinate& near, int radius) {
    TasksFound found;
    bool isAnswered = false;
    Quorvane::Search::tasks(locationAt(session, near), radius, std::nullopt,
                            [&](QVStatus status, const auto&, const std::optional<QVTaskList>& tasks) {
                                found = {status, tasks.value_or(QVTaskList())};
                                isAnswered = true;
                            });
    session.waitForAnswer([&] { return isAnswered; });
    return found;
}

Claimed claim(Session& session, const std::shared_ptr<QVTask>& task, const std::optional<platform::Coordinate>& here) {
    session.platform().fixedLocations().setLastLocation(here ? std::optional(locationAt(session, *here))
                                                             : std::nullopt);
    Claimed claimed;
    bool isAnswered = false;
    Quorvane::Tasks::claim(task, [&](QVStatus status, const std::shared_ptr<QVTask>& answer) {
        claimed = {status, answer};
        isAnswered = true;
    });
    session.waitForAnswer([&] { return isAnswered; });
    return claimed;
}

Submitted submit(Session& session, const std::shared_ptr<QVTask>& task, const std::shared_ptr<QVQuestion>& question,
                 const Entry& entry) {
    Submitted submitted;
    bool isAnswered = false;
    Quorvane::Tasks::saveResponse(task, question, entry.picked, entry.text, entry.photo,
                                  [&](QVStatus status, const std::shared_ptr<QVTaskResponse>& response,
                                      const std::optional<QVTaskResponse::SubmitError>& error) {
                                      submitted = {status, response, error};
                                      isAnswered = true;
                                  });
    session.waitForAnswer([&] { return isAnswered; });
    return submitted;
}

std::optional<QVTaskResponse::SubmitError> check(const QVTask& task, const QVQuestion& question, const Entry& entry) {
    return checkAnswer(task, question,
                       {.picked = entry.picked.value_or(std::vector<std::string>()),
                        .text = entry.text.value_or(""),
                        .hasPhoto = entry.photo != nullptr});
}

std::string rangeText(const QVTask& task, const platform::Coordinate& here) {
    const double distance = platform::distance(here, QVTaskService::shared().getTaskLocation(task).coordinate);
    const double limit =
        task.claimDistanceOverride.value_or(ClaimRule::defaultRadiusMiles) / ClaimRule::milesPerKilometre * 1000;
    // Just beyond the limit both would read alike.
    constexpr int mostDigits = 6;
    int digits = 0;
    while (digits < mostDigits && metresText(distance, digits) == metresText(limit, digits)) {
        ++digits;
    }
    return "it is " + metresText(distance, digits) + " away and can be claimed within " + metresText(limit, digits);
}

} // namespace quorvane::tool
