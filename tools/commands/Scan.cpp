#include "tools/commands/Scan.h"

#include <memory>

#include <CLI/CLI.hpp>

#include "tools/Arguments.h"
#include "tools/Terminal.h"
#include "tools/commands/ScanRun.h"

namespace quorvane::tool {

void addScan(CLI::App& program, Command& chosen) {
    const auto options = std::make_shared<ScanOptions>();
    CLI::App* const verb =
        program.add_subcommand("scan", "Open the barcode scanner, and print the first code that it reads");
    verb->fallthrough();
    verb->add_option_function<std::string>(
            "FILE", [options](const std::string& text) { options->file = textIn("FILE", text); },
            "A picture or a video in the place of the device's camera; a picture is shown for up to two seconds")
        ->type_name("");
    verb->add_flag("--window", options->hasWindow, "Show the scanner in a window (it is drawn where nobody sees it)");
    verb->callback([options, &chosen] {
        chosen = [options = *options](const GlobalOptions& global, Terminal& terminal) {
            const std::string code = scan(options, global, terminal);
            terminal.line(code);
            return AnyCodable::Dictionary{{"code", code}};
        };
    });
}

} // namespace quorvane::tool
