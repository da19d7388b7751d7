#include "Platform/Qt/QtLocations.h"

#include <utility>

#include "Platform/Clock.h"
#include "Platform/Qt/NMEAReceiver.h"

namespace quorvane::platform::qt {

QtLocations::QtLocations(const Surroundings& surroundings, const PositionSource& source)
    : DerivedLocations(surroundings.clock, surroundings.queue), around(surroundings) {
    receiver = std::make_unique<NMEAReceiver>(around.clock, source, listener());
    setAuthorization(receiver->authorization());
}

QtLocations::~QtLocations() {
    around.queue.cancel(impatience);
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
    const Demand now = demand();
    if (receiver == nullptr || now == asked) {
        return;
    }
    if (now.request != asked.request) {
        limitPatience(now.request);
    }
    asked = now;
    receiver->want(now);
}

void QtLocations::limitPatience(bool isWaitedFor) {
    around.queue.cancel(std::exchange(impatience, 0));
    if (isWaitedFor) {
        impatience = around.queue.postAfter(patience, lifetime.guard([this] {
            fail({LocationError::Kind::unknown, "No position was found in time."});
            demandChanged();
        }));
    }
}

} // namespace quorvane::platform::qt
