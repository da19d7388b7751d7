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
    Headers headers;
    headers.reserve(8);
    headers.emplace_back("Accept", "application/json");
    headers.emplace_back("Content-Type", "application/json");
    headers.emplace_back("X-Quorvane-Device-Make", "Apple");
    headers.emplace_back("X-Quorvane-Device-Model", QVUtils::getDeviceModel());
    headers.emplace_back("X-Quorvane-Device-OS", platform.device().systemVersion());
    headers.emplace_back("X-Quorvane-Device-Type", "iOS");
    headers.emplace_back("X-Quorvane-SDK-Version", "0.0.2");
    if (auto token = platform.preferences().string(preference::accessToken)) {
        headers.emplace_back("Authorization", std::move(*token));
    }
    return headers;
}

} // namespace quorvane
