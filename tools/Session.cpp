#include "tools/Session.h"

#include <algorithm>
#include <cerrno>
#include <chrono>
#include <optional>
#include <system_error>
#include <utility>

#include <unistd.h>

#include "API/QVAuthService.h"
#include "Core/Configured.h"
#include "Core/PreferenceKeys.h"
#include "Core/SignedInFlag.h"
#include "Device/QVUtils.h"
#include "Facade/Quorvane.h"
#include "Platform/FileManager.h"
#include "Platform/Native/Home.h"
#include "Platform/Native/OwnerOnly.h"
#include "Platform/PreferencesStore.h"
#include "tools/Failure.h"
#include "tools/Interruption.h"
#include "tools/Terminal.h"
#include "tools/ToolPlatform.h"

namespace quorvane::tool {
namespace {

// The fixed ports of the local environment.
constexpr std::uint16_t dataPort = 3000;
constexpr std::uint16_t identityPort = 4001;

constexpr auto slice = std::chrono::milliseconds(100);

platform::NativeOptions nativeOptions(const GlobalOptions& options, std::function<void(std::string_view)> output) {
    platform::NativeOptions native;
    native.home = options.home;
    native.output = std::move(output);
    native.connectTo = loopbackPorts(options);
    return native;
}

/// The platform would go on without one, and keep nothing.
void requireHome(const GlobalOptions& options) {
    const std::string home = platform::native::homeDirectory(options.home);
    std::error_code error = home.empty() ? std::error_code() : platform::native::makeDirectories(home);
    if (!error && !home.empty() && access(home.c_str(), R_OK | W_OK | X_OK) != 0) {
        error = {errno, std::generic_category()};
    }
    if (error) {
        throw Failure("the home directory " + home + " cannot be used: " + error.message());
    }
}

} // namespace

std::vector<platform::LoopbackPort> loopbackPorts(const GlobalOptions& options) {
    std::vector<platform::LoopbackPort> ports;
    if (options.dataPort) {
        ports.push_back({dataPort, *options.dataPort});
    }
    if (options.identityPort) {
        ports.push_back({identityPort, *options.identityPort});
    }
    return ports;
}

Session::Session(const GlobalOptions& theOptions, Terminal& theTerminal, std::function<void(std::string_view)> output,
                 const PlatformMaker& make)
    : options(theOptions), terminal(theTerminal) {
    requireHome(options);
    if (!output) {
        output = [&theTerminal](std::string_view line) { theTerminal.log(line); };
    }
    platform::NativeOptions native = nativeOptions(options, std::move(output));
    platformInUse = make ? make(std::move(native), options.logLevel)
                         : std::make_shared<RunPlatform<platform::NativePlatform>>(std::move(native), options.logLevel);
    platform::install(platformInUse);
}

Session::~Session() {
    platform::install(nullptr);
}

void Session::configure() {
    // What stands before the access key chooses the environment, which only requests need.
    constexpr std::size_t prefix = 9;
    if (!isConfigured()) {
        stored().setString(preference::accessKey, options.key.substr(std::min(prefix, options.key.size())));
    }
}

void Session::signIn() {
    // The library never comes back from setting another user than the stored one.
    const std::optional<std::string> user = stored().string(preference::userId);
    if (user && *user != QVUtils::getDeviceId()) {
        throw Failure("the preferences in " + platformInUse->home() + " belong to another device; name another --home");
    }
    // Whoever ends the program here finds everything put back, a refresh that is under way among it.
    const Interruption interruption;
    struct Outcome {
        QVStatus status = QVStatus::SUCCESS;
        bool isKnown = false;
        bool isReached = false;
    };
    const auto outcome = std::make_shared<Outcome>();
    QVAuthService::shared().observeOutcomes([outcome, this](QVStatus status, bool authenticated) {
        if (outcome->isKnown) {
            return;
        }
        // An answer to somebody else's question is no failure of a request, and no sign-in either.
        outcome->status = status == QVStatus::SUCCESS && !authenticated ? QVStatus::ERROR_UNAUTHORIZED : status;
        // The request for the configuration and the user's own sign-in may each refresh the tokens: the one that ends
        // last leaves what is kept.
        outcome->isKnown = !SignedInFlag::shared().isRefreshing();
        if (outcome->isKnown) {
            // What was logged on the way comes first.
            platformInUse->mainQueue().post([outcome] { outcome->isReached = true; });
        }
    });
    terminal.progress("signing in …");
    Quorvane::initialize(options.key);
    wait([outcome] { return outcome->isReached; });
    // Next the library logs the outcome. What it does after that, when it failed, is to begin anew: not here.
    bool isAsked = false;
    platformInUse->mainQueue().runUntil([&isAsked] { return std::exchange(isAsked, true); }, slice);
    terminal.progress({});
    // Of refreshes that overlap one may fail and leave the tokens that another has brought.
    const bool isSignedIn = QVAuthService::shared().accessInfo().state() == AuthState::AUTHENTICATED;
    require(isSignedIn ? QVStatus::SUCCESS : outcome->status);
}

void Session::requirePlaceStore() {
    platform::FileManager& files = platformInUse->files();
    const std::string folder = files.cachesDirectory() + "/qvplaces.cache";
    if (const std::error_code error = files.createDirectory(folder)) {
        throw Failure("the store for places of your own, " + folder + ", cannot be made: " + error.message());
    }
}

void Session::waitForAnswer(const std::function<bool()>& isThere) {
    wait(isThere);
    // What was logged on the way is still to be printed.
    platformInUse->mainQueue().poll();
}

void Session::wait(const std::function<bool()>& done) {
    const Interruption interruption;
    // A sign-in and a request after it take at most ten seconds an exchange. A signal is seen at the next slice.
    constexpr int slices = 600;
    // A refresh that was cut would cost the tokens that the service has already changed for others.
    const auto isOver = [&done] { return done() && !SignedInFlag::shared().isRefreshing(); };
    for (int i = 0; i < slices; ++i) {
        Interruption::check();
        if (platformInUse->mainQueue().runUntil(isOver, slice)) {
            return;
        }
    }
    throw Failure("there was no answer within a minute");
}

void Session::require(QVStatus status) const {
    if (status == QVStatus::SUCCESS) {
        return;
    }
    std::string sentence(sentenceFor(status));
    const bool isSilence = status == QVStatus::ERROR_NETWORK || status == QVStatus::ERROR_SERVER;
    if (isSilence && Quorvane::environment() == QuorvaneAPI::Environment::LOCAL) {
        sentence += "; is quorvane-sandbox running, on ports " + std::to_string(options.dataPort.value_or(dataPort)) +
                    " and " + std::to_string(options.identityPort.value_or(identityPort)) + "?";
    }
    throw Failure(status, sentence);
}

void Session::requireFound(QVStatus status, const std::optional<platform::Coordinate>& point) const {
    const bool isAboutLocation = status == QVStatus::ERROR_UNIMPLEMENTED || status == QVStatus::ERROR_LOCATION ||
                                 status == QVStatus::ERROR_PERMISSIONS;
    if (!point && isAboutLocation) {
        throw Failure(status, "the device does not tell where it is; name a point with --near");
    }
    require(status);
}

} // namespace quorvane::tool
