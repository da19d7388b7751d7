#include "API/QVConfigService.h"

#include "API/QuorvaneAPI.h"
#include "Core/PreferenceKeys.h"
#include "Core/QVSettings.h"
#include "Platform/PreferencesStore.h"

namespace quorvane {

GetConfigEndpoint::GetConfigEndpoint(std::string deviceId, std::string installId, std::string userId) {
    path = "/config";
    parameters = {
        {"deviceId", std::move(deviceId)}, {"installId", std::move(installId)}, {"userId", std::move(userId)}};
    // Hosts did not ask for this call.
    tellsWhyUnanswered = false;
}

QVConfigService::QVConfigService(platform::Platform& thePlatform) : platform(thePlatform) {}

void QVConfigService::retrieve() {
    const auto deviceId = platform.preferences().string(preference::deviceId);
    if (!deviceId) {
        return;
    }
    const auto installId = QVSettings::getInstallId();
    const auto userId = platform.preferences().string(preference::userId);
    if (!installId || installId->empty() || !userId) {
        return;
    }
    QuorvaneAPI::shared().request(
        GetConfigEndpoint(*deviceId, *installId, *userId),
        [](QVStatus status, const std::optional<json::Dictionary>& raw, const std::shared_ptr<QVConfig>& config) {
            if (status == QVStatus::SUCCESS && raw && config) {
                QVSettings::setConfig(*config);
            }
        });
}

} // namespace quorvane
