#pragma once

#include <chrono>
#include <memory>
#include <string>
#include <variant>
#include <vector>

#include <gmock/gmock.h>

#include "Core/QVSettings.h"
#include "Core/SignedInFlag.h"
#include "Facade/Quorvane.h"
#include "Tracking/QVLocationManager.h"
#include "Tracking/QVState.h"
#include "Tracking/TrackingObserver.h"
#include "support/APITest.h"

namespace quorvane {

using namespace std::chrono_literals;

/// Keeps what tracking tells.
class RecordingObserver : public TrackingObserver {
public:
    void observe(const observed::Observation& observation) override { all.push_back(observation); }

    /// Those of one kind, in order.
    template <class Kind>
    [[nodiscard]] std::vector<Kind> of() const {
        std::vector<Kind> result;
        for (const observed::Observation& observation : all) {
            if (const Kind* const kind = std::get_if<Kind>(&observation)) {
                result.push_back(*kind);
            }
        }
        return result;
    }

    std::vector<observed::Observation> all;
};

/// A location manager on a simulated phone: a key is configured, the user is signed in, permission is given, and
/// nothing was ever tracked. Times are seconds after noon.
class TrackingTest : public APITest {
protected:
    using Accuracy = QuorvaneTrackingOptions::DesiredAccuracy;
    using Asked = quorvane::testing::SimulatedLocations::Asked;
    using Cause = observed::Tracking::Cause;
    using Call = quorvane::testing::RecordingDelegate::Call;
    using Kind = quorvane::testing::RecordingDelegate::Kind;
    using Source = QVLocationSource;
    using Sync = QuorvaneTrackingOptions::Sync;
    using LocationCalls = Calls<QVStatus, std::optional<platform::Location>, bool>;

    TrackingTest() {
        storeTokens(30 * 24 * 3600);
        answerPlaces("[]");
        Quorvane::setDelegate(delegate);
        // The first that the manager is told, and no test's concern, is its authorization.
        static_cast<void>(manager());
        phone->runUntilIdle();
        TrackingObservation::shared().setObserver(&observer);
    }
    ~TrackingTest() override { TrackingObservation::shared().setObserver(nullptr); }

    [[nodiscard]] static QVLocationManager& manager() { return QVLocationManager::shared(); }
    [[nodiscard]] quorvane::testing::SimulatedLocations& services() { return phone->locationManagers(); }
    [[nodiscard]] Asked precise() { return asked(0); }
    [[nodiscard]] Asked lowPower() { return asked(1); }

    void settle() { phone->runUntilIdle(); }
    void advance(std::chrono::nanoseconds time) { phone->advance(time); }

    /// A fix that many metres north of home, @p seconds after noon.
    [[nodiscard]] static platform::Location fixAt(double metresNorth, double seconds = 0, double accuracy = 10) {
        const auto after = std::chrono::duration_cast<std::chrono::nanoseconds>(std::chrono::duration<double>(seconds));
        return {{46.0 + metresNorth / metresOfOneDegree, 14.5}, accuracy, 5, noon + after};
    }

    /// Begins to track, and lets the options be applied.
    void track(const QuorvaneTrackingOptions& options) {
        manager().startTracking(options);
        settle();
    }

    /// Decides on a fix at its own time, which is not before now.
    void handle(const platform::Location& fix, Source source = Source::BACKGROUND_LOCATION) {
        if (fix.timestamp > phone->clock().now()) {
            advance(fix.timestamp - phone->clock().now());
        }
        manager().handleLocation(fix, source);
        settle();
    }

    void answerPlaces(const std::string& list) {
        transport().answer("GET", "/locations/find", Answer::json(R"({"count":0,"data":)" + list + "}"));
    }
    /// How many syncs have asked the service.
    [[nodiscard]] std::size_t syncs() { return transport().requests("GET", "/locations/find").size(); }

    [[nodiscard]] bool stopped() { return preferences().boolean("quorvane_stopped").value_or(false); }
    void setStopped(bool isStopped) { preferences().setBoolean("quorvane_stopped", isStopped); }
    /// As if a location had been sent that long ago.
    void setSent(std::chrono::nanoseconds ago) {
        preferences().setDate("quorvane_last_sent_at", phone->clock().now() - ago);
    }

    [[nodiscard]] std::vector<observed::Fix> fixes() const { return observer.of<observed::Fix>(); }

    [[nodiscard]] bool isTracking() { return flag().value_or(false); }
    /// Why tracking was switched on or off, time after time.
    [[nodiscard]] std::vector<Cause> causes() const {
        std::vector<Cause> result;
        for (const observed::Tracking& change : observer.of<observed::Tracking>()) {
            result.push_back(change.cause);
        }
        return result;
    }

    /// The identifiers of the regions that are monitored.
    [[nodiscard]] std::vector<std::string> regions() {
        std::vector<std::string> result;
        for (const platform::CircularRegion& region : services().regions()) {
            result.push_back(region.identifier);
        }
        return result;
    }

    static constexpr platform::Date noon = quorvane::testing::SimulatedClock::start;
    static constexpr double metresOfOneDegree = 111'195.08;

    const std::shared_ptr<quorvane::testing::RecordingDelegate> delegate =
        std::make_shared<quorvane::testing::RecordingDelegate>();
    RecordingObserver observer;

private:
    [[nodiscard]] Asked asked(std::size_t number) {
        static_cast<void>(manager());
        return services().managers().at(number);
    }
};

} // namespace quorvane
