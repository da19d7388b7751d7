#include "tools/demo/Stage.h"

#include "tools/Failure.h"
#include "tools/Operations.h"
#include "tools/Session.h"
#include "tools/Terminal.h"
#include "tools/Text.h"
#include "tools/demo/Account.h"

namespace quorvane::tool {
namespace {

constexpr std::size_t column = 10;

} // namespace

void Stage::heading(const std::string& text) {
    terminal.line();
    terminal.line(terminal.painted(text, Paint::heading));
}

void Stage::tell(QVStatus status, const std::string& result) {
    account.tell();
    session.require(status);
    terminal.line("  " + padded(nameOf(status), column) + result);
}

void Stage::tellRefusal(QVStatus status, QVStatus expected, const std::string& reason) {
    account.tell();
    if (status != expected) {
        throw Failure(status, "the demo expected " + std::string(nameOf(expected)));
    }
    terminal.line("  " + std::string(nameOf(status)) + "  " + reason);
}

void Stage::note(const std::string& label, const std::string& text) {
    terminal.row(label, text, column);
}

QVPlaceList Stage::searchPlaces(const platform::Coordinate& near, const ListStyle& style) {
    const PlacesFound found = findPlaces(session, near, radius);
    tell(found.status, counted(found.places.size(), "place") + " within " + metresText(radius));
    printPlaces(found.places, near, terminal, style);
    return found.places;
}

QVTaskList Stage::searchTasks(const platform::Coordinate& near) {
    const TasksFound found = findTasks(session, near, radius);
    tell(found.status, counted(found.tasks.size(), "task") + " within " + metresText(radius));
    printTasks(found.tasks, terminal, listStyle());
    return found.tasks;
}

} // namespace quorvane::tool
