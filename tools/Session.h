#pragma once

#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "Core/Enumerations.h"
#include "Core/QVStatus.h"
#include "Platform/Location.h"
#include "Platform/Native/NativePlatform.h"
#include "tools/Options.h"

namespace quorvane::tool {

class Terminal;

/// Where the services of the local environment stand, in the words of the native platform.
[[nodiscard]] std::vector<platform::LoopbackPort> loopbackPorts(const GlobalOptions& options);

/// The library in use for one run of the program: a native platform is installed as long as the session lives. Main
/// thread only, one at a time.
class Session {
public:
    /// Makes the platform of the session.
    using PlatformMaker = std::function<std::shared_ptr<platform::NativePlatform>(platform::NativeOptions options,
                                                                                  std::optional<QVLogLevel> logLevel)>;

    /// @p output gets what the platform prints, the log of the SDK among it, a line at a time; by default standard
    /// error does. Without @p make the platform is the native one.
    Session(const GlobalOptions& theOptions, Terminal& theTerminal,
            std::function<void(std::string_view line)> output = {}, const PlatformMaker& make = {});
    Session(const Session&) = delete;
    Session& operator=(const Session&) = delete;
    ~Session();

    [[nodiscard]] platform::NativePlatform& platform() { return *platformInUse; }
    /// What is stored, whatever the log level of this run.
    [[nodiscard]] platform::PreferencesStore& stored() { return platformInUse->NativePlatform::preferences(); }

    /// Gives the library its key and nothing more: for what it answers without a request. A key that is stored stays.
    void configure();

    /// Initialises the library with the key and waits for the first outcome of a sign-in, or the last of refreshes that
    /// overlap. Throws a `Failure` with its status when no good tokens come of it.
    void signIn();

    /// Throws a `Failure` when the store for places of one's own cannot be made: the library, whose searches for places
    /// look into it, would end the program then. Tracking searches as well.
    void requirePlaceStore();

    /// Runs the main queue until @p isThere holds and no refresh is under way, and then what was posted before. Throws
    /// a `Failure` when that takes longer than any exchange can.
    void waitForAnswer(const std::function<bool()>& isThere);

    /// Throws a `Failure` for any status but a success.
    void require(QVStatus status) const;

    /// The same for a search; without @p point the device was asked where it is.
    void requireFound(QVStatus status, const std::optional<platform::Coordinate>& point) const;

private:
    void wait(const std::function<bool()>& done);

    const GlobalOptions& options;
    Terminal& terminal;
    std::shared_ptr<platform::NativePlatform> platformInUse;
};

} // namespace quorvane::tool
