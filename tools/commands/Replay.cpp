#include "tools/commands/Replay.h"

#include <memory>
#include <optional>
#include <string>
#include <utility>
#include <vector>

#include <CLI/CLI.hpp>

#include "JSON/JSON.h"
#include "tools/Arguments.h"
#include "tools/Failure.h"
#include "tools/InputFile.h"
#include "tools/Terminal.h"
#include "tools/replay/ReplayOutput.h"
#include "tools/replay/ReplayRun.h"

namespace quorvane::tool {
namespace {

using Format = testing::DecisionLog::Format;

struct ReplayOptions {
    std::string track;
    std::string options = "continuous";
    std::string places;
    Format format = Format::text;
    std::string output;
    bool compares = false;
};

std::vector<NamedOptions> presets() {
    return {{"continuous", QuorvaneTrackingOptions::CONTINUOUS},
            {"responsive", QuorvaneTrackingOptions::RESPONSIVE},
            {"efficient", QuorvaneTrackingOptions::EFFICIENT}};
}

bool isPreset(const std::string& name) {
    return name == "continuous" || name == "responsive" || name == "efficient";
}

NamedOptions optionsCalled(const std::string& name) {
    for (const NamedOptions& preset : presets()) {
        if (preset.name == name) {
            return preset;
        }
    }
    const auto fromFile = modelIn<QuorvaneTrackingOptions>(name, contentOf(name));
    return {nameOfFile(name), [fromFile] { return fromFile; }};
}

/// A preset, or what can be taken for the name of a file.
std::string optionsIn(const std::string& text) {
    if (!isPreset(text) && text.find_first_of("./") == std::string::npos) {
        throw WrongForm("--options takes continuous, responsive, efficient or the name of a .json file, not \"" + text +
                        "\"");
    }
    return text;
}

Format formatIn(const std::string& text) {
    if (text != "text" && text != "json") {
        throw WrongForm("--format takes text or json, not \"" + text + "\"");
    }
    return text == "json" ? Format::jsonLines : Format::text;
}

/// The last line of a log for programs.
std::string lineOf(const ReplaySummary& summary) {
    AnyCodable::Dictionary document = summary.document();
    document["type"] = "summary";
    return json::writeExactly(document) + '\n';
}

void write(const std::vector<ReplaySummary>& summaries, Format format, ReplayOutput& output) {
    if (format == Format::text) {
        output.write(summaryText(summaries));
        return;
    }
    for (const ReplaySummary& summary : summaries) {
        output.write(lineOf(summary));
    }
}

AnyCodable::Dictionary runReplay(const ReplayOptions& options, const GlobalOptions& global, Terminal& terminal) {
    std::vector<NamedOptions> all;
    if (options.compares) {
        all = presets();
    }
    if (!options.compares || !isPreset(options.options)) {
        all.push_back(optionsCalled(options.options));
    }
    const KnownPlaces places = options.places.empty() ? KnownPlaces() : knownPlacesIn(options.places);
    const auto libraryLog = [&terminal](std::string_view line) { terminal.log(line); };
    ReplayOutput output(options.output, terminal);
    // A log that would go where the one document goes is not made.
    const bool isLogged = !options.compares && (!global.json || !options.output.empty());
    std::optional<ReplayLog> log;
    if (isLogged) {
        log = ReplayLog{options.format, [&output](std::string_view line) { output.write(line); }};
    }
    std::vector<ReplaySummary> summaries;
    AnyCodable::List documents;
    for (const NamedOptions& one : all) {
        summaries.push_back(replay({options.track, one, places}, log, global, libraryLog));
        documents.emplace_back(summaries.back().document());
    }
    if (isLogged && options.format == Format::text) {
        output.write("\n");
    }
    write(summaries, options.format, output);
    output.finish();
    return {{"replays", documents}};
}

} // namespace

void addReplay(CLI::App& program, Command& chosen) {
    const auto options = std::make_shared<ReplayOptions>();
    CLI::App* const verb = program.add_subcommand(
        "replay", "Let tracking follow a recording on a simulated phone, and tell each of its decisions");
    verb->fallthrough();
    verb->add_option_function<std::string>(
            "TRACK", [options](const std::string& text) { options->track = textIn("TRACK", text); },
            "A recording: GPX, NMEA, GeoJSON or CSV")
        ->type_name("")
        ->required();
    verb->add_option_function<std::string>(
            "--options", [options](const std::string& text) { options->options = optionsIn(text); },
            "The tracking options: continuous, responsive, efficient, or a JSON file with others (continuous)")
        ->type_name("OPTIONS");
    verb->add_option_function<std::string>(
            "--places", [options](const std::string& text) { options->places = textIn("--places", text); },
            "The places that the service knows: a file with what search places printed with --json (none)")
        ->type_name("FILE");
    verb->add_option_function<std::string>(
            "--format", [options](const std::string& text) { options->format = formatIn(text); },
            "Of the decision log: text, or json for an object a line (text)")
        ->type_name("FORMAT");
    verb->add_option_function<std::string>(
            "--output", [options](const std::string& text) { options->output = textIn("--output", text); },
            "The file that is written (standard output)")
        ->type_name("FILE");
    verb->add_flag("--compare", options->compares, "Only the summaries, of the three presets side by side");
    verb->callback([options, &chosen] {
        chosen = [options = *options](const GlobalOptions& global, Terminal& terminal) {
            return runReplay(options, global, terminal);
        };
    });
}

} // namespace quorvane::tool
