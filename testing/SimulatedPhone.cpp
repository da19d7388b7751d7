#include "testing/SimulatedPhone.h"

#include <memory>
#include <utility>

#include "Platform/Precondition.h"
#include "testing/PhoneDevice.h"

namespace quorvane::testing {

SimulatedPhone::SimulatedPhone(const PhoneOptions& options) : device(std::make_unique<Device>(options)) {}

SimulatedPhone::~SimulatedPhone() = default;

void SimulatedPhone::follow(Track track) {
    follow([fixes = std::move(track.fixes), next = std::size_t{0}]() mutable {
        return next < fixes.size() ? std::optional(fixes[next++]) : std::nullopt;
    });
}

void SimulatedPhone::follow(TrackPath::Source fixes) {
    device->follow(std::move(fixes));
}

void SimulatedPhone::moveTo(platform::Coordinate coordinate, double accuracy) {
    device->moveTo({coordinate, accuracy});
}

std::optional<platform::Location> SimulatedPhone::position() {
    return device->position();
}

const TrackPath* SimulatedPhone::path() const {
    return device->path ? &*device->path : nullptr;
}

void SimulatedPhone::setHost(Host host) {
    device->host = std::move(host);
}

void SimulatedPhone::launch() {
    device->enterForeground();
}

void SimulatedPhone::enterBackground() {
    device->enterBackground();
}

void SimulatedPhone::terminate() {
    device->terminate();
}

phone::AppState SimulatedPhone::state() const {
    return device->state;
}

SimulatedPlatform& SimulatedPhone::platform() {
    QV_PRECONDITION(device->application != nullptr, "an application must have been launched");
    return device->application->parts();
}

bool SimulatedPhone::advance(std::chrono::nanoseconds duration) {
    return device->advance(duration);
}

SimulatedMainQueue& SimulatedPhone::world() {
    return device->world;
}

SimulatedClock& SimulatedPhone::clock() {
    return *device->clock;
}

void SimulatedPhone::setWallTime(platform::Date now) {
    device->setWallTime(now);
}

void SimulatedPhone::setSignal(bool hasSignal) {
    device->setSignal(hasSignal);
}

void SimulatedPhone::setAccuracy(const std::optional<double>& metres) {
    device->setAccuracy(metres);
}

void SimulatedPhone::setAuthorization(platform::LocationAuthorization status) {
    device->setAuthorization(status);
}

phone::Usage SimulatedPhone::usage() const {
    return device->usage();
}

void SimulatedPhone::setObservers(phone::Observer* observer, TrackingObserver* trackingObserver) {
    device->observer = observer;
    device->trackingObserver = trackingObserver;
    device->observe();
}

} // namespace quorvane::testing
