#include "Platform/Qt/QtPlatform.h"

#include <utility>

#include "Platform/Qt/QtApplication.h"
#include "Platform/Qt/QtLocations.h"
#include "Platform/Qt/QtMainQueue.h"

namespace quorvane::platform {

struct QtPlatform::Parts {
    Parts(Application& native, MainQueue& queue, PositionSource thePositions)
        : application(native, queue), positions(std::move(thePositions)) {}

    qt::QtApplication application;
    const PositionSource positions;
    std::unique_ptr<qt::QtLocations> locations;
};

std::shared_ptr<QtPlatform> QtPlatform::make(QtOptions options) {
    return std::make_shared<QtPlatform>(std::move(options));
}

QtPlatform::QtPlatform(QtOptions options)
    : NativePlatform(std::move(options.native), std::make_unique<qt::QtMainQueue>()),
      parts(std::make_unique<Parts>(NativePlatform::application(), mainQueue(), std::move(options.positions))) {}

QtPlatform::~QtPlatform() {
    // What still waits is dropped while all parts are there.
    mainQueue().close();
}

Application& QtPlatform::application() {
    return parts->application;
}

LocationManagerFactory& QtPlatform::locationManagers() {
    if (!parts->locations) {
        const qt::QtLocations::Surroundings around{clock(), mainQueue(), NativePlatform::preferences(), application()};
        parts->locations = std::make_unique<qt::QtLocations>(around, parts->positions);
    }
    return *parts->locations;
}

} // namespace quorvane::platform
