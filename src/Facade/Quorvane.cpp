#include "Facade/Quorvane.h"

#include <algorithm>

#include "API/QVAuthService.h"
#include "API/QVConfigService.h"
#include "Core/Configured.h"
#include "Core/PreferenceKeys.h"
#include "Core/QVLogger.h"
#include "Core/QVSettings.h"
#include "Core/SignedInFlag.h"
#include "Device/QVUtils.h"
#include "Places/QVPlaceService.h"
#include "Platform/MainQueue.h"
#include "Platform/PreferencesStore.h"
#include "Search/QVGeocodeService.h"
#include "Search/QVRouteService.h"
#include "Tasks/QVRewardService.h"
#include "Tasks/QVTaskService.h"
#include "Tracking/LocationSource.h"
#include "Tracking/QVContextService.h"
#include "Tracking/QVEventService.h"
#include "Tracking/QVFenceService.h"
#include "Tracking/QVLocationManager.h"
#include "Tracking/QVTrackingService.h"
#include "Tracking/QVUserService.h"

namespace quorvane {
namespace {

/// The nine characters in front of the access key that choose the environment.
constexpr std::size_t prefixLength = 9;

struct FacadeState {
    std::optional<QVEndpoints> endpoints;
    std::optional<QuorvaneAPI::Environment> environment;
};

FacadeState& state() {
    return platform::shared<FacadeState>();
}

platform::PreferencesStore& preferences() {
    return platform::current().preferences();
}

/// How many bytes the prefix of a UTF-8 @p key has: all of it when the key is shorter than the prefix.
std::size_t prefixBytes(std::string_view key) {
    std::size_t characters = 0;
    for (std::size_t i = 0; i < key.size(); ++i) {
        const bool beginsCharacter = (static_cast<unsigned char>(key[i]) & 0xC0U) != 0x80U;
        if (beginsCharacter && characters++ == prefixLength) {
            return i;
        }
    }
    return key.size();
}

QuorvaneAPI::Environment environmentOf(std::string_view prefix) {
    if (prefix == "UVZSRUFM-") {
        return QuorvaneAPI::Environment::PRODUCTION;
    }
    return prefix == "UVZGQUtF-" ? QuorvaneAPI::Environment::DEVELOPMENT : QuorvaneAPI::Environment::LOCAL;
}

bool isWhole(const AnyCodable::Dictionary& dictionary);

/// Whether it is a JSON value with nothing but JSON values in it.
bool isWhole(const AnyCodable& value) {
    if (const auto* list = std::get_if<AnyCodable::List>(&value.value)) {
        return std::all_of(list->begin(), list->end(), [](const AnyCodable& element) { return isWhole(element); });
    }
    const auto* dictionary = std::get_if<AnyCodable::Dictionary>(&value.value);
    return dictionary != nullptr ? isWhole(*dictionary) : value.hasValue();
}

bool isWhole(const AnyCodable::Dictionary& dictionary) {
    return std::all_of(dictionary.begin(), dictionary.end(), [](const auto& entry) { return isWhole(entry.second); });
}

template <class... Services>
void delegateTo(const std::weak_ptr<QuorvaneDelegate>& delegate) {
    ((Services::shared().delegate = delegate), ...);
}

std::shared_ptr<platform::CaptureUI> captureScreens() {
    auto maker = platform::captureUI();
    if (!maker) {
        QVLogger::shared().log(QVLogLevel::ERROR, "there are no camera screens: no maker of them was set");
    }
    return maker;
}

} // namespace

RewardsNamespace Quorvane::Rewards;

void Quorvane::initialize(const std::string& publishableKey) {
    QVLogger::shared().log(QVLogLevel::DEBUG, "initializing");
    configure(publishableKey);
    const std::string deviceId = QVUtils::getDeviceId();
    preferences().setString(preference::deviceId, deviceId);
    setUserId(deviceId);
}

void Quorvane::configure(const std::string& key) {
    const std::size_t prefix = prefixBytes(key);
    preferences().setString(preference::publishableKey, key);
    preferences().setString(preference::accessKey, key.substr(prefix));

    const QuorvaneAPI::Environment chosen = environmentOf(std::string_view(key).substr(0, prefix));
    state().environment = chosen;
    state().endpoints = QVEndpoints(chosen);
    QuorvaneAPI::shared().setEndpoints(*state().endpoints);

    QVConfigService::shared().retrieve();

    QVLocationManager& locationManager = QVLocationManager::shared();
    locationManager.verbose = false;
    locationManager.updateTracking(std::nullopt);
}

void Quorvane::setDelegate(const std::weak_ptr<QuorvaneDelegate>& delegate) {
    delegateTo<QuorvaneAPI, QVLocationManager, QVLogger, QVAuthService, QVConfigService, QVTrackingService,
               QVContextService, QVFenceService, QVEventService, QVUserService, QVTaskService, QVRewardService,
               QVSearchService, QVRouteService, QVGeocodeService, QVPlaceService>(delegate);
}

void Quorvane::setUserId(const std::string& userId) {
    if (!isConfigured()) {
        return;
    }
    QVSettings::setUserId(userId);
    QVAuthService::shared().authenticate(QuorvaneAPI::shared().auth, [userId](QVStatus status, bool authenticated) {
        if (status == QVStatus::SUCCESS && authenticated) {
            QVLogger::shared().log(QVLogLevel::INFO, "QuorvaneSDK -> authenticated");
            return;
        }
        QVLogger::shared().log(QVLogLevel::INFO, "QuorvaneSDK -> unauthenticated");
        QVAuthService::shared().logout();
        // Through the queue: an answer that comes at once must not nest one attempt in the other.
        platform::current().mainQueue().post([userId] { setUserId(userId); });
    });
}

std::optional<std::string> Quorvane::getUserId() {
    return isConfigured() ? preferences().string(preference::userId) : std::nullopt;
}

void Quorvane::setDescription(const std::optional<std::string>& description) {
    if (isConfigured()) {
        preferences().setOptionalString(preference::userDescription, description);
    }
}

std::optional<std::string> Quorvane::getDescription() {
    return isConfigured() ? preferences().string(preference::userDescription) : std::nullopt;
}

void Quorvane::setMetadata(const AnyCodable::Dictionary& metadata) {
    if (isConfigured()) {
        preferences().setDictionary(preference::userMetadata, metadata);
    }
}

std::optional<AnyCodable::Dictionary> Quorvane::getMetadata() {
    std::optional<AnyCodable::Dictionary> stored;
    if (isConfigured()) {
        stored = preferences().dictionary(preference::userMetadata);
    }
    return stored && isWhole(*stored) ? stored : std::nullopt;
}

void Quorvane::setAdIdEnabled(bool enabled) {
    if (isConfigured()) {
        preferences().setBoolean(preference::adIdEnabled, enabled);
    }
}

void Quorvane::setLogLevel(QVLogLevel level) {
    if (isConfigured()) {
        preferences().setInteger(preference::logLevel, static_cast<int>(level));
    }
}

std::shared_ptr<QuorvaneTrackingOptions> Quorvane::getTrackingOptions() {
    return isConfigured() ? QVSettings::getTrackingOptions() : nullptr;
}

bool Quorvane::isAuthenticated() {
    return SignedInFlag::shared().isSet();
}

void Quorvane::getLocation(const LocationCallback& callback) {
    getLocation(QuorvaneTrackingOptions::DesiredAccuracy::MEDIUM, callback);
}

void Quorvane::getLocation(QuorvaneTrackingOptions::DesiredAccuracy desiredAccuracy, const LocationCallback& callback) {
    QVLocationManager::shared().getLocation(desiredAccuracy, callback);
}

std::string_view Quorvane::fromStatus(QVStatus status) {
    switch (status) {
        case QVStatus::SUCCESS:
        case QVStatus::ERROR_BAD_REQUEST:
        case QVStatus::ERROR_FORBIDDEN:
        case QVStatus::ERROR_LOCATION:
        case QVStatus::ERROR_NETWORK:
        case QVStatus::ERROR_PAYMENT_REQUIRED:
        case QVStatus::ERROR_PERMISSIONS:
        case QVStatus::ERROR_PUBLISHABLE_KEY:
        case QVStatus::ERROR_RATE_LIMIT:
        case QVStatus::ERROR_SERVER:
        case QVStatus::ERROR_UNAUTHORIZED:
        case QVStatus::ERROR_UNIMPLEMENTED:
            return nameOf(status);
        default:
            return "ERROR_UNKNOWN";
    }
}

std::string_view Quorvane::fromLocationSource(QVLocationSource source) {
    return source == QVLocationSource::GEOFENCE_DWELL ? nameOf(QVLocationSource::UNKNOWN) : nameOf(source);
}

std::shared_ptr<BarcodeScannerViewControllerType> Quorvane::createBarcodeScanner() {
    const auto maker = captureScreens();
    return maker ? maker->createBarcodeScanner() : nullptr;
}

std::shared_ptr<platform::ImagePicker> Quorvane::createImagePicker(const std::shared_ptr<QVQuestion>& question) {
    if (!question) {
        return nullptr;
    }
    const auto maker = captureScreens();
    return maker ? maker->createImagePicker(*question) : nullptr;
}

std::optional<QVEndpoints> Quorvane::endpoints() {
    return state().endpoints;
}

std::optional<QuorvaneAPI::Environment> Quorvane::environment() {
    return state().environment;
}

} // namespace quorvane
