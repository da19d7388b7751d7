#include "tools/commands/Places.h"

#include <memory>
#include <optional>
#include <string>
#include <vector>

#include <CLI/CLI.hpp>

#include "Cache/Configs.h"
#include "tools/Arguments.h"
#include "tools/Failure.h"
#include "tools/InputFile.h"
#include "tools/Operations.h"
#include "tools/OwnPlaces.h"
#include "tools/Results.h"
#include "tools/Session.h"
#include "tools/Terminal.h"
#include "tools/Text.h"

namespace quorvane::tool {
namespace {

struct Addition {
    std::string file;
    platform::Coordinate near;
    int radius = 1000;
};

QVPlaceList placesIn(const std::string& file) {
    QVPlaceList places;
    for (const std::string& text : objectsIn(file, "place", {"id"})) {
        places.push_back(modelIn<QVPlace>(file, text));
        if (places.back()->_id.empty()) {
            throw Failure(nameOfFile(file) + " holds a place whose id is no text, or an empty one");
        }
    }
    // Of more the library's store would list none, and a search would have no answer.
    const auto most = static_cast<std::size_t>(QVCache::MemoryConfig().countLimit);
    if (const std::size_t count = identifiersOf(places).size(); count > most) {
        throw Failure(nameOfFile(file) + " holds " + counted(count, "place") + " with ids of their own; at most " +
                      std::to_string(most) + " can be stored and found in one run");
    }
    return places;
}

AnyCodable::Dictionary addAndSearch(const Addition& addition, const GlobalOptions& options, Terminal& terminal) {
    const QVPlaceList own = placesIn(addition.file);
    Session session(options, terminal);
    session.signIn();
    storePlaces(session, own);
    terminal.progress("searching …");
    const PlacesFound found = findPlaces(session, addition.near, addition.radius);
    terminal.progress({});
    session.require(found.status);

    terminal.line("added " + counted(own.size(), "place"));
    terminal.line(counted(found.places.size(), "place") + " within " + metresText(addition.radius) + " of " +
                  coordinateText(addition.near));
    printPlaces(found.places, addition.near, terminal, {.own = identifiersOf(own)});
    return {{"added", documentOf(own, addition.near)},
            {"near", documentOf(addition.near)},
            {"radius", addition.radius},
            {"places", documentOf(found.places, addition.near)}};
}

void addAdd(CLI::App& places, Command& chosen) {
    const auto addition = std::make_shared<Addition>();
    CLI::App* const verb = places.add_subcommand("add", "Store places of your own and find them around a point");
    verb->fallthrough();
    verb->add_option_function<std::string>(
            "FILE", [addition](const std::string& text) { addition->file = textIn("FILE", text); },
            "A file with a place, or with what search places printed with --json; - is standard input")
        ->type_name("")
        ->required();
    verb->add_option_function<std::string>(
            "--near", [addition](const std::string& text) { addition->near = coordinateIn("--near", text); },
            "The point to search around, in degrees")
        ->type_name("LAT,LNG")
        ->required();
    verb->add_option_function<std::string>(
            "--radius", [addition](const std::string& text) { addition->radius = metresIn("--radius", text); },
            "How far around it (1000)")
        ->type_name("METRES");
    verb->callback([addition, &chosen] {
        chosen = [addition = *addition](const GlobalOptions& options, Terminal& terminal) {
            return addAndSearch(addition, options, terminal);
        };
    });
}

} // namespace

void addPlaces(CLI::App& program, Command& chosen) {
    CLI::App* const verb = program.add_subcommand("places", "Places of your own");
    verb->fallthrough();
    verb->require_subcommand(0, 1);
    addAdd(*verb, chosen);
    verb->final_callback([&chosen] {
        if (!chosen) {
            throw WrongForm("name what to do with places: add");
        }
    });
}

} // namespace quorvane::tool
