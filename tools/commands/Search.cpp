#include "tools/commands/Search.h"

#include <CLI/CLI.hpp>

#include "tools/Failure.h"
#include "tools/commands/SearchPlaces.h"
#include "tools/commands/SearchTasks.h"

namespace quorvane::tool {

void addSearch(CLI::App& program, Command& chosen) {
    CLI::App* const verb = program.add_subcommand("search", "Sign in and find places or tasks");
    verb->fallthrough();
    verb->require_subcommand(0, 1);
    addSearchPlaces(*verb, chosen);
    addSearchTasks(*verb, chosen);
    verb->final_callback([&chosen] {
        if (!chosen) {
            throw WrongForm("name what to search for: places or tasks");
        }
    });
}

} // namespace quorvane::tool
