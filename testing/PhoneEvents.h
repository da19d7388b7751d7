#pragma once

#include <chrono>
#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>
#include <variant>

#include "Platform/Clock.h"
#include "Platform/LocationManagerDelegate.h"

/// What happens on a simulated phone, as it happens: plain values for whoever wants to keep a log.
namespace quorvane::testing::phone {

enum class AppState { notRunning, foreground, background, suspended };

/// Why an application was launched.
enum class LaunchReason {
    /// By its user, into the foreground.
    user,
    /// Into the background, by something that it monitors.
    location,
};

/// The application is in another state. Woken: from suspended to background.
struct StateChange {
    AppState before = AppState::notRunning;
    AppState after = AppState::notRunning;
};

/// The receiver sees the sky again, or does not any more.
struct SignalChange {
    bool hasSignal = true;
};

/// From now on fixes are told to be that accurate; none: as the track says.
struct AccuracyChange {
    std::optional<double> metres;
};

struct AuthorizationChange {
    platform::LocationAuthorization status = platform::LocationAuthorization::always;
};

/// Somebody set the clock.
struct ClockChange {
    platform::Date before;
    platform::Date after;
};

/// The application sends a request.
struct Request {
    /// From 1 on, over all launches.
    std::uint64_t id = 0;
    std::string method;
    /// Of the URL: from its path on, percent-encoded.
    std::string target;
    /// Request line, headers and body, as they go over the wire but for the "Host".
    std::size_t bytes = 0;
};

/// A request was answered.
struct Response {
    std::uint64_t id = 0;
    std::string method;
    std::string target;
    /// None: no answer came.
    std::optional<int> status;
};

using Event =
    std::variant<StateChange, SignalChange, AccuracyChange, AuthorizationChange, ClockChange, Request, Response>;

/// Hears what happens on a simulated phone. It must not call the phone.
class Observer {
public:
    Observer() = default;
    Observer(const Observer&) = delete;
    Observer& operator=(const Observer&) = delete;
    virtual ~Observer() = default;

    virtual void happened(const Event& event) = 0;
};

/// What tracking has cost so far, over all launches.
struct Usage {
    /// Launches by the user and by what is monitored.
    std::size_t launches = 0;
    /// How often the application was woken, or launched, by a region, a visit or a significant change.
    std::size_t wakeUps = 0;
    /// Moments at which a timer of the application ran in the background.
    std::size_t timerWakeUps = 0;
    /// Requests for one fix that the receiver ran for.
    std::size_t fixRequests = 0;
    /// Fixes that were given to a location manager.
    std::size_t fixes = 0;
    /// For how long the satellite receiver ran: during continuous updates with a desired accuracy finer than a
    /// kilometre, and `SimulatedPhone::timeToFix` for each request of such an accuracy.
    std::chrono::nanoseconds receiverTime{0};
    std::size_t requests = 0;
    std::size_t bytesSent = 0;
};

} // namespace quorvane::testing::phone
