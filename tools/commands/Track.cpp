#include "tools/commands/Track.h"

#include <chrono>
#include <filesystem>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <system_error>
#include <utility>

#include <CLI/CLI.hpp>

#include "Core/PreferenceKeys.h"
#include "Core/SignedInFlag.h"
#include "Facade/Quorvane.h"
#include "Platform/Clock.h"
#include "Platform/PreferencesStore.h"
#include "Tracking/QVState.h"
#include "testing/DateText.h"
#include "tools/Arguments.h"
#include "tools/Failure.h"
#include "tools/Interruption.h"
#include "tools/NamedOptions.h"
#include "tools/Receiver.h"
#include "tools/Session.h"
#include "tools/Terminal.h"
#include "tools/Text.h"
#include "tools/commands/TrackReport.h"

namespace quorvane::tool {
namespace {

using platform::LocationAuthorization;

/// A signal is seen at the next slice.
constexpr auto slice = std::chrono::milliseconds(100);

/// Stands in the preferences from the beginning of a run to its orderly end. The library's own flag says less: while a
/// token is refreshed it is false.
constexpr std::string_view runKey = "quorvane_tool_track_run";

struct TrackOptions {
    std::optional<std::string> options;
    Receiver receiver;
    std::optional<int> baudRate;
};

/// Hears the first things that the receiver has to say.
class FirstLook : public platform::LocationManagerDelegate {
public:
    void didUpdateLocations(const std::vector<platform::Location>& locations) override { fix = locations.back(); }
    void didFail(const platform::LocationError& error) override { problem = error; }
    void didChangeAuthorization(LocationAuthorization status) override { authorization = status; }

    std::optional<platform::Location> fix;
    std::optional<platform::LocationError> problem;
    LocationAuthorization authorization = LocationAuthorization::notDetermined;
};

/// Hears the library until the end.
class Listening {
public:
    explicit Listening(const std::shared_ptr<TrackReport>& report) {
        Quorvane::setDelegate(report);
        TrackingObservation::shared().setObserver(report.get());
    }
    Listening(const Listening&) = delete;
    Listening& operator=(const Listening&) = delete;
    ~Listening() { TrackingObservation::shared().setObserver(nullptr); }
};

/// One run of tracking, from the first look for the receiver to the end.
class Live {
public:
    Live(const TrackOptions& theOptions, const GlobalOptions& theGlobal, Terminal& theTerminal)
        : options(theOptions),
          terminal(theTerminal),
          session(theGlobal, theTerminal, {},
                  [this](platform::NativeOptions native, std::optional<QVLogLevel> logLevel) {
                      Receiver receiver = options.receiver;
                      receiver.onEnd = [this] { isOver = true; };
                      return platformWith(receiver, std::move(native), logLevel);
                  }),
          report(std::make_shared<TrackReport>(session.platform().clock(), terminal)) {}

    AnyCodable::Dictionary carryOut() {
        const NamedOptions chosen = chosenOptions();
        const Listening listening(report);
        std::string end = "signal";
        try {
            if (isRecording()) {
                requireFile();
            } else {
                lookForReceiver();
            }
            session.requirePlaceStore();
            session.signIn();
            begin(chosen);
            end = follow();
        } catch (const Interrupted&) {
            // That is how it is meant to end.
            terminal.progress({});
        }
        stop(end);
        if (end == "recording" && !heard.fix && heard.problem) {
            throw Failure(printable(heard.problem->message));
        }
        return {{"options", chosen.name},
                {"resumed", isResumed},
                {"end", end},
                {"locations", report->counts().locations},
                {"synced", report->counts().synced},
                {"events", report->counts().events},
                {"errors", report->counts().errors}};
    }

private:
    /// Without a word the options of a run that was not ended count.
    NamedOptions chosenOptions() {
        const platform::PreferencesStore& stored = session.stored();
        isResumed = stored.boolean(runKey).value_or(false) && stored.string(preference::trackingOptions).has_value();
        if (isResumed && !options.options) {
            return {"stored", [] { return Quorvane::getTrackingOptions(); }};
        }
        return optionsCalled(options.options.value_or("continuous"));
    }

    /// What is a recording, and whether it tells a position, shows when it runs.
    void requireFile() const {
        const std::string& path = options.receiver.name;
        std::error_code problem;
        if (!std::filesystem::exists(path, problem)) {
            throw Failure("the NMEA file " + printable(path) + " gives nothing: No such file or directory");
        }
    }

    void lookForReceiver() {
        FirstLook look;
        const auto manager = session.platform().locationManagers().make();
        manager->setDelegate(&look);
        manager->requestAuthorization(platform::LocationManager::Permission::always);
        terminal.progress("asking for the location …");
        while (manager->authorization() == LocationAuthorization::notDetermined) {
            pass([&] { return manager->authorization() != LocationAuthorization::notDetermined; });
        }
        if (!platform::permitsLocations(manager->authorization())) {
            throw Failure(QVStatus::ERROR_PERMISSIONS,
                          "the system has no location service, or does not permit its use; name a receiver with "
                          "--nmea, --serial or --socket");
        }
        manager->requestLocation();
        constexpr int slices = 50;
        for (int i = 0; i < slices && !look.fix && !look.problem; ++i) {
            pass([&look] { return look.fix || look.problem; });
        }
        terminal.progress({});
        if (look.problem) {
            throw Failure(printable(look.problem->message));
        }
        report->write("receiver", look.fix ? "the device is at " + coordinateText(look.fix->coordinate)
                                           : std::string("has no position yet"));
    }

