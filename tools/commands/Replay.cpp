#include "tools/commands/Replay.h"

#include <algorithm>
#include <filesystem>
#include <memory>
#include <optional>
#include <string>
#include <system_error>
#include <utility>
#include <variant>
#include <vector>

#include <CLI/CLI.hpp>

#include "JSON/JSON.h"
#include "tools/Arguments.h"
#include "tools/Failure.h"
#include "tools/InputFile.h"
#include "tools/NamedOptions.h"
#include "tools/Terminal.h"
#include "tools/replay/ReplayOutput.h"
#include "tools/replay/ReplayPage.h"
#include "tools/replay/ReplayRun.h"

namespace quorvane::tool {
namespace {

enum class Format { text, json, html };

struct ReplayOptions {
    std::string track;
    std::string options = "continuous";
    std::string places;
    Format format = Format::text;
    std::string output;
    bool compares = false;
};

Format formatIn(const std::string& text) {
    if (text == "text") {
        return Format::text;
    }
    if (text == "json") {
        return Format::json;
    }
    if (text == "html") {
        return Format::html;
    }
    throw WrongForm("--format takes text, json or html, not \"" + text + "\"");
}

/// The last line of a log for programs.
std::string lineOf(const ReplaySummary& summary) {
    AnyCodable::Dictionary document = summary.document();
    document["type"] = "summary";
    return json::writeExactly(document) + '\n';
}

void writeSummaries(const std::vector<ReplaySummary>& summaries, Format format, ReplayOutput& output) {
    if (format == Format::text) {
        output.write(summaryText(summaries));
        return;
    }
    for (const ReplaySummary& summary : summaries) {
        output.write(lineOf(summary));
    }
}

std::vector<NamedOptions> optionsFor(const ReplayOptions& options) {
    std::vector<NamedOptions> all;
    if (options.compares) {
        all = presets();
    }
    if (!options.compares || !isPreset(options.options)) {
        all.push_back(optionsCalled(options.options));
    }
    return all;
}

/// Throws a `Failure` when the output would take the place of a file that is read.
void requireOtherOutput(const ReplayOptions& options) {
    std::error_code absent;
    const std::string own = isPreset(options.options) ? "" : options.options;
    for (const std::string& input : {options.track, options.places, own}) {
        if (std::filesystem::is_regular_file(options.output, absent) &&
            std::filesystem::equivalent(input, options.output, absent)) {
            throw Failure(nameOfFile(options.output) + ": the replay reads this file, and --output would replace it");
        }
    }
}

/// Opens the recording. What is no regular file gives its content once only, and is read where that takes several
/// replays. Throws a `Failure`.
void open(ReplayInput& input, bool isForSeveral) {
    std::error_code absent;
    if (isForSeveral && !std::filesystem::is_regular_file(input.track, absent)) {
        testing::TrackResult result = testing::readTrack(input.track);
        if (const auto* const error = std::get_if<testing::TrackError>(&result)) {
            throw Failure(error->message);
        }
        input.recording = std::make_shared<const testing::Track>(std::get<testing::Track>(std::move(result)));
        return;
    }
    input.reader = openRecording(input.track);
}

AnyCodable::Dictionary runReplay(const ReplayOptions& options, const GlobalOptions& global, Terminal& terminal) {
    const std::vector<NamedOptions> all = optionsFor(options);
    ReplayInput input;
    input.track = options.track;
    input.places = options.places.empty() ? KnownPlaces() : knownPlacesIn(options.places);
    requireOtherOutput(options);
    open(input, all.size() > 1);
    ReplayOutput output(options.output, terminal);
    // What would go where the one document goes is not made.
    const bool isWritten = !global.json || !options.output.empty();
    const bool isLogged = isWritten && !options.compares && options.format != Format::html;
    const std::vector<NamedOptions>::const_iterator chosen =
        isPreset(options.options)
            ? std::find_if(all.begin(), all.end(), [&](const auto& one) { return one.name == options.options; })
            : all.end() - 1;
    ReplayPage page("Replay of " + baseName(options.track) + ", " + chosen->name);
    ReplayReaders readers;
    readers.libraryLog = [&terminal](std::string_view line) { terminal.log(line); };
    if (isLogged) {
        readers.log = ReplayLog{options.format == Format::text ? testing::DecisionLog::Format::text
                                                               : testing::DecisionLog::Format::jsonLines,
                                [&output](std::string_view line) { output.write(line); }};
    }
    std::vector<ReplaySummary> summaries;
    AnyCodable::List documents;
    for (const NamedOptions& one : all) {
        const bool isDrawn = isWritten && options.format == Format::html && &one == &*chosen;
        readers.listener = isDrawn ? &page : nullptr;
        input.options = one;
        summaries.push_back(replay(input, readers, global));
        input.reader.reset();
        documents.emplace_back(summaries.back().document());
    }
    if (isLogged && options.format == Format::text) {
        output.write("\n");
    }
    if (isWritten && options.format == Format::html) {
        output.write(page.html(summaries, input.places));
    } else {
        writeSummaries(summaries, options.format, output);
    }
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
            "The decision log as text, as json, an object a line, or as an html page with a map (text)")
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
