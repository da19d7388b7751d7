#include "tools/commands/Demo.h"

#include <memory>
#include <optional>
#include <string>
#include <utility>
#include <variant>

#include <CLI/CLI.hpp>

#include "API/QVAuthService.h"
#include "Facade/Quorvane.h"
#include "sandbox/Sandbox.h"
#include "tools/Arguments.h"
#include "tools/Failure.h"
#include "tools/Interruption.h"
#include "tools/Session.h"
#include "tools/TemporaryFolder.h"
#include "tools/Terminal.h"
#include "tools/Text.h"
#include "tools/demo/Account.h"
#include "tools/demo/AnswerStep.h"
#include "tools/demo/OwnPlacesStep.h"
#include "tools/demo/Ride.h"
#include "tools/demo/Stage.h"
#include "tools/demo/TaskSteps.h"
#include "tools/demo/TrackingStep.h"
#include "tools/demo/Walk.h"

namespace quorvane::tool {
namespace {

constexpr std::size_t stopCount = 6;

std::unique_ptr<sandbox::Sandbox> startService(const Ride& ride, const GlobalOptions& options) {
    sandbox::SandboxOptions service;
    service.around = ride.coordinates();
    service.dataPort = options.dataPort.value_or(0);
    service.identityPort = options.identityPort.value_or(0);
    auto started = sandbox::Sandbox::start(std::move(service));
    if (const auto* const sentence = std::get_if<std::string>(&started)) {
        throw Failure(*sentence);
    }
    return std::get<std::unique_ptr<sandbox::Sandbox>>(std::move(started));
}

/// The options under which the library meets the demo's own service.
GlobalOptions optionsFor(const GlobalOptions& asked, const sandbox::Sandbox& service, const std::string& home) {
    GlobalOptions options = asked;
    options.home = home;
    options.logLevel = asked.logLevel.value_or(QVLogLevel::DEBUG);
    options.dataPort = static_cast<std::uint16_t>(service.dataPort());
    options.identityPort = static_cast<std::uint16_t>(service.identityPort());
    return options;
}

void refuseOtherEnvironments(const std::string& key) {
    for (const char* const prefix : {"UVZSRUFM-", "UVZGQUtF-"}) {
        if (key.starts_with(prefix)) {
            throw WrongForm("the demo speaks to its own local service only; its --key cannot begin with " +
                            std::string(prefix));
        }
    }
}

void introduce(const Ride& ride, const sandbox::Sandbox& service, const std::string& home, bool isTemporary,
               Terminal& terminal) {
    std::string text = ride.name().empty() ? "a track" : printable(ride.name());
    text += ": " + metresText(ride.metres());
    if (const auto duration = ride.duration()) {
        text += " in " + durationText(*duration);
    }
    const auto row = [&terminal](const char* label, const std::string& value) {
        constexpr std::size_t column = 10;
        terminal.row(label, value, column);
    };
    terminal.line(terminal.painted("A ride with the Quorvane SDK", Paint::heading));
    row("ride", text + ", " + counted(ride.fixCount(), "fix", "fixes"));
    row("service", "a sandbox in this program, on ports " + std::to_string(service.dataPort()) + " (data) and " +
                       std::to_string(service.identityPort()) + " (identity)");
    row("home", home + (isTemporary ? ", removed at the end" : ""));
}

/// A task from the search that finds it to its reward.
AnyCodable::Dictionary doTask(Stage& stage, const platform::Coordinate& near) {
    const std::shared_ptr<QVTask> found = findTask(stage, near);
    const std::shared_ptr<QVTask> task = claimTask(stage, found);
    AnyCodable::Dictionary document = readTask(stage, task);
    const Questionnaire questionnaire = answerQuestions(stage, task);
    document["key"] = task->key.value_or("");
    document["answers"] = questionnaire.answers;
    document["score"] = questionnaire.score;
    document["completed"] = questionnaire.isCompleted;
    if (questionnaire.isCompleted) {
        document["rewards"] = collectRewards(stage, *task);
        stage.note("score", counted(static_cast<std::size_t>(questionnaire.score), "point") + " in total");
    }
    return document;
}

/// What the demo does as an application on this machine: everything but tracking.
struct Errands {
    std::string summary;
    AnyCodable::Dictionary document;
};

Errands runErrands(const Ride& ride, const GlobalOptions& asked, const GlobalOptions& options,
                   const std::shared_ptr<Account>& account, Terminal& terminal) {
    Session session(options, terminal,
                    [&](std::string_view line) { asked.logLevel ? terminal.log(line) : account->output(line); });
    Quorvane::setDelegate(account);
    Stage stage(session, *account, terminal);
    Walk walk(stage);
    walk.signIn();
    for (const Ride::Stop& stop : ride.stops(stopCount)) {
        walk.searchAt(stop, ride.isTimed());
    }
    const platform::Coordinate start = ride.coordinates().front();
    const AnyCodable::List ownPlaces = storeAndFindPlaces(stage, start);
    const AnyCodable::Dictionary task = doTask(stage, start);
    // The service ends with the program, and the tokens with it.
    QVAuthService::shared().logout();
    Errands errands{walk.summary(), walk.document()};
    errands.document["ownPlaces"] = ownPlaces;
    errands.document["task"] = task;
    return errands;
}

AnyCodable::Dictionary ride(const std::string& track, const GlobalOptions& asked, Terminal& terminal) {
    refuseOtherEnvironments(asked.key);
    if (asked.dataPort && asked.dataPort == asked.identityPort) {
        throw WrongForm("the demo's services need a port each; --data-port and --identity-port are both " +
                        std::to_string(*asked.dataPort));
    }
    const Interruption interruption;
    const Ride ride = track.empty() ? Ride::invented() : Ride::fromFile(track);
    std::optional<TemporaryFolder> temporary;
    if (asked.home.empty()) {
        temporary.emplace();
    }
    const std::string home = temporary ? temporary->path() : asked.home;
    const auto service = startService(ride, asked);
    const auto account = std::make_shared<Account>(*service, terminal);
    const GlobalOptions options = optionsFor(asked, *service, home);
    introduce(ride, *service, home, temporary.has_value(), terminal);

    Errands errands = runErrands(ride, asked, options, account, terminal);
    GlobalOptions phone = options;
    phone.logLevel = asked.logLevel;
    const Tracked tracked = trackRide(ride, phone, *account, terminal);
    errands.document["tracking"] = tracked.documents;

    terminal.line();
    terminal.line(terminal.painted("Summary", Paint::heading));
    terminal.line("  " + account->requestSummary());
    terminal.line("  " + errands.summary);
    terminal.line("  " + tracked.summary);
    terminal.line("  " + counted(account->logLineCount(), "log line") + " told to the delegate");
    errands.document.merge(account->document());
    return errands.document;
}

} // namespace

void addDemo(CLI::App& program, Command& chosen) {
    const auto track = std::make_shared<std::string>();
    CLI::App* const verb = program.add_subcommand(
        "demo", "Sign in to a service of its own, ride along a track, answer a task, and tell what happens");
    verb->fallthrough();
    verb->add_option_function<std::string>(
            "--track", [track](const std::string& text) { *track = textIn("--track", text); },
            "A GPX file (an invented ride)")
        ->type_name("FILE");
    verb->callback([track, &chosen] {
        chosen = [track = *track](const GlobalOptions& options, Terminal& terminal) {
            return ride(track, options, terminal);
        };
    });
}

} // namespace quorvane::tool
