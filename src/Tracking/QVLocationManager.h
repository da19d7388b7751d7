#pragma once

#include <functional>
#include <memory>
#include <optional>

#include "Core/QVStatus.h"
#include "Core/SharedService.h"
#include "Models/QuorvaneTrackingOptions.h"
#include "Platform/Location.h"

namespace quorvane {

/// Owns the platform's location services. Main thread only.
///
/// This version remembers that tracking was asked to be brought up to date, and has no location to give.
class QVLocationManager : public SharedService<QVLocationManager> {
public:
    /// A status, the location with `SUCCESS`, and whether the device is considered stopped.
    using LocationCompletion = std::function<void(QVStatus, const std::optional<platform::Location>&, bool)>;

    /// Applies the stored tracking options anew, around @p location where there is one.
    void updateTracking(const std::optional<platform::Location>& location);

    /// One location of the device. Answers `ERROR_UNIMPLEMENTED` at once.
    void getLocation(QuorvaneTrackingOptions::DesiredAccuracy desiredAccuracy, const LocationCompletion& completion);

    /// How often `updateTracking` was called.
    [[nodiscard]] int updatesRequested() const { return updates; }

    /// Whether the lines that are marked verbose are logged.
    bool verbose = false;

private:
    int updates = 0;
};

} // namespace quorvane
