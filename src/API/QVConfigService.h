#pragma once

#include <memory>
#include <string>

#include "API/Endpoint.h"
#include "Core/SharedService.h"
#include "Models/QVConfig.h"
#include "Platform/Platform.h"

namespace quorvane {

/// Asks for the remote configuration (GET "/config").
struct GetConfigEndpoint : Endpoint<QVConfig> {
    GetConfigEndpoint(std::string deviceId, std::string installId, std::string userId);
};

/// Keeps the latest remote configuration in the settings. Main thread only.
class QVConfigService : public SharedService<QVConfigService> {
public:
    explicit QVConfigService(platform::Platform& platform);

    /// Fetches the configuration and stores it. Needs a stored device id and user id, which on a first run do not exist
    /// yet; without them, and on every failure, nothing happens and what was stored stays.
    void retrieve();

private:
    platform::Platform& platform;
};

} // namespace quorvane
