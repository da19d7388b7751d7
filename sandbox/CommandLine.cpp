#include "sandbox/CommandLine.h"

#include <charconv>
#include <cstdint>
#include <filesystem>
#include <limits>
#include <optional>
#include <string_view>
#include <system_error>
#include <utility>
#include <vector>

#include <CLI/CLI.hpp>

#include "testing/GPXReader.h"
#include "testing/TrackText.h"

namespace quorvane::sandbox {
namespace {

constexpr int badFile = 1;
constexpr int wrongForm = 2;
constexpr int highestPort = 65535;
constexpr std::int64_t longestLifetime = std::int64_t{10} * 365 * 24 * 3600;

/// Whether @p text is rather a point that was typed wrong than the name of a file.
bool isMeantAsPoint(const std::string& text) {
    const auto comma = text.find(',');
    std::error_code ignored;
    return comma != std::string::npos && testing::readDecimal(std::string_view(text).substr(0, comma)) &&
           !std::filesystem::exists(text, ignored);
}

/// The points that @p text stands for, or why there are none.
std::variant<std::vector<platform::Coordinate>, Exit> pointsOf(const std::string& text) {
    if (text.empty()) {
        return Exit{wrongForm, "--around: an empty text is neither LAT,LNG nor a track."};
    }
    if (const auto pair = testing::readPair(text)) {
        const platform::Coordinate point{pair->first, pair->second};
        if (!point.isValid()) {
            return Exit{wrongForm,
                        "--around: \"" + text + "\" lies beyond 90 degrees of latitude or 180 of longitude."};
        }
        return std::vector{point};
    }
    if (isMeantAsPoint(text)) {
        return Exit{wrongForm, "--around: \"" + text + "\" is no point LAT,LNG, such as 46.05,14.51."};
    }
    const testing::TrackResult track = testing::readGPX(text);
    if (const auto* error = std::get_if<testing::TrackError>(&track)) {
        return Exit{badFile, error->message};
    }
    std::vector<platform::Coordinate> points;
    for (const platform::Location& fix : std::get<testing::Track>(track).fixes) {
        points.push_back(fix.coordinate);
    }
    return points;
}

struct Texts {
    std::optional<std::string> around;
    std::string seed;
    std::vector<std::string> faults;
    std::int64_t lifetime = 3600;
};

void describe(CLI::App& app, CommandLine& line, Texts& texts) {
    SandboxOptions& options = line.options;
    const CLI::Range ports(0, highestPort);
    app.add_option("--data-port", options.dataPort, "Port of the data service; 0 takes any free one")
        ->check(ports)
        ->capture_default_str();
    app.add_option("--identity-port", options.identityPort, "Port of the identity service; 0 takes any free one")
        ->check(ports)
        ->capture_default_str();
    app.add_option("--database", options.database,
                   "File that keeps places, tasks, claims, answers, photos and tokens; without it, memory")
        ->type_name("FILE");
    app.add_option("--seed", texts.seed, "Number that the invented places and tasks follow from")
        ->type_name("UINT")
        ->default_str(std::to_string(options.seed));
    app.add_option("--around", texts.around, "Where the places are: LAT,LNG or a track in GPX")
        ->type_name("LAT,LNG|TRACK");
    app.add_option("--token-lifetime", texts.lifetime, "Seconds for which an access token works")
        ->check(CLI::Range(std::int64_t{1}, longestLifetime))
        ->capture_default_str();
    app.add_option("--fault", texts.faults, "Something to go wrong, such as \"/locations/find:status=503:count=2\"")
        ->take_all()
        ->allow_extra_args(false);
    app.add_flag("--quiet", line.isQuiet, "Do not print each request");
    app.footer(
        "A fault is a path (\"*\" for all) and parts, separated by colons: drop, reset, truncate-body[=BYTES],\n"
        "truncate-headers[=BYTES], status=CODE, invalid-json, expired-token, lost-reply, delay=500ms,\n"
        "and for how many requests: count=N, skip=N.");
}

/// Why values that each may be given do not make a sandbox; none when they do. Takes over the seed.
std::optional<std::string> complaintAbout(const CLI::App& app, const Texts& texts, SandboxOptions& options) {
    if (app.count("--seed") > 0) {
        const char* const end = texts.seed.data() + texts.seed.size();
        const auto [last, error] = std::from_chars(texts.seed.data(), end, options.seed);
        if (error != std::errc() || last != end) {
            return "--seed: \"" + texts.seed + "\" is no whole number from 0 to " +
                   std::to_string(std::numeric_limits<decltype(options.seed)>::max()) + ".";
        }
    }
    if (options.dataPort != 0 && options.dataPort == options.identityPort) {
        return "--data-port and --identity-port: one port, " + std::to_string(options.dataPort) +
               ", cannot serve both.";
    }
    if (app.count("--database") > 0 && options.database.empty()) {
        return "--database: an empty text names no file.";
    }
    return std::nullopt;
}

} // namespace

std::variant<CommandLine, Exit> parseCommandLine(int count, const char* const* arguments) {
    CommandLine line;
    line.options.dataPort = 3000;
    line.options.identityPort = 4001;
    Texts texts;
    CLI::App app("The local data and identity service, for development without an account or a network.",
                 "quorvane-sandbox");
    describe(app, line, texts);
    try {
        app.parse(count, arguments);
    } catch (const CLI::CallForHelp&) {
        return Exit{0, app.help()};
    } catch (const CLI::ParseError& error) {
        return Exit{wrongForm, error.what()};
    }
    if (auto complaint = complaintAbout(app, texts, line.options)) {
        return Exit{wrongForm, *std::move(complaint)};
    }
    line.options.accessTokenLifetime = std::chrono::seconds(texts.lifetime);
    for (const std::string& text : texts.faults) {
        auto fault = Fault::parse(text);
        if (auto* sentence = std::get_if<std::string>(&fault)) {
            return Exit{wrongForm, *sentence};
        }
        line.options.faults.push_back(std::get<Fault>(fault));
    }
    if (texts.around) {
        auto points = pointsOf(*texts.around);
        if (auto* exit = std::get_if<Exit>(&points)) {
            return *exit;
        }
        line.options.around = std::get<0>(std::move(points));
    }
    return line;
}

} // namespace quorvane::sandbox
