#include "tools/commands/SearchPlaces.h"

#include <chrono>
#include <memory>
#include <optional>
#include <string>
#include <utility>

#include <CLI/CLI.hpp>

#include "Facade/Quorvane.h"
#include "tools/Arguments.h"
#include "tools/Results.h"
#include "tools/Session.h"
#include "tools/Terminal.h"
#include "tools/Text.h"

namespace quorvane::tool {
namespace {

struct PlaceQuestion {
    std::optional<platform::Coordinate> near;
    int radius = 1000;
};

AnyCodable::Dictionary searchPlaces(const PlaceQuestion& question, const GlobalOptions& options, Terminal& terminal) {
    Session session(options, terminal);
    session.requirePlaceStore();
    session.signIn();
    std::optional<QVStatus> status;
    std::optional<platform::Location> center;
    QVPlaceList places;
    const QVSearch::PlacesCallback answer = [&](QVStatus result, const std::optional<platform::Location>& location,
                                                const std::optional<QVPlaceList>& found) {
        status = result;
        center = location;
        places = found.value_or(QVPlaceList());
    };
    terminal.progress("searching …");
    if (question.near) {
        const platform::Location near{*question.near, 0, -1, session.platform().clock().now()};
        Quorvane::Search::places(near, question.radius, std::nullopt, std::nullopt, std::nullopt, 0, answer);
    } else {
        Quorvane::Search::places(question.radius, std::nullopt, std::nullopt, std::nullopt, 0, answer);
    }
    session.waitForAnswer([&status] { return status.has_value(); });
    terminal.progress({});
    session.requireFound(*status, question.near);

    const platform::Coordinate point = center ? center->coordinate : platform::Coordinate::invalid;
    terminal.line(counted(places.size(), "place") + " within " + metresText(question.radius) + " of " +
                  coordinateText(point));
    printPlaces(places, point, terminal);
    return {{"near", documentOf(point)}, {"radius", question.radius}, {"places", documentOf(places, point)}};
}

} // namespace

void addSearchPlaces(CLI::App& search, Command& chosen) {
    const auto question = std::make_shared<PlaceQuestion>();
    CLI::App* const verb = search.add_subcommand("places", "Places around a point, nearest first");
    verb->fallthrough();
    verb->add_option_function<std::string>(
            "--near", [question](const std::string& text) { question->near = coordinateIn("--near", text); },
            "The point, in degrees (where the device is)")
        ->type_name("LAT,LNG");
    verb->add_option_function<std::string>(
            "--radius", [question](const std::string& text) { question->radius = metresIn("--radius", text); },
            "How far around it (1000)")
        ->type_name("METRES");
    verb->callback([question, &chosen] {
        chosen = [question = *question](const GlobalOptions& options, Terminal& terminal) {
            return searchPlaces(question, options, terminal);
        };
    });
}

} // namespace quorvane::tool
