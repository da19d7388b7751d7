#pragma once

#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <string_view>

#include "API/QVEndpoints.h"
#include "API/QuorvaneAPI.h"
#include "Core/Enumerations.h"
#include "Core/QVStatus.h"
#include "Core/QuorvaneDelegate.h"
#include "Facade/QVPlaces.h"
#include "Facade/QVRewards.h"
#include "Facade/QVSearch.h"
#include "Facade/QVTasks.h"
#include "Facade/QVTracking.h"
#include "Facade/QVUsers.h"
#include "JSON/AnyCodable.h"
#include "Models/QuorvaneTrackingOptions.h"
#include "Platform/CaptureUI.h"
#include "Platform/Location.h"
#include "Search/QVRouteMode.h"

namespace quorvane {

/// The library as a host sees it: class-level operations and six namespaces. Main thread only; a platform must be
/// installed (`platform::install`).
///
/// "Configured" means that an access key is stored, in this run or an earlier one. Until then setters do nothing and
/// getters answer none, but where an operation says otherwise.
class Quorvane {
public:
    using QVStatus = quorvane::QVStatus;
    using QVLogLevel = quorvane::QVLogLevel;
    using QVLocationSource = quorvane::QVLocationSource;
    using QVStorageType = quorvane::QVStorageType;
    using QVRouteMode = quorvane::QVRouteMode;
    using QVRouteUnits = quorvane::QVRouteUnits;
    using NotificationKeys = quorvane::NotificationKeys;

    using Tracking = QVTracking;
    using Search = QVSearch;
    using Tasks = QVTasks;
    using Users = QVUsers;
    using Places = QVPlaces;
    /// Assignable; see `RewardsNamespace`.
    static RewardsNamespace Rewards;

    using LocationCallback = std::function<void(QVStatus, const std::optional<platform::Location>&, bool stopped)>;

    Quorvane() = delete;

    /// Stores the key, chooses the environment by its first nine characters ("UVZSRUFM-" production, "UVZGQUtF-"
    /// development, anything else local), fetches the remote configuration, resumes tracking, and signs the user in
    /// under the device's identifier. May be called again; each call begins anew.
    static void initialize(const std::string& publishableKey);

    /// Held weakly. Set on every service; needs no key.
    static void setDelegate(const std::weak_ptr<QuorvaneDelegate>& delegate);

    /// Stores the user id and signs the user in, again and again until that succeeds, without a delay. Another id than
    /// the stored one cannot be set: the call never returns (see `QVSettings::setUserId`).
    static void setUserId(const std::string& userId);
    [[nodiscard]] static std::optional<std::string> getUserId();

    /// None removes the entry.
    static void setDescription(const std::optional<std::string>& description);
    [[nodiscard]] static std::optional<std::string> getDescription();

    static void setMetadata(const AnyCodable::Dictionary& metadata);
    /// None also when a value of the stored dictionary is no JSON value.
    [[nodiscard]] static std::optional<AnyCodable::Dictionary> getMetadata();

    static void setAdIdEnabled(bool enabled);
    static void setLogLevel(QVLogLevel level);
    [[nodiscard]] static std::shared_ptr<QuorvaneTrackingOptions> getTrackingOptions();

    /// The signed-in flag, which is also the flag that tracking is on (see SignedInFlag.h). The tokens are not
    /// consulted. Needs no key.
    [[nodiscard]] static bool isAuthenticated();

    /// One location of the device, at `MEDIUM` accuracy where none is given. Needs no key.
    static void getLocation(const LocationCallback& callback);
    static void getLocation(QuorvaneTrackingOptions::DesiredAccuracy desiredAccuracy, const LocationCallback& callback);

    /// The case's name for the statuses that hosts have always been told by name; "ERROR_UNKNOWN" for the others.
    [[nodiscard]] static std::string_view fromStatus(QVStatus status);
    /// The case's name; "UNKNOWN" for `UNKNOWN` and for `GEOFENCE_DWELL`, which has no text of its own.
    [[nodiscard]] static std::string_view fromLocationSource(QVLocationSource source);

    /// The camera screens, to be presented by the host. None, and a line in the log, while no maker of them is set
    /// (`platform::setCaptureUI`); no picker for a question without photo options.
    [[nodiscard]] static std::shared_ptr<BarcodeScannerViewControllerType> createBarcodeScanner();
    [[nodiscard]] static std::shared_ptr<platform::ImagePicker> createImagePicker(
        const std::shared_ptr<QVQuestion>& question);

    /// Of the last `initialize` with the platform in use; none before.
    [[nodiscard]] static std::optional<QVEndpoints> endpoints();
    [[nodiscard]] static std::optional<QuorvaneAPI::Environment> environment();

private:
    static void configure(const std::string& key);
};

} // namespace quorvane
