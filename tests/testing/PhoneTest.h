#pragma once

#include <memory>
#include <string>
#include <utility>
#include <vector>

#include <gmock/gmock.h>

#include "Platform/Application.h"
#include "Platform/Platform.h"
#include "Platform/Timer.h"
#include "Platform/contract/LocationRig.h"
#include "testing/SimulatedPhone.h"

namespace quorvane::testing {

/// What an application is told of its location, as words.
class PhoneListener : public platform::contract::LocationListener {
public:
    void didVisit(const platform::Visit& visit) override {
        told.emplace_back(visit.departureDate == platform::distantFuture ? "arrival" : "departure");
    }
};

/// A phone with an application that has one location manager, and counts the seconds in which it runs.
class PhoneTest : public ::testing::Test {
protected:
    explicit PhoneTest(const PhoneOptions& options = {}) : phone(options) {
        phone.setHost([this](phone::LaunchReason reason) {
            reasons.push_back(reason);
            const auto app = std::make_shared<App>(platform::current(), ticks);
            app->manager->setDelegate(&listener);
            running = app;
            return app;
        });
        phone.launch();
        phone.advance({});
    }

    [[nodiscard]] platform::LocationManager& manager() { return *running.lock()->manager; }
    [[nodiscard]] platform::Application& application() { return platform::current().application(); }

    /// Updates that keep the application running in the background.
    void startBackgroundUpdates() {
        manager().setDesiredAccuracy(platform::DesiredAccuracy::threeKilometers);
        manager().setAllowsBackgroundLocationUpdates(true);
        manager().startUpdatingLocation();
    }

    /// What the application was told since the last question.
    std::vector<std::string> told() {
        phone.advance({});
        return std::exchange(listener.told, {});
    }
    /// How many seconds the application ran in since the last question.
    int secondsRun() { return std::exchange(ticks, 0); }

    static constexpr platform::Coordinate here{46, 14.5};
    /// Some 1,100 metres north.
    static constexpr platform::Coordinate there{46.01, 14.5};
    const platform::CircularRegion home{"home", here, 100};

    /// What one launch is made of.
    struct App {
        App(platform::Platform& platform, int& seconds)
            : manager(platform.locationManagers().make()),
              ticker(platform.clock(), platform.mainQueue(), std::chrono::seconds(1), [&seconds] { ++seconds; }) {}

        std::unique_ptr<platform::LocationManager> manager;
        platform::Timer ticker;
    };
    PhoneListener listener;
    int ticks = 0;
    std::vector<phone::LaunchReason> reasons;
    std::weak_ptr<App> running;
    SimulatedPhone phone;
};

} // namespace quorvane::testing
