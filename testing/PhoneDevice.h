#pragma once

#include <chrono>
#include <cstdint>
#include <functional>
#include <memory>
#include <optional>

#include "Platform/Support/DerivedLocations.h"
#include "testing/PhonePlatform.h"
#include "testing/SimulatedPhone.h"

namespace quorvane::testing {

/// The works of a simulated phone; see there.
class SimulatedPhone::Device : public PhoneHardware {
public:
    using Nanoseconds = std::chrono::nanoseconds;

    explicit Device(const PhoneOptions& theOptions);
    ~Device() override;

    void locationDemandChanged() override;
    void askForPermission(platform::LocationManager::Permission permission) override;
    [[nodiscard]] double backgroundTimeRemaining() const override;
    std::uint64_t requestSent(const platform::HTTPRequest& request) override;
    void requestAnswered(std::uint64_t id, const platform::HTTPRequest& request,
                         const platform::HTTPTransport::Result& result) override;

    void follow(TrackPath::Source fixes);
    void moveTo(const platform::Location& place);
    [[nodiscard]] std::optional<platform::Location> position();

    void launch(phone::LaunchReason reason);
    void enterForeground();
    void enterBackground();
    void terminate();

    bool advance(Nanoseconds duration);

    void setWallTime(platform::Date time);
    void setSignal(bool signal);
    void setAccuracy(const std::optional<double>& metres);
    void setAuthorization(platform::LocationAuthorization status);
    [[nodiscard]] phone::Usage usage() const;
    void observe();

    const std::shared_ptr<SimulatedClock> clock;
    SimulatedMainQueue world{*clock};
    std::shared_ptr<PhonePlatform> application;
    std::optional<TrackPath> path;
    Host host;
    std::shared_ptr<void> hosted;
    phone::AppState state = phone::AppState::notRunning;
    phone::Observer* observer = nullptr;
    TrackingObserver* trackingObserver = nullptr;

private:
    using Demand = platform::DerivedLocations::Demand;

    [[nodiscard]] Nanoseconds now() const { return clock->monotonic(); }
    [[nodiscard]] bool isRunning() const;
    void happened(const phone::Event& event) const;
    void setState(phone::AppState newState);

    bool runThisMoment();
    [[nodiscard]] std::optional<Nanoseconds> nextDue() const;

    /// Whether the system keeps the application running, for its continuous updates.
    [[nodiscard]] bool isKeptAlive() const;
    /// The background time of an application that is kept running no longer begins.
    void noteWhatKeepsAlive();
    void beginBackgroundTime();
    /// When the application may be suspended next, unless something happens before.
    [[nodiscard]] std::optional<Nanoseconds> suspensionDue() const;
    bool reviewState();
    void wake();

    [[nodiscard]] bool wantsSamples() const;
    [[nodiscard]] bool canFix() const;
    [[nodiscard]] bool isReceiverOn() const;
    void countReceiverTime();
    [[nodiscard]] std::optional<Nanoseconds> senseDue() const;
    void sense();
    /// Looks whether a fix would launch the application, which does not run.
    void senseForLaunch(const platform::Location& fix);
    void failWithoutFix();

    const PhoneOptions options;
    SimulatedOptions nextLaunch;
    const std::shared_ptr<platform::DerivedLocations::Kept> kept;

    std::optional<platform::Location> place;
    Nanoseconds pathStart{0};
    bool hasSignal = true;
    std::optional<double> forcedAccuracy;

    Demand demand;
    bool wantedSamples = false;
    bool senseNow = false;
    Nanoseconds sensedAt{0};
    /// When those who want a fix are told that there is none.
    std::optional<Nanoseconds> failAt;
    bool updatesHaveFailed = false;

    Nanoseconds awakeUntil{0};
    Nanoseconds deadline{0};
    bool wasKeptAlive = false;

    phone::Usage used;
    Nanoseconds countedAt{0};
};

} // namespace quorvane::testing