    void begin(const NamedOptions& chosen) {
        session.stored().setBoolean(runKey, true);
        if (isResumed) {
            const auto movedAt = QVState::getLastMovedAt();
            report->write("tracking", "goes on where the run before was cut off" +
                                          (movedAt ? "; the user last moved at " + testing::dateText(*movedAt) : ""));
        }
        report->write("tracking", "by the " + chosen.name + " options; a signal (Ctrl+C) ends it");
        Quorvane::Tracking::start(chosen.make());
        if (isRecording()) {
            // It begins now, so that tracking misses nothing of it, and runs whatever the options want of it.
            player = session.platform().locationManagers().make();
            player->setDelegate(&heard);
            player->startUpdatingLocation();
        }
    }

    std::string follow() {
        while (!isOver) {
            if (report->isCutOff()) {
                return "output";
            }
            pass([this] { return isOver; });
        }
        constexpr int slices = 150;
        for (int i = 0; i < slices && report->isSending(); ++i) {
            pass([this] { return !report->isSending(); });
        }
        return "recording";
    }

    void stop(const std::string& end) {
        const SignedInFlag& flag = SignedInFlag::shared();
        if (flag.isTracking()) {
            Quorvane::Tracking::stop();
        }
        // The tokens of a refresh that has no end are lost, and those before are of no use any more.
        if (flag.isRefreshing()) {
            report->write("tracking", "waits for a token that is being refreshed");
            constexpr std::chrono::seconds longest(10);
            session.platform().mainQueue().runUntil([&flag] { return !flag.isRefreshing(); }, longest);
        }
        session.stored().remove(runKey);
        // What that has posted, and what is posted by it.
        session.platform().mainQueue().poll();
        session.platform().mainQueue().poll();
        report->write("tracking",
                      "ended by " + std::string(end == "recording" ? "the end of the recording" : "a signal"));
    }

    [[nodiscard]] bool isRecording() const { return options.receiver.kind == Receiver::Kind::recording; }

    template <class Done>
    void pass(const Done& done) {
        Interruption::check();
        session.platform().mainQueue().runUntil(done, slice);
    }

    const TrackOptions& options;
    Terminal& terminal;
    bool isOver = false;
    bool isResumed = false;
    Session session;
    const std::shared_ptr<TrackReport> report;
    /// Lets a recording run, and what it had to say.
    FirstLook heard;
    std::unique_ptr<platform::LocationManager> player;
};

AnyCodable::Dictionary track(const TrackOptions& options, const GlobalOptions& global, Terminal& terminal) {
    const Interruption interruption;
    return Live(options, global, terminal).carryOut();
}

/// "localhost:10110".
Receiver serverIn(const std::string& option, const std::string& text) {
    const std::size_t colon = text.rfind(':');
    if (colon == std::string::npos || colon == 0) {
        throw WrongForm(option + " takes HOST:PORT, not \"" + text + "\"");
    }
    return {Receiver::Kind::server, text.substr(0, colon), portIn(option, text.substr(colon + 1))};
}

} // namespace

void addTrack(CLI::App& program, Command& chosen) {
    const auto options = std::make_shared<TrackOptions>();
    CLI::App* const verb =
        program.add_subcommand("track", "Follow this device until a signal comes, and tell what tracking brings");
    verb->fallthrough();
    verb->add_option_function<std::string>(
            "--options", [options](const std::string& text) { options->options = optionsIn(text); },
            "The tracking options: continuous, responsive, efficient, or a JSON file with others (continuous, or those "
            "of a run that was killed)")
        ->type_name("OPTIONS");
    CLI::Option* const file =
        verb->add_option_function<std::string>(
                "--nmea",
                [options](const std::string& text) {
                    options->receiver = {Receiver::Kind::recording, textIn("--nmea", text)};
                },
                "A recording of NMEA sentences in the place of the system's location service, at its own pace")
            ->type_name("FILE");
    CLI::Option* const port = verb->add_option_function<std::string>(
                                      "--serial",
                                      [options](const std::string& text) {
                                          options->receiver = {Receiver::Kind::serialPort, textIn("--serial", text)};
                                      },
                                      "A receiver of NMEA sentences on a serial port")
                                  ->type_name("DEVICE");
    verb->add_option_function<std::string>(
            "--baud",
            [options](const std::string& text) { options->baudRate = static_cast<int>(ordinalIn("--baud", text)); },
            "The speed of the serial port (4800)")
        ->type_name("BAUD")
        ->needs(port);
    verb->add_option_function<std::string>(
            "--socket", [options](const std::string& text) { options->receiver = serverIn("--socket", text); },
            "A server of NMEA sentences")
        ->type_name("HOST:PORT")
        ->excludes(file)
        ->excludes(port);
    file->excludes(port);
    verb->callback([options, &chosen] {
        options->receiver.baudRate = options->baudRate.value_or(options->receiver.baudRate);
        chosen = [options = *options](const GlobalOptions& global, Terminal& terminal) {
            return track(options, global, terminal);
        };
    });
}

} // namespace quorvane::tool
