#pragma once

#include <functional>
#include <memory>
#include <string>

#include "tools/Interruption.h"
#include "tools/Options.h"

namespace quorvane::platform {
class Accelerometer;
class Cameras;
} // namespace quorvane::platform

namespace quorvane::tool {

class Session;

/// The library with its camera screens, and the GUI application that they need, for one run of the program. Main
/// thread only, one at a time.
class ScreenRun {
public:
    /// Without @p hasWindow everything is drawn where nobody sees it, and nothing sounds. Throws a `Failure` when there
    /// is no display to show a window on.
    ScreenRun(const GlobalOptions& options, Terminal& terminal, bool hasWindow);
    ScreenRun(const ScreenRun&) = delete;
    ScreenRun& operator=(const ScreenRun&) = delete;
    ~ScreenRun();

    /// Sets what the screens see and how the device is held; the device's camera and accelerometer where null.
    void see(std::shared_ptr<platform::Cameras> cameras, std::shared_ptr<platform::Accelerometer> accelerometer = {});

    [[nodiscard]] Session& session();

    /// Runs until @p isDone, however long that takes. Throws an `Interrupted` on a signal.
    void runUntil(const std::function<bool()>& isDone);

private:
    class Application;

    const bool isSilent;
    Interruption interruption;
    std::unique_ptr<Application> application;
    std::unique_ptr<Session> ownSession;
};

} // namespace quorvane::tool
