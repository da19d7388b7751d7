#pragma once

#include <chrono>
#include <memory>

#include "Platform/Qt/KeptServices.h"
#include "Platform/Qt/PositionReceiver.h"
#include "Platform/Qt/QtOptions.h"
#include "Platform/Support/Delay.h"
#include "Platform/Support/DerivedLocations.h"

namespace quorvane::platform {
class Application;
class PreferencesStore;
} // namespace quorvane::platform

namespace quorvane::platform::qt {

/// Location services over what Qt knows of the device's position. Main thread only.
class QtLocations final : public DerivedLocations {
public:
    /// How long somebody who wants one fix waits for it.
    static constexpr std::chrono::seconds patience{30};

    /// What the services stand on. All of it outlives them.
    struct Surroundings {
        const Clock& clock;
        MainQueue& queue;
        PreferencesStore& preferences;
        /// Gets lines for a developer's log.
        Application& application;
    };

    QtLocations(const Surroundings& surroundings, const PositionSource& source);
    ~QtLocations() override;

private:
    void demandChanged() override;
    void askForPermission(Permission permission) override;
    [[nodiscard]] bool isSilentWhenStill() const override { return receiver->isSilentWhenStill(); }
    [[nodiscard]] PositionReceiver::Listener listener();
    [[nodiscard]] std::unique_ptr<PositionReceiver> receiverFor(const PositionSource& source);
    void limitPatience(bool isWaitedFor);

    const Surroundings around;
    KeptServices memory;
    Demand asked;
    Delay impatience;
    std::unique_ptr<PositionReceiver> receiver;
};

} // namespace quorvane::platform::qt
