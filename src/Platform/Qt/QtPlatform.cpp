#include "Platform/Qt/QtPlatform.h"

#include <utility>

#include "Platform/Application.h"
#include "Platform/Qt/QtLocations.h"
#include "Platform/Qt/QtMainQueue.h"

namespace quorvane::platform {

struct QtPlatform::Parts {
    PositionSource positions;
    std::unique_ptr<qt::QtLocations> locations;
};

std::shared_ptr<QtPlatform> QtPlatform::make(QtOptions options) {
    return std::make_shared<QtPlatform>(std::move(options));
}

QtPlatform::QtPlatform(QtOptions options)
    : NativePlatform(std::move(options.native), std::make_unique<qt::QtMainQueue>()), parts(std::make_unique<Parts>()) {
    parts->positions = std::move(options.positions);
}

QtPlatform::~QtPlatform() {
    // What still waits is dropped while all parts are there.
    mainQueue().close();
}

LocationManagerFactory& QtPlatform::locationManagers() {
    if (!parts->locations) {
        parts->locations =
            std::make_unique<qt::QtLocations>(qt::QtLocations::Surroundings{clock(), mainQueue()}, parts->positions);
    }
    return *parts->locations;
}

} // namespace quorvane::platform
