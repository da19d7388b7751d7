#include "API/StandardHeaders.h"

#include "Core/PreferenceKeys.h"
#include "Device/QVUtils.h"
#include "Platform/Device.h"
#include "Platform/Platform.h"
#include "Platform/PreferencesStore.h"

namespace quorvane {

Headers standardHeaders() {
    platform::Platform& platform = platform::current();
    // Make, type and version are fixed texts: the service knows clients by them.
    Headers headers{
        {"Accept", "application/json"},
        {"Content-Type", "application/json"},
        {"X-Quorvane-Device-Make", "Apple"},
        {"X-Quorvane-Device-Model", QVUtils::getDeviceModel()},
        {"X-Quorvane-Device-OS", platform.device().systemVersion()},
        {"X-Quorvane-Device-Type", "iOS"},
        {"X-Quorvane-SDK-Version", "0.0.2"},
    };
    if (auto token = platform.preferences().string(preference::accessToken)) {
        headers.emplace_back("Authorization", std::move(*token));
    }
    return headers;
}

} // namespace quorvane
