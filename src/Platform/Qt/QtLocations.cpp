#include "Platform/Qt/QtLocations.h"

#include <utility>

#include "Platform/Application.h"
#include "Platform/Clock.h"
#include "Platform/Qt/GeoClueReceiver.h"
#include "Platform/Qt/NMEAReceiver.h"

namespace quorvane::platform::qt {

QtLocations::QtLocations(const Surroundings& surroundings, const PositionSource& source)
    : DerivedLocations(surroundings.clock, surroundings.queue, KeptServices::stored(surroundings.preferences)),
      around(surroundings),
      memory(around.preferences),
      impatience(around.queue),
      receiver(receiverFor(source)) {
    setAuthorization(receiver->authorization());
}

QtLocations::~QtLocations() = default;

std::unique_ptr<PositionReceiver> QtLocations::receiverFor(const PositionSource& source) {
    const auto* const service = std::get_if<GeoClue>(&source);
    if (service == nullptr) {
        return std::make_unique<NMEAReceiver>(around.clock, around.queue, source, listener());
    }
    return std::make_unique<GeoClueReceiver>(
        around.clock, around.queue, service->desktopId, isAuthorized(), listener(),
        [&application = around.application](std::string_view line) { application.standardOutput(line); });
}

PositionReceiver::Listener QtLocations::listener() {
    return {[this](const Location& fix) {
                receive(fix);
                demandChanged();
            },
            [this](const LocationError& error) {
                fail(error);
                demandChanged();
            },
            [this](LocationAuthorization status) { setAuthorization(status); }};
}

void QtLocations::askForPermission(Permission) {
    receiver->ask();
}

void QtLocations::demandChanged() {
    if (receiver == nullptr) {
        return;
    }
    memory.keep(kept()->regions, receiver->answer());
    const Demand now = demand();
    if (now == asked) {
        return;
    }
    if (now.request != asked.request) {
        limitPatience(now.request);
    }
    asked = now;
    receiver->want(now);
}

void QtLocations::limitPatience(bool isWaitedFor) {
    if (!isWaitedFor) {
        impatience.stop();
        return;
    }
    impatience.start(patience, [this] {
        fail({LocationError::Kind::unknown, "No position was found in time."});
        demandChanged();
    });
}

} // namespace quorvane::platform::qt
