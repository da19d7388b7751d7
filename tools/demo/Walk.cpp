#include "tools/demo/Walk.h"

#include <optional>
#include <utility>

#include "API/QVAuthService.h"
#include "Facade/Quorvane.h"
#include "tools/Failure.h"
#include "tools/Results.h"
#include "tools/Session.h"
#include "tools/Terminal.h"
#include "tools/Text.h"
#include "tools/demo/Account.h"

namespace quorvane::tool {
namespace {

constexpr int radius = 400;
constexpr ListStyle listStyle{.indent = 12, .mostRows = 5};

} // namespace

Walk::Walk(Session& theSession, Account& theAccount, Terminal& theTerminal)
    : session(theSession), account(theAccount), terminal(theTerminal) {}

void Walk::signIn() {
    heading("Sign-in");
    // Tokens of an earlier service are worth nothing to this one.
    QVAuthService::shared().logout();
    try {
        session.signIn();
    } catch (const Failure&) {
        account.tell();
        throw;
    }
    account.tell();
    terminal.line("  " + padded(nameOf(QVStatus::SUCCESS), 10) + "signed in as " +
                  printable(Quorvane::getUserId().value_or("")));
}

void Walk::searchAt(const Ride::Stop& stop, bool isTimed) {
    heading(metresText(stop.metres) + " along the ride" + (isTimed ? ", at " + timeText(stop.fix.timestamp) : "") +
            ", near " + coordinateText(stop.fix.coordinate));

    const QVPlaceList places = searchPlaces(stop.fix);
    const QVTaskList tasks = searchTasks(stop.fix);
    placesFound += places.size();
    tasksFound += tasks.size();
    stops.emplace_back(AnyCodable::Dictionary{{"metres", stop.metres},
                                              {"near", documentOf(stop.fix.coordinate)},
                                              {"places", documentOf(places, stop.fix.coordinate)},
                                              {"tasks", documentOf(tasks)}});
}

QVPlaceList Walk::searchPlaces(const platform::Location& near) {
    std::optional<QVStatus> status;
    QVPlaceList places;
    Quorvane::Search::places(near, radius, std::nullopt, std::nullopt, std::nullopt, 0,
                             [&](QVStatus result, const auto&, const std::optional<QVPlaceList>& found) {
                                 status = result;
                                 places = found.value_or(QVPlaceList());
                             });
    session.waitForAnswer([&status] { return status.has_value(); });
    tellResult(*status, counted(places.size(), "place"));
    printPlaces(places, near.coordinate, terminal, listStyle);
    return places;
}

QVTaskList Walk::searchTasks(const platform::Location& near) {
    std::optional<QVStatus> status;
    QVTaskList tasks;
    Quorvane::Search::tasks(near, radius, std::nullopt,
                            [&](QVStatus result, const auto&, const std::optional<QVTaskList>& found) {
                                status = result;
                                tasks = found.value_or(QVTaskList());
                            });
    session.waitForAnswer([&status] { return status.has_value(); });
    tellResult(*status, counted(tasks.size(), "task"));
    printTasks(tasks, terminal, listStyle);
    return tasks;
}

void Walk::tellResult(QVStatus status, const std::string& found) {
    account.tell();
    session.require(status);
    terminal.line("  " + padded(nameOf(status), 10) + found + " within " + metresText(radius));
}

void Walk::summarise() {
    heading("Summary");
    terminal.line("  " + account.requestSummary());
    terminal.line("  " + counted(placesFound, "place") + " and " + counted(tasksFound, "task") + " found at " +
                  counted(stops.size(), "point") + " of the ride");
    terminal.line("  " + counted(account.logLineCount(), "log line") + " told to the delegate");
}

AnyCodable::Dictionary Walk::document() const {
    AnyCodable::Dictionary document = account.document();
    document["userId"] = Quorvane::getUserId().value_or("");
    document["stops"] = stops;
    return document;
}

void Walk::heading(const std::string& text) {
    terminal.line();
    terminal.line(terminal.painted(text, Paint::heading));
}

} // namespace quorvane::tool
