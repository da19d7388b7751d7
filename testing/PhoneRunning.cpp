// How the application of a simulated phone is launched, suspended, woken and ended.

#include <algorithm>
#include <utility>

#include "Platform/Precondition.h"
#include "testing/PhoneDevice.h"

namespace quorvane::testing {

using phone::AppState;
using phone::LaunchReason;

bool SimulatedPhone::Device::isRunning() const {
    return state == AppState::foreground || state == AppState::background;
}

void SimulatedPhone::Device::setState(AppState newState) {
    const AppState before = std::exchange(state, newState);
    if (application) {
        application->parts().mainQueue().setSuspended(newState == AppState::suspended);
        application->locationManagers().setInBackground(newState != AppState::foreground);
    }
    if (before != newState) {
        happened(phone::StateChange{before, newState});
    }
}

void SimulatedPhone::Device::launch(LaunchReason reason) {
    application = std::make_shared<PhonePlatform>(*this, nextLaunch, kept);
    if (options.declaresBackgroundLocation) {
        application->parts().application().setInformationDictionary(
            {{"UIBackgroundModes", AnyCodable::List{"location"}}});
    }
    platform::install(application);
    ++used.launches;
    beginBackgroundTime();
    setState(reason == LaunchReason::user ? AppState::foreground : AppState::background);
    observe();
    if (host) {
        hosted = host(reason);
    }
}

void SimulatedPhone::Device::enterForeground() {
    if (state == AppState::notRunning) {
        launch(LaunchReason::user);
    } else {
        setState(AppState::foreground);
    }
}

void SimulatedPhone::Device::enterBackground() {
    QV_PRECONDITION(state == AppState::foreground, "an application that enters the background is in the foreground");
    beginBackgroundTime();
    setState(AppState::background);
}

void SimulatedPhone::Device::terminate() {
    QV_PRECONDITION(application != nullptr, "an application that ends has been launched");
    application->locationManagers().endLaunch();
    nextLaunch = application->parts().nextLaunch();
    setState(AppState::notRunning);
    hosted.reset();
    platform::install(nullptr);
    application.reset();
    locationDemandChanged();
}

bool SimulatedPhone::Device::isKeptAlive() const {
    return state == AppState::background && demand.backgroundUpdates;
}

void SimulatedPhone::Device::noteWhatKeepsAlive() {
    if (std::exchange(wasKeptAlive, isKeptAlive()) && !wasKeptAlive && state == AppState::background) {
        beginBackgroundTime();
    }
}

void SimulatedPhone::Device::beginBackgroundTime() {
    awakeUntil = now() + wakeTime;
    deadline = now() + backgroundTime;
}

double SimulatedPhone::Device::backgroundTimeRemaining() const {
    if (state == AppState::foreground || isKeptAlive()) {
        return platform::Application::foreground;
    }
    return std::max(0.0, std::chrono::duration<double>(deadline - now()).count());
}

std::optional<SimulatedPhone::Device::Nanoseconds> SimulatedPhone::Device::suspensionDue() const {
    if (state != AppState::background || isKeptAlive()) {
        return std::nullopt;
    }
    return application->application().hasGrants() ? deadline : awakeUntil;
}

/// Suspends the application where it is time. Answers whether there may be more to do at this moment.
bool SimulatedPhone::Device::reviewState() {
    const std::optional<Nanoseconds> due = suspensionDue();
    if (!due || *due > now()) {
        return false;
    }
    if (application->application().hasGrants()) {
        application->application().expireAll();
        application->parts().advance(Nanoseconds(0));
    }
    setState(AppState::suspended);
    return true;
}

void SimulatedPhone::Device::wake() {
    if (state == AppState::suspended) {
        ++used.wakeUps;
        beginBackgroundTime();
        setState(AppState::background);
    } else if (state == AppState::background) {
        awakeUntil = std::max(awakeUntil, now() + wakeTime);
    }
}

} // namespace quorvane::testing
