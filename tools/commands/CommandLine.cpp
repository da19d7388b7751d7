#include "tools/commands/CommandLine.h"

#include <algorithm>
#include <string>

#include <CLI/CLI.hpp>

#include "tools/Arguments.h"
#include "tools/Failure.h"
#include "tools/commands/Demo.h"
#include "tools/commands/DeviceInfo.h"
#include "tools/commands/Photo.h"
#include "tools/commands/Places.h"
#include "tools/commands/Replay.h"
#include "tools/commands/Rewards.h"
#include "tools/commands/Scan.h"
#include "tools/commands/Search.h"
#include "tools/commands/SignIn.h"
#include "tools/commands/Tasks.h"
#include "tools/commands/Track.h"

namespace quorvane::tool {
namespace {

constexpr const char* description =
    "The Quorvane SDK on a command line: signs in, searches, answers tasks, and shows what it does.";
constexpr const char* footer =
    "Exit status: 0 for SUCCESS; 1 for any other status, whose name and meaning stand on standard error, and for "
    "files and ports; 2 for a wrong command line.";

void addGlobalOptions(CLI::App& program, GlobalOptions& global) {
    program
        .add_option_function<std::string>(
            "--key", [&global](const std::string& text) { global.key = textIn("--key", text); },
            "Publishable key; its first nine characters choose the environment (" + global.key + ")")
        ->type_name("KEY");
    program
        .add_option_function<std::string>(
            "--home", [&global](const std::string& text) { global.home = textIn("--home", text); },
            "Where preferences and caches live (the user's own data folder)")
        ->type_name("DIR");
    program
        .add_option_function<std::string>(
            "--log-level", [&global](const std::string& text) { global.logLevel = logLevelIn("--log-level", text); },
            "Log of the SDK on standard error, for this run: none, error, warning, info or debug")
        ->type_name("LEVEL");
    program
        .add_option_function<std::string>(
            "--data-port", [&global](const std::string& text) { global.dataPort = portIn("--data-port", text); },
            "Port of the local data service (3000)")
        ->type_name("PORT");
    program
        .add_option_function<std::string>(
            "--identity-port",
            [&global](const std::string& text) { global.identityPort = portIn("--identity-port", text); },
            "Port of the local identity service (4001)")
        ->type_name("PORT");
    program.add_flag("--json", global.json, "Write one JSON document to standard output, and nothing else");
}

/// The parser's own words, as one sentence on one line that begins in lower case as the others do.
std::string sentenceOf(const CLI::Error& error) {
    std::string sentence = error.what();
    std::replace(sentence.begin(), sentence.end(), '\n', ' ');
    const std::string option = sentence.substr(0, sentence.find_first_of(": "));
    if (dynamic_cast<const CLI::ArgumentMismatch*>(&error) != nullptr) {
        return option + (sentence.ends_with("missing") ? " needs a value" : " may be given once only");
    }
    if (dynamic_cast<const CLI::ExcludesError*>(&error) != nullptr) {
        return option + " and " + sentence.substr(sentence.rfind(' ') + 1) + " do not go together";
    }
    if (sentence.starts_with("The ")) {
        sentence.front() = 't';
    }
    return sentence;
}

} // namespace

std::variant<CommandLine, HelpText> parseCommandLine(int argumentCount, const char* const* arguments) {
    CommandLine line;
    CLI::App program(description, "quorvane");
    program.footer(footer);
    program.set_version_flag("--version", "quorvane " QUORVANE_VERSION);
    program.require_subcommand(0, 1);
    addGlobalOptions(program, line.global);
    addSignIn(program, line.command);
    addSearch(program, line.command);
    addTasks(program, line.command);
    addPlaces(program, line.command);
    addRewards(program, line.command);
    addDeviceInfo(program, line.command);
    addReplay(program, line.command);
    addScan(program, line.command);
    addPhoto(program, line.command);
    addTrack(program, line.command);
    addDemo(program, line.command);
    try {
        program.parse(argumentCount, arguments);
    } catch (const CLI::CallForHelp&) {
        return HelpText{program.help()};
    } catch (const CLI::CallForVersion& version) {
        return HelpText{std::string(version.what()) + "\n"};
    } catch (const CLI::Error& error) {
        throw WrongForm(sentenceOf(error));
    }
    if (!line.command) {
        throw WrongForm(
            "name one of the commands sign-in, search, tasks, places, rewards, device, replay, scan, photo, track and "
            "demo; "
            "--help explains them");
    }
    return line;
}

} // namespace quorvane::tool
