#include "testing/PhoneDevice.h"

#include <string_view>
#include <utility>
#include <variant>

#include "Platform/Precondition.h"
#include "Tracking/TrackingObserver.h"

namespace quorvane::testing {

using phone::AppState;

namespace {

/// What a request's URL says behind scheme and authority.
std::string_view targetOf(std::string_view url) {
    const std::size_t scheme = url.find("://");
    const std::size_t path = url.find('/', scheme == std::string_view::npos ? 0 : scheme + 3);
    return path == std::string_view::npos ? "/" : url.substr(path);
}

} // namespace

SimulatedPhone::Device::Device(const PhoneOptions& theOptions)
    : clock(std::make_shared<SimulatedClock>(theOptions.platform.start, theOptions.platform.offsetFromUTC)),
      options(theOptions),
      nextLaunch(theOptions.platform),
      kept(std::make_shared<platform::DerivedLocations::Kept>()) {
    nextLaunch.clock = clock;
    kept->authorization = theOptions.authorization;
}

SimulatedPhone::Device::~Device() {
    observer = nullptr;
    if (application) {
        terminate();
    }
}

void SimulatedPhone::Device::happened(const phone::Event& event) const {
    if (observer != nullptr) {
        observer->happened(event);
    }
}

void SimulatedPhone::Device::observe() {
    if (application) {
        TrackingObservation::shared().setObserver(trackingObserver);
    }
}

bool SimulatedPhone::Device::advance(Nanoseconds duration) {
    QV_PRECONDITION(duration.count() >= 0, "virtual time advances by a duration that is not negative");
    QV_PRECONDITION(!world.isRunning(), "work of the world must not move virtual time");
    const Nanoseconds end = now() + duration;
    bool orderly = runThisMoment();
    for (auto due = nextDue(); due && *due <= end; due = nextDue()) {
        const bool isTimer = state == AppState::background && application->parts().mainQueue().nextDue() == due;
        used.timerWakeUps += isTimer ? 1 : 0;
        clock->moveForward(*due - now());
        orderly = runThisMoment() && orderly;
    }
    if (now() < end) {
        clock->moveForward(end - now());
        orderly = runThisMoment() && orderly;
    }
    return orderly;
}

std::optional<SimulatedPhone::Device::Nanoseconds> SimulatedPhone::Device::nextDue() const {
    std::optional<Nanoseconds> result;
    const auto consider = [&result, this](const std::optional<Nanoseconds>& due) {
        if (due && *due > now() && (!result || *due < *result)) {
            result = due;
        }
    };
    consider(world.nextDue());
    consider(senseDue());
    consider(suspensionDue());
    if (application) {
        consider(application->parts().mainQueue().nextDue());
    }
    return result;
}

bool SimulatedPhone::Device::runThisMoment() {
    int steps = 0;
    bool worked = true;
    while (std::exchange(worked, false)) {
        if (++steps > SimulatedPlatform::maxStepsAtOnce) {
            return false;
        }
        while (steps <= SimulatedPlatform::maxStepsAtOnce && world.runNext()) {
            ++steps;
            worked = true;
        }
        if (const auto due = senseDue(); due && *due <= now()) {
            sense();
            worked = true;
        }
        if (isRunning()) {
            worked = worked || application->parts().mainQueue().hasWork();
            if (!application->parts().advance(Nanoseconds(0))) {
                return false;
            }
            worked = reviewState() || worked;
        }
    }
    return true;
}

std::uint64_t SimulatedPhone::Device::requestSent(const platform::HTTPRequest& request) {
    constexpr std::size_t betweenWords = std::string_view("  HTTP/1.1\r\n").size();
    constexpr std::size_t betweenParts = std::string_view(": \r\n").size();
    const std::string_view target = targetOf(request.url);
    std::size_t bytes = request.method.size() + target.size() + betweenWords;
    for (const auto& [name, value] : request.headers) {
        bytes += name.size() + value.size() + betweenParts;
    }
    bytes += 2 + request.body.size();
    ++used.requests;
    used.bytesSent += bytes;
    happened(phone::Request{used.requests, request.method, std::string(target), bytes});
    return used.requests;
}

void SimulatedPhone::Device::requestAnswered(std::uint64_t id, const platform::HTTPRequest& request,
                                             const platform::HTTPTransport::Result& result) {
    const auto* const response = std::get_if<platform::HTTPResponse>(&result);
    happened(phone::Response{id, request.method, std::string(targetOf(request.url)),
                             response != nullptr ? std::optional(response->status) : std::nullopt});
}

void SimulatedPhone::Device::setWallTime(platform::Date time) {
    const platform::Date before = clock->now();
    clock->setWallTime(time);
    happened(phone::ClockChange{before, time});
}

phone::Usage SimulatedPhone::Device::usage() const {
    phone::Usage result = used;
    if (isReceiverOn()) {
        result.receiverTime += now() - countedAt;
    }
    return result;
}

} // namespace quorvane::testing
