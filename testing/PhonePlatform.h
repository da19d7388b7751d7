#pragma once

#include <functional>
#include <memory>

#include "Platform/HTTPTransport.h"
#include "Platform/Platform.h"
#include "Platform/Support/DerivedLocations.h"
#include "testing/PhoneApplication.h"
#include "testing/SimulatedPlatform.h"

namespace quorvane::testing {

/// What a platform needs of the phone that it runs on. Main thread only.
class PhoneHardware {
public:
    PhoneHardware() = default;
    PhoneHardware(const PhoneHardware&) = delete;
    PhoneHardware& operator=(const PhoneHardware&) = delete;
    virtual ~PhoneHardware() = default;

    virtual void locationDemandChanged() = 0;
    virtual void askForPermission(platform::LocationManager::Permission permission) = 0;
    [[nodiscard]] virtual double backgroundTimeRemaining() const = 0;
    /// Answers the name of the request.
    virtual std::uint64_t requestSent(const platform::HTTPRequest& request) = 0;
    virtual void requestAnswered(std::uint64_t id, const platform::HTTPRequest& request,
                                 const platform::HTTPTransport::Result& result) = 0;
};

/// One launch of an application on a simulated phone: a simulated platform, whose location and background time are the
/// phone's. Main thread only, as far as the parts are.
class PhonePlatform : public platform::Platform {
public:
    /// @p theHardware outlives it.
    PhonePlatform(PhoneHardware& theHardware, const SimulatedOptions& options,
                  std::shared_ptr<platform::DerivedLocations::Kept> kept);
    ~PhonePlatform() override;

    [[nodiscard]] platform::Clock& clock() override { return simulated->clock(); }
    [[nodiscard]] platform::MainQueue& mainQueue() override { return simulated->mainQueue(); }
    [[nodiscard]] platform::PreferencesStore& preferences() override { return simulated->preferences(); }
    [[nodiscard]] platform::HTTPTransport& transport() override { return *watchedTransport; }
    [[nodiscard]] platform::Digest& digest() override { return simulated->digest(); }
    [[nodiscard]] platform::SecureRandom& random() override { return simulated->random(); }
    [[nodiscard]] platform::FileManager& files() override { return simulated->files(); }
    [[nodiscard]] PhoneApplication& application() override { return phoneApplication; }
    [[nodiscard]] platform::Device& device() override { return simulated->device(); }
    [[nodiscard]] platform::DerivedLocations& locationManagers() override { return *locations; }

    [[nodiscard]] SimulatedPlatform& parts() const { return *simulated; }

private:
    const std::shared_ptr<SimulatedPlatform> simulated;
    PhoneApplication phoneApplication;
    std::unique_ptr<platform::DerivedLocations> locations;
    std::unique_ptr<platform::HTTPTransport> watchedTransport;
};

} // namespace quorvane::testing
